#include "lang/LanguageFile.h"
#include "lang/LanguageTable.h"
#include "lang/LexerNames.h"
#include "platform/Folders.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <Qsci/qsciscintillabase.h>

#include <gtest/gtest.h>

namespace {

using Sci = QsciScintillaBase;

class ShippedLanguages : public testing::Test {
 protected:
    ShippedLanguages() { table.LoadLanguageIndex(); }

    static QByteArray bytesOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    LanguageTable table{u"/nowhere"_qs, shareFolder()};
};

/// The text of each class in a sample, as the library's lexer cuts it.
QMap<TokenClass, QByteArray> coloured(const LanguageDefinition& language, const QByteArray& text) {
    QsciScintillaBase control;
    control.SendScintilla(Sci::SCI_SETCODEPAGE, 65001);
    control.SendScintilla(Sci::SCI_SETLEXERLANGUAGE, 0UL, language.lexer.constData());
    for (const auto& [name, value] : language.properties)
        control.SendScintilla(Sci::SCI_SETPROPERTY, name.constData(), value.constData());
    for (int set = 0; set < LanguageDefinition::KeywordSets; ++set) {
        control.SendScintilla(Sci::SCI_SETKEYWORDS, static_cast<unsigned long>(set),
                              language.keywords[set].constData());
    }
    control.SendScintilla(Sci::SCI_SETTEXT, 0UL, text.constData());
    control.SendScintilla(Sci::SCI_COLOURISE, 0UL, -1L);
    QMap<TokenClass, QByteArray> found;
    for (int at = 0; at < text.size(); ++at) {
        const int style = static_cast<unsigned char>(control.SendScintilla(Sci::SCI_GETSTYLEAT, at));
        found[language.classOfStyle[style]] += text[at];
    }
    return found;
}

}  // namespace

TEST_F(ShippedLanguages, ThereAreAtLeastFortyFiveAndRoomForOnesOwn) {
    EXPECT_GE(table.entries().size(), 45);
    EXPECT_LT(table.entries().size(), LanguageTable::MostLanguages);
    EXPECT_EQ(table.rows().size(), table.entries().size());
}

TEST_F(ShippedLanguages, EveryDefinitionLoads) {
    for (const LanguageTable::Entry& entry : table.entries()) {
        table.RegisterLanguage(entry.LangName);
        EXPECT_TRUE(entry.LangLoaded) << table.lastError().toStdString();
    }
}

TEST_F(ShippedLanguages, EveryFileBelongsToALanguageOfTheIndex) {
    QSet<QString> expected{u"README"_qs, u"languages.idx"_qs};
    for (const LanguageTable::Entry& entry : table.entries())
        expected << entry.LangName + u".lng"_qs << entry.LangName + u".TXT"_qs;
    const QStringList files = QDir(shareFolder() + u"/languages"_qs).entryList(QDir::Files);
    EXPECT_EQ(QSet<QString>(files.begin(), files.end()), expected);
}

TEST_F(ShippedLanguages, EverySampleIsShortAndThere) {
    for (const LanguageTable::Entry& entry : table.entries()) {
        const qsizetype lines = bytesOf(table.samplePath(entry.LangName)).count('\n');
        EXPECT_GE(lines, 15) << entry.LangName.toStdString();
        EXPECT_LE(lines, 45) << entry.LangName.toStdString();
    }
}

TEST_F(ShippedLanguages, EveryPatternFindsItsLanguage) {
    const QRegularExpression form(u"^\\*\\.[^.,* ]+$"_qs);
    for (const LanguageRow& row : table.rows()) {
        for (const QString& pattern : row.patterns.split(u',')) {
            EXPECT_TRUE(form.match(pattern).hasMatch()) << pattern.toStdString();
            EXPECT_EQ(table.LanguageOfFile(u"/home/u/file"_qs + pattern.mid(1).toLower()), row.name)
                << pattern.toStdString();
        }
    }
}

TEST_F(ShippedLanguages, EveryNameOfALexerIsKnownToTheLibrary) {
    QsciScintillaBase control;
    for (const char* name : LexerNames::all()) {
        control.SendScintilla(Sci::SCI_SETLEXERLANGUAGE, 0UL, "");
        control.SendScintilla(Sci::SCI_SETLEXERLANGUAGE, 0UL, name);
        QByteArray chosen(64, '\0');
        chosen.resize(control.SendScintilla(Sci::SCI_GETLEXERLANGUAGE, 0UL, chosen.data()));
        EXPECT_EQ(chosen, name);
    }
}

TEST_F(ShippedLanguages, EverySampleShowsSeveralClassesAndNoError) {
    for (const LanguageTable::Entry& entry : table.entries()) {
        const LanguageDefinition* language = table.definition(entry.LangName);
        ASSERT_NE(language, nullptr);
        if (language->lexer.isEmpty())
            continue;
        const auto found = coloured(*language, bytesOf(table.samplePath(entry.LangName)));
        EXPECT_GE(found.size(), 4) << entry.LangName.toStdString();
        // A removed line is shown there in the colour of an error.
        const bool hasNone = entry.LangName == u"DIFF"_qs || !found.contains(TokenClass::Error);
        EXPECT_TRUE(hasNone) << entry.LangName.toStdString() << ": " << found.value(TokenClass::Error).constData();
    }
}

TEST_F(ShippedLanguages, TheHelpNamesEveryLexerAndClass) {
    const QByteArray page = bytesOf(shareFolder() + u"/help/languages.html"_qs);
    for (const char* name : LexerNames::all()) {
        EXPECT_TRUE(page.contains("<code>" + QByteArray(name) + "</code>")) << name;
    }
    for (const TokenClasses::Row& row : TokenClasses::table()) {
        EXPECT_TRUE(page.contains("<code>" + QByteArray(row.name) + "</code>")) << row.name;
    }
}

TEST_F(ShippedLanguages, TheDefinitionsThatTheHelpShowsAreSound) {
    const QString page = QString::fromUtf8(bytesOf(shareFolder() + u"/help/languages.html"_qs));
    const QRegularExpression block(u"<pre>(# KNITTING[^<]*)</pre>"_qs);
    int shown = 0;
    for (auto match = block.globalMatch(page); match.hasNext(); ++shown) {
        const LanguageFile::Result read = LanguageFile::parse(match.next().captured(1).toUtf8(), u"help"_qs);
        EXPECT_TRUE(read.definition.has_value()) << read.error.toStdString();
    }
    EXPECT_EQ(shown, 2);
}
