#include "document/frmDocument.h"
#include "shell/commands/CommandTable.h"
#include "shell/commands/ExpectedCommands.h"
#include "shell/commands/MenuSlots.h"
#include "shell/commands/SlotCommands.h"
#include "shell/commands/ToolTable.h"

#include <QFile>
#include <QKeySequence>
#include <QMap>
#include <QSet>
#include <QStringList>

#include <gtest/gtest.h>

namespace {

QString text(const char* latin) {
    return QString::fromLatin1(latin);
}

constexpr DocumentState TextUnlocked{true, false};
constexpr DocumentState TextLocked{true, true};
constexpr DocumentState HexUnlocked{false, false};
constexpr DocumentState HexLocked{false, true};

/// The states in which it is enabled, by the letters of the expected tables.
QString statesOf(Enabled when) {
    QString states;
    for (const auto& [letter, state] : {std::pair{'T', TextUnlocked}, std::pair{'L', TextLocked},
                                        std::pair{'H', HexUnlocked}, std::pair{'X', HexLocked}}) {
        if (isEnabled(when, state))
            states += QLatin1Char(letter);
    }
    return states;
}

bool isSeparator(const CommandRow& row) {
    return text(row.caption) == QLatin1String("-");
}

const ToolRow* findTool(const char* key) {
    for (const ToolRow& row : toolTable()) {
        if (text(row.key) == text(key))
            return &row;
    }
    return nullptr;
}

}  // namespace

TEST(CommandTable, HoldsEveryCommandWithItsCaptionKeyPictureAndRule) {
    for (const ExpectedCommand& expected : ExpectedCommands) {
        const CommandRow* row = findCommand(expected.name);
        ASSERT_NE(row, nullptr) << expected.name;
        EXPECT_STREQ(row->parent, expected.menu) << expected.name;
        EXPECT_STREQ(row->caption, expected.caption) << expected.name;
        EXPECT_STREQ(row->key, expected.key) << expected.name;
        EXPECT_STREQ(row->icon, expected.icon) << expected.name;
        EXPECT_EQ(statesOf(row->when), text(expected.enabled)) << expected.name;
        const bool isHidden =
            text(expected.name) == u"mnuSaveMarco"_qs || text(expected.name) == u"mnuFilePrintPreview"_qs;
        EXPECT_EQ(row->visible, !isHidden) << expected.name;
    }
}

TEST(CommandTable, HoldsEverySeparatorAndNothingElse) {
    for (const char* name : ExpectedSeparators) {
        const CommandRow* row = findCommand(name);
        ASSERT_NE(row, nullptr) << name;
        EXPECT_TRUE(isSeparator(*row)) << name;
    }
    EXPECT_EQ(commandTable().size(), std::size(ExpectedCommands) + std::size(ExpectedSeparators));
}

TEST(CommandTable, CommandsStandInTheirMenusInTheGivenOrder) {
    qsizetype next = 0;
    for (const CommandRow& row : commandTable()) {
        if (isSeparator(row))
            continue;
        EXPECT_STREQ(row.name, ExpectedCommands[next].name);
        ++next;
    }
}

TEST(CommandTable, EveryNameStandsOnce) {
    QSet<QString> names;
    for (const CommandRow& row : commandTable()) {
        EXPECT_FALSE(names.contains(text(row.name))) << row.name;
        names.insert(text(row.name));
    }
}

TEST(CommandTable, EveryEntryStandsBehindItsMenu) {
    QSet<QString> menus{QString()};
    for (const CommandRow& row : commandTable()) {
        EXPECT_TRUE(menus.contains(text(row.parent))) << row.name;
        if (row.target.isEmpty() && !isSeparator(row))
            menus.insert(text(row.name));
    }
}

TEST(CommandTable, NoMenuBeginsOrEndsWithASeparatorOrHasTwoInARow) {
    QSet<QString> filled;  // menus whose last separator is above the entries filled at run time
    for (const SlotArray& array : SlotCommands::table())
        filled.insert(text(array.menu));
    filled.insert(u"mnuLanguages"_qs);
    QMap<QString, QList<bool>> separators;
    for (const CommandRow& row : commandTable())
        separators[text(row.parent)].append(isSeparator(row));
    for (auto menu = separators.cbegin(); menu != separators.cend(); ++menu) {
        EXPECT_FALSE(menu->first()) << menu.key().toStdString();
        EXPECT_EQ(menu->last() && !filled.contains(menu.key()), false) << menu.key().toStdString();
        for (qsizetype i = 1; i < menu->size(); ++i) {
            EXPECT_FALSE(menu->at(i) && menu->at(i - 1)) << menu.key().toStdString() << i;
        }
    }
}

TEST(CommandTable, EveryKeyIsAKeyAndGivenOnce) {
    QSet<QString> keys;
    for (const CommandRow& row : commandTable()) {
        if (*row.key == '\0')
            continue;
        const QString key = QKeySequence(text(row.key), QKeySequence::PortableText).toString();
        EXPECT_EQ(key, text(row.key)) << row.name;
        EXPECT_FALSE(keys.contains(key)) << row.name;
        keys.insert(key);
    }
    EXPECT_EQ(keys.size(), 15);
}

TEST(CommandTable, NoTwoEntriesOfAMenuShareAMnemonic) {
    QSet<QString> taken;
    int mnemonics = 0;
    for (const CommandRow& row : commandTable()) {
        const QString caption = text(row.caption);
        const qsizetype place = caption.indexOf(u'&');
        if (place < 0)
            continue;
        const QString mnemonic = text(row.parent) + u'/' + caption.at(place + 1).toUpper();
        EXPECT_FALSE(taken.contains(mnemonic)) << row.name;
        taken.insert(mnemonic);
        ++mnemonics;
    }
    EXPECT_EQ(mnemonics, 19);
}

TEST(CommandTable, EveryPictureIsShipped) {
    for (const CommandRow& row : commandTable()) {
        if (*row.icon != '\0') {
            EXPECT_TRUE(QFile::exists(u":/icons/%1.svg"_qs.arg(text(row.icon)))) << row.icon;
        }
    }
    for (const ToolRow& row : toolTable()) {
        if (!row.isGap() && !row.isPlace()) {
            EXPECT_TRUE(QFile::exists(u":/icons/%1.svg"_qs.arg(text(row.icon)))) << row.icon;
        }
    }
}

TEST(CommandTable, CommandsOfADocumentAimAtItsMethods) {
    struct Aim {
        const char* name;
        void (frmDocument::*method)();
    };
    using Document = frmDocument;
    const Aim aims[] = {
        {"mnuFilePrint", &Document::PrintContent},
        {"mnuEditUndo", &Document::Undo},
        {"mnuEditRedo", &Document::Redo},
        {"mnuEditCut", &Document::Cut},
        {"mnuEditCopy", &Document::Copy},
        {"mnuEditPaste", &Document::Paste},
        {"mnuSelectAll", &Document::SelectAll},
        {"mnuSelectLine", &Document::SelectLine},
        {"mnuSelectWord", &Document::SelectWord},
        {"SelectPara", &Document::SelectPara},
        {"mnuSelectBlock", &Document::SelectBlock},
        {"mnuToUppercase", &Document::ToUppercaseSel},
        {"mnuToLowercase", &Document::ToLowercaseSel},
        {"mnuWordUppercase", &Document::ToUppercase},
        {"mnuWordToLowercase", &Document::ToLowercase},
        {"mnuCapitalize", &Document::ToCapitalize},
        {"mnuCutLine", &Document::LineCut},
        {"mnuDeleteLine", &Document::LineDelete},
        {"mnuDeleteToStart", &Document::LineDeleteToStart},
        {"mnuDeleteToEnd", &Document::LineDeleteToEnd},
        {"mnuAliftLeft", &Document::AlignLeft},
        {"mnuAlignRight", &Document::AlignRight},
        {"mnuAlignCenter", &Document::AlignCenter},
        {"mnuSortLineAscending", &Document::SortLineAscending},
        {"mnuSortLineDescending", &Document::SortLineDescending},
        {"mnuIndent", &Document::Indent},
        {"mnuUnindent", &Document::Unindent},
        {"mnuTrimTailedSpaces", &Document::TrimTailed},
        {"mnuTabsToSpaces", &Document::TabsToSpaces},
        {"mnuSpacesToTabAll", &Document::SpacesToTabs},
        {"mnuSetRepeat", &Document::SetRepeatCount},
        {"mnuFind", &Document::Find},
        {"mnuReplace", &Document::ReplaceText},
        {"mnuIncrementalSearch", &Document::IncrementalSearch},
        {"mnuReverseIncrementalSearch", &Document::ReverseIncrementalSearch},
        {"mnuToggleBookmark", &Document::ToggleBookmark},
        {"mnuPreviousBookmark", &Document::PrevBookmark},
        {"mnuNextBookmark", &Document::NextBookmark},
        {"mnuBookmarkFirst", &Document::FirstBookmark},
        {"mnuBookmarkLast", &Document::LastBookmark},
        {"mnuClearAllBookmarks", &Document::ClearAllBookmark},
        {"mnuGotoLine", &Document::GotoLine},
        {"mnuGotoPage", &Document::GotoPage},
        {"mnuGotoOffset", &Document::GotoOffset},
        {"mnuCountAll", &Document::CountAll},
        {"mnuSpelling", &Document::Spelling},
        {"mnuIncreaseFontSize", &Document::IncreaseFontSize},
        {"mnuDecreaseFontSize", &Document::DecreaseFontSize},
        {"mnuDefaultFontSize", &Document::DefaultFontSize},
        {"mnuRecordMarco", &Document::RecordMarco},
    };
    for (const Aim& aim : aims) {
        EXPECT_EQ(findCommand(aim.name)->target.document, aim.method) << aim.name;
    }
    EXPECT_EQ(findCommand("mnuNothing"), nullptr);
}

TEST(ToolTable, HoldsEveryButtonWithItsCommandAndRule) {
    qsizetype buttons = 0;
    for (const ExpectedButton& expected : ExpectedButtons) {
        const ToolRow* row = findTool(expected.key);
        ASSERT_NE(row, nullptr) << expected.key;
        EXPECT_STREQ(row->command, expected.command) << expected.key;
        EXPECT_EQ(statesOf(row->when), text(expected.enabled)) << expected.key;
        ASSERT_NE(findCommand(row->command), nullptr) << expected.key;
        EXPECT_FALSE(findCommand(row->command)->target.isEmpty()) << expected.key;
        EXPECT_EQ(row->checkable, findCommand(row->command)->checkable) << expected.key;
        EXPECT_STRNE(row->tip, "") << expected.key;
    }
    for (const ToolRow& row : toolTable())
        buttons += row.isGap() || row.isPlace() ? 0 : 1;
    EXPECT_EQ(buttons, std::ssize(ExpectedButtons));
}

TEST(ToolTable, KeepsThePlaceOfTheFindBar) {
    const ToolRow* place = findTool("SearchHistory");
    ASSERT_NE(place, nullptr);
    EXPECT_TRUE(place->isPlace());
}
