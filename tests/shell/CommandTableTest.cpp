#include "shell/CommandTable.h"

#include <QFile>
#include <QKeySequence>
#include <QSet>
#include <QString>

#include <gtest/gtest.h>

namespace {

QString text(const char* latin) {
    return QString::fromLatin1(latin);
}

constexpr DocumentState textUnlocked{true, false};
constexpr DocumentState textLocked{true, true};
constexpr DocumentState hexUnlocked{false, false};
constexpr DocumentState hexLocked{false, true};

QStringList enabledNames(const DocumentState& state) {
    QStringList names;
    for (const CommandRow& row : commandTable()) {
        if (row.when != Enabled::Always && isEnabled(row.when, state))
            names << text(row.name);
    }
    return names;
}

QStringList enabledButtons(const DocumentState& state) {
    QStringList keys;
    for (const ToolRow& row : toolTable()) {
        if (row.when != Enabled::Always && isEnabled(row.when, state))
            keys << text(row.key);
    }
    return keys;
}

QStringList list(std::initializer_list<const char*> names) {
    QStringList all;
    for (const char* name : names)
        all << text(name);
    return all;
}

}  // namespace

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
        if (row.target.frame == nullptr && row.target.document == nullptr)
            menus.insert(text(row.name));
    }
}

TEST(CommandTable, EveryKeyIsAKeyAndGivenOnce) {
    QSet<QString> keys;
    for (const CommandRow& row : commandTable()) {
        if (*row.key == '\0')
            continue;
        EXPECT_FALSE(QKeySequence(text(row.key), QKeySequence::PortableText).isEmpty()) << row.name;
        EXPECT_FALSE(keys.contains(text(row.key))) << row.name;
        keys.insert(text(row.key));
    }
    EXPECT_EQ(keys, QSet<QString>({text("Ctrl+N"), text("Ctrl+O"), text("Ctrl+S"), text("Ctrl+A")}));
}

TEST(CommandTable, EveryPictureIsShipped) {
    for (const CommandRow& row : commandTable()) {
        if (*row.icon != '\0') {
            EXPECT_TRUE(QFile::exists(QStringLiteral(":/icons/%1.svg").arg(text(row.icon)))) << row.icon;
        }
    }
    for (const ToolRow& row : toolTable()) {
        if (*row.key != '\0') {
            EXPECT_TRUE(QFile::exists(QStringLiteral(":/icons/%1.svg").arg(text(row.icon)))) << row.icon;
        }
    }
}

TEST(CommandTable, EveryButtonNamesACommandWithATarget) {
    for (const ToolRow& row : toolTable()) {
        if (*row.key == '\0')
            continue;
        const CommandRow* command = findCommand(row.command);
        ASSERT_NE(command, nullptr) << row.key;
        EXPECT_TRUE(command->target.frame != nullptr || command->target.document != nullptr) << row.key;
    }
    EXPECT_EQ(findCommand("mnuNothing"), nullptr);
}

TEST(CommandRules, UnlockedTextHasAllOfItsCommands) {
    EXPECT_EQ(enabledNames(textUnlocked), list({"mnuFileSave", "mnuSaveEncoding", "mnuEditUndo", "mnuEditRedo",
                                                "mnuEditCut", "mnuEditCopy", "mnuEditPaste", "mnuSelectAll"}));
    EXPECT_EQ(enabledButtons(textUnlocked), list({"Save", "Undo", "Redo", "Cut", "Paste"}));
}

TEST(CommandRules, LockedTextLosesEvenCopy) {
    EXPECT_EQ(enabledNames(textLocked), list({"mnuSaveEncoding", "mnuSelectAll"}));
    EXPECT_EQ(enabledButtons(textLocked), QStringList());
}

TEST(CommandRules, UnlockedHexKeepsSaveUndoAndCopy) {
    EXPECT_EQ(enabledNames(hexUnlocked), list({"mnuFileSave", "mnuEditUndo", "mnuEditCopy"}));
    EXPECT_EQ(enabledButtons(hexUnlocked), list({"Save", "Undo"}));
}

TEST(CommandRules, LockedHexHasNoneOfThem) {
    EXPECT_EQ(enabledNames(hexLocked), QStringList());
    EXPECT_EQ(enabledButtons(hexLocked), QStringList());
}

TEST(CommandRules, TheGroupOfTheHexCommandsIsOffInText) {
    EXPECT_FALSE(isEnabled(Enabled::InHex, textUnlocked));
    EXPECT_TRUE(isEnabled(Enabled::InHex, hexLocked));
    EXPECT_TRUE(isEnabled(Enabled::Always, hexLocked));
}
