#include "lang/LanguageTable.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <utility>

namespace {

class TheLanguageTable : public testing::Test {
 protected:
    void put(const QString& folder, const QString& name, const QByteArray& bytes) {
        QDir().mkpath(home.filePath(folder + u"/languages"_qs));
        QFile file(home.filePath(folder + u"/languages/"_qs + name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    void putIndex(const QByteArray& bytes) { put(u"share"_qs, u"languages.idx"_qs, bytes); }
    QByteArray writtenIndex() const {
        QFile file(home.filePath(u"own/languages/languages.idx"_qs));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QStringList names() const {
        QStringList all;
        for (const LanguageTable::Entry& entry : table.entries())
            all.append(entry.LangName);
        return all;
    }
    static QByteArray records(int first, int count) {
        QByteArray bytes;
        for (int i = first; i < first + count; ++i)
            bytes += "<<L" + QByteArray::number(i) + ">>\r\n*.x" + QByteArray::number(i) + "\r\n";
        return bytes;
    }

    QTemporaryDir home;
    LanguageTable table{home.filePath(u"own"_qs), home.filePath(u"share"_qs)};
};

}  // namespace

TEST_F(TheLanguageTable, NamesAndPatternsAreUpperCase) {
    putIndex("<<Pascal>>\r\n*.pas,*.Pp\r\n<<c>>\r\n*.c\r\n");
    table.LoadLanguageIndex();
    ASSERT_EQ(names(), (QStringList{u"PASCAL"_qs, u"C"_qs}));
    EXPECT_EQ(table.entries()[0].LangExt, u",*.PAS,*.PP,"_qs);
}

TEST_F(TheLanguageTable, LinesAreTrimmedAndOthersSkipped) {
    putIndex("; a remark\n\n  <<A>>  \n*.a\n*.lost\n \t\n<<B>>\r\n*.b");
    table.LoadLanguageIndex();
    EXPECT_EQ(names(), (QStringList{u"A"_qs, u"B"_qs}));
    EXPECT_EQ(table.LanguageOfFile(u"x.lost"_qs), QString());
    EXPECT_EQ(table.LanguageOfFile(u"x.b"_qs), u"B"_qs);
}

TEST_F(TheLanguageTable, TheClosingMarkIsCutWhateverItIs) {
    putIndex("<<One--\r\n*.a\r\n<<Two\r\n*.b\r\n<<>>\r\n*.c\r\n<<\r\n*.d\r\n<<Last>>\r\n*.e\r\n");
    table.LoadLanguageIndex();
    EXPECT_EQ(names(), (QStringList{u"ONE"_qs, u"T"_qs, QString(), QString(), u"LAST"_qs}));
}

TEST_F(TheLanguageTable, TheLineBehindARecordIsItsPatternsAsItStands) {
    putIndex("<<A>>\r\n\r\n<<B>>\r\n<<C>>\r\n<<D>>\r\n *.d \r\n<<E>>\r\n");
    table.LoadLanguageIndex();
    EXPECT_EQ(names(), (QStringList{u"A"_qs, u"B"_qs, u"D"_qs}));
    EXPECT_EQ(table.entries()[0].LangExt, u",,"_qs);
    EXPECT_EQ(table.entries()[1].LangExt, u",<<C>>,"_qs);
    EXPECT_EQ(table.entries()[2].LangExt, u",*.D,"_qs);
    EXPECT_EQ(table.LanguageOfFile(u"x.d"_qs), u"D"_qs);
}

TEST_F(TheLanguageTable, BlanksAroundAPatternDoNotCount) {
    putIndex("<<A>>\r\n*.abc, *.abd\t,\t*.abe ,,*.a f\r\n");
    table.LoadLanguageIndex();
    for (const QString& file : {u"x.abc"_qs, u"x.abd"_qs, u"x.abe"_qs, u"x.a f"_qs}) {
        EXPECT_EQ(table.LanguageOfFile(file), u"A"_qs) << file.toStdString();
    }
    EXPECT_EQ(table.rows(), (QList<LanguageRow>{{u"A"_qs, u"*.ABC,*.ABD,*.ABE,,*.A F"_qs}}));
}

TEST_F(TheLanguageTable, NamesThatWouldLieInAnotherFolderAreSkipped) {
    putIndex("<<../A>>\r\n*.a\r\n<<B>>\r\n*.b\r\n");
    table.LoadLanguageIndex();
    EXPECT_EQ(names(), QStringList{u"B"_qs});
}

TEST_F(TheLanguageTable, LetterCaseOfAnExtensionDoesNotCount) {
    putIndex("<<C>>\r\n*.c,*.H\r\n");
    table.LoadLanguageIndex();
    for (const QString& file : {u"/x/a.c"_qs, u"/x/a.C"_qs, u"a.h"_qs, u"A.H"_qs, u".c"_qs, u"a.b.c"_qs}) {
        EXPECT_EQ(table.LanguageOfFile(file), u"C"_qs) << file.toStdString();
    }
}

TEST_F(TheLanguageTable, OnlyTheWholeExtensionCounts) {
    putIndex("<<C>>\r\n*.cc,*.x?,make*.mk\r\n");
    table.LoadLanguageIndex();
    for (const QString& file : {u"a.c"_qs, u"a.ccc"_qs, u"a.xy"_qs, u"make.mk"_qs, u"a"_qs, u"a."_qs, QString(),
                                u"/a.cc/b"_qs, u"/a.b/cc"_qs}) {
        EXPECT_EQ(table.LanguageOfFile(file), QString()) << file.toStdString();
    }
}

TEST_F(TheLanguageTable, AnExtensionGoesToTheFirstThatListsIt) {
    putIndex("<<A>>\r\n*.a\r\n<<B>>\r\n*.h,*.b\r\n<<C>>\r\n*.c,*.h\r\n");
    table.LoadLanguageIndex();
    EXPECT_EQ(table.LanguageOfFile(u"x.h"_qs), u"B"_qs);
}

TEST_F(TheLanguageTable, FiftyOneAreHeldAndTheNextEndsTheReading) {
    putIndex(records(0, 51));
    table.LoadLanguageIndex();
    EXPECT_EQ(table.entries().size(), 51);
    EXPECT_EQ(table.LanguageOfFile(u"a.x50"_qs), u"L50"_qs);

    putIndex(records(0, 60));
    LanguageTable other(home.filePath(u"own"_qs), home.filePath(u"share"_qs));
    other.LoadLanguageIndex();
    EXPECT_EQ(other.entries().size(), 51);
    EXPECT_EQ(other.LanguageOfFile(u"a.x51"_qs), QString());
}

TEST_F(TheLanguageTable, LoadingAgainAddsBehindAndTheFirstStillWins) {
    putIndex(records(0, 30));
    table.LoadLanguageIndex();
    table.LoadLanguageIndex();
    EXPECT_EQ(table.entries().size(), 51);
    EXPECT_EQ(table.entries()[30].LangName, u"L0"_qs);
    EXPECT_EQ(table.entries()[50].LangName, u"L20"_qs);
    EXPECT_EQ(table.rows().size(), 30);
    EXPECT_EQ(table.LanguageOfFile(u"a.x3"_qs), u"L3"_qs);
}

TEST_F(TheLanguageTable, ChangedPatternsOfADoubleCountWhereTheFirstHasNone) {
    putIndex("<<A>>\r\n*.a\r\n");
    table.LoadLanguageIndex();
    putIndex("<<A>>\r\n*.a,*.new\r\n");
    table.LoadLanguageIndex();
    EXPECT_EQ(table.LanguageOfFile(u"x.new"_qs), u"A"_qs);
}

TEST_F(TheLanguageTable, TheRowsAreThoseOfTheIndexAsItWasLastRead) {
    putIndex(records(0, 40));
    table.LoadLanguageIndex();
    putIndex("<<L1>>\r\n*.new\r\n<<L0>>\r\n*.x0\r\n<<ADDED>>\r\n*.added\r\n");
    table.LoadLanguageIndex();
    table.LoadLanguageIndex();
    EXPECT_EQ(table.rows(),
              (QList<LanguageRow>{{u"L1"_qs, u"*.NEW"_qs}, {u"L0"_qs, u"*.X0"_qs}, {u"ADDED"_qs, u"*.ADDED"_qs}}));
    EXPECT_EQ(table.entries().size(), 46);
    EXPECT_EQ(table.indexFault(), QString());
}

TEST_F(TheLanguageTable, ADoubleWithinTheIndexIsOneRow) {
    putIndex("<<A>>\r\n*.a\r\n<<B>>\r\n*.b\r\n<<a>>\r\n*.c\r\n");
    table.LoadLanguageIndex();
    EXPECT_EQ(table.rows(), (QList<LanguageRow>{{u"A"_qs, u"*.A"_qs}, {u"B"_qs, u"*.B"_qs}}));
}

TEST_F(TheLanguageTable, AnIndexOfMoreThanFiftyOneIsNotWritten) {
    putIndex(records(0, 51));
    table.LoadLanguageIndex();
    EXPECT_EQ(table.indexFault(), QString());
    EXPECT_TRUE(table.saveIndex(table.rows()));
    const QByteArray whole = records(0, 60);
    put(u"own"_qs, u"languages.idx"_qs, whole);
    table.LoadLanguageIndex();
    EXPECT_EQ(table.rows().size(), 51);
    EXPECT_EQ(table.indexFault(), home.filePath(u"own/languages/languages.idx"_qs) + u" has more than 51 languages"_qs);
    EXPECT_FALSE(table.saveIndex(table.rows()));
    EXPECT_EQ(writtenIndex(), whole);
}

TEST_F(TheLanguageTable, AnIndexWithARecordThatIsNoLanguageIsNotWritten) {
    const QString path = home.filePath(u"own/languages/languages.idx"_qs);
    const std::pair<QByteArray, QString> rows[] = {
        {"<<A>>\r\n*.a\r\n<<x/y>>\r\n*.x\r\n<<B>>\r\n*.b\r\n",
         path + u" has a language \"X/Y\", whose name has a \"/\""_qs},
        {"<<A>>\r\n*.a\r\n<<B>>\r\n*.b\r\n<<last>>\r\n", path + u" has no patterns for \"LAST\""_qs},
        {"<<A>>\r\n*.a\r\n<<B>>\r\n*.b\r\n<<last>>", path + u" has no patterns for \"LAST\""_qs},
    };
    for (const auto& [whole, fault] : rows) {
        put(u"own"_qs, u"languages.idx"_qs, whole);
        table.LoadLanguageIndex();
        EXPECT_EQ(table.rows(), (QList<LanguageRow>{{u"A"_qs, u"*.A"_qs}, {u"B"_qs, u"*.B"_qs}}));
        EXPECT_EQ(table.indexFault(), fault);
        EXPECT_FALSE(table.saveIndex(table.rows()));
        EXPECT_EQ(writtenIndex(), whole);
    }
}

TEST_F(TheLanguageTable, MoreThanFiftyOneRowsAreNotWritten) {
    QList<LanguageRow> rows;
    for (int row = 0; row < 52; ++row)
        rows.append({u"L%1"_qs.arg(row), u"*.l"_qs});
    EXPECT_FALSE(table.saveIndex(rows));
    EXPECT_EQ(writtenIndex(), QByteArray());
    rows.removeLast();
    EXPECT_TRUE(table.saveIndex(rows));
}

TEST_F(TheLanguageTable, OfAnIndexThatIsTooLongTheFirstPartIsReadAndNothingIsWritten) {
    QByteArray whole = "<<A>>\r\n*.a\r\n<<größe>>\r\n*.g\r\n";
    // The limit lies in the midst of a character.
    whole += QByteArray(LanguageTable::MostIndexBytes - whole.size() - 1, ' ') + QString(u'ü').toUtf8();
    whole += "\r\n<<B>>\r\n*.b\r\n";
    put(u"own"_qs, u"languages.idx"_qs, whole);
    table.LoadLanguageIndex();
    EXPECT_EQ(names(), (QStringList{u"A"_qs, QString::fromUtf8("GRÖSSE")}));
    EXPECT_TRUE(table.indexFault().contains(home.filePath(u"own/languages/languages.idx"_qs)));
    EXPECT_FALSE(table.saveIndex(table.rows()));
    EXPECT_EQ(writtenIndex(), whole);
}

TEST_F(TheLanguageTable, AnIndexThatCannotBeReadIsNotWritten) {
    put(u"own"_qs, u"languages.idx"_qs, records(0, 3));
    table.LoadLanguageIndex();
    const QList<LanguageRow> rows = table.rows();
    ASSERT_EQ(rows.size(), 3);
    QFile::remove(home.filePath(u"own/languages/languages.idx"_qs));
    ASSERT_TRUE(QDir().mkdir(home.filePath(u"own/languages/languages.idx"_qs)));
    table.LoadLanguageIndex();
    EXPECT_TRUE(table.rows().isEmpty());
    EXPECT_TRUE(table.indexFault().contains(u"languages.idx"_qs));
    ASSERT_TRUE(QDir().rmdir(home.filePath(u"own/languages/languages.idx"_qs)));
    EXPECT_FALSE(table.saveIndex(rows));
    put(u"own"_qs, u"languages.idx"_qs, records(0, 3));
    table.LoadLanguageIndex();
    EXPECT_EQ(table.indexFault(), QString());
    EXPECT_TRUE(table.saveIndex(rows));
}

TEST_F(TheLanguageTable, WithoutAnIndexTheTableStaysEmpty) {
    table.LoadLanguageIndex();
    EXPECT_TRUE(table.entries().isEmpty());
    EXPECT_EQ(table.indexFault(), QString());
    EXPECT_EQ(table.LanguageOfFile(u"a.c"_qs), QString());
    table.RegisterLanguage(u"C"_qs);
    EXPECT_EQ(table.definition(u"C"_qs), nullptr);
}

TEST_F(TheLanguageTable, LanguagesWithASoundDefinitionAreLoaded) {
    putIndex("<<Good>>\r\n*.g\r\n<<Bad>>\r\n*.b\r\n<<None>>\r\n*.n\r\n");
    put(u"share"_qs, u"GOOD.lng"_qs, "lexer cpp\n");
    put(u"share"_qs, u"BAD.lng"_qs, "lexer cpp\nnonsense\n");
    table.LoadLanguageIndex();
    EXPECT_TRUE(table.entries()[0].LangLoaded);
    EXPECT_FALSE(table.entries()[1].LangLoaded);
    EXPECT_FALSE(table.entries()[2].LangLoaded);
    ASSERT_NE(table.definition(u"good"_qs), nullptr);
    EXPECT_EQ(table.definition(u"good"_qs)->lexer, "cpp");
    EXPECT_EQ(table.definition(u"Bad"_qs), nullptr);
    EXPECT_EQ(table.LanguageOfFile(u"x.b"_qs), u"BAD"_qs);
    EXPECT_TRUE(table.lastError().endsWith(u"BAD.lng:2: \"nonsense\" is unknown"_qs));
    table.RegisterLanguage(u"None"_qs);
    EXPECT_TRUE(table.lastError().contains(u"NONE.lng"_qs));
}

TEST_F(TheLanguageTable, ADefinitionIsReadOnceAndAMissingOneWhenItHasCome) {
    putIndex("<<A>>\r\n*.a\r\n<<B>>\r\n*.b\r\n");
    put(u"share"_qs, u"A.lng"_qs, "lexer cpp\n");
    table.LoadLanguageIndex();
    const LanguageDefinition* first = table.definition(u"A"_qs);
    put(u"share"_qs, u"A.lng"_qs, "lexer python\n");
    put(u"share"_qs, u"B.lng"_qs, "lexer lua\n");
    table.LoadLanguageIndex();
    EXPECT_EQ(table.definition(u"A"_qs), first);
    EXPECT_EQ(table.definition(u"A"_qs)->lexer, "cpp");
    ASSERT_NE(table.definition(u"B"_qs), nullptr);
}

TEST_F(TheLanguageTable, ALanguageOfTheUsersIsFoundInTheProgramFolder) {
    putIndex("<<C>>\r\n*.c\r\n");
    put(u"share"_qs, u"C.lng"_qs, "lexer cpp\n");
    put(u"share"_qs, u"C.TXT"_qs, "shipped");
    put(u"own"_qs, u"languages.idx"_qs, "<<Mine>>\r\n*.mine\r\n<<C>>\r\n*.c\r\n");
    put(u"own"_qs, u"MINE.lng"_qs, "rules\noperators +\n");
    put(u"own"_qs, u"MINE.TXT"_qs, "mine");
    table.LoadLanguageIndex();
    EXPECT_EQ(table.LanguageOfFile(u"x.mine"_qs), u"MINE"_qs);
    ASSERT_NE(table.definition(u"MINE"_qs), nullptr);
    EXPECT_EQ(table.definition(u"MINE"_qs)->rules.operators, "+");
    EXPECT_EQ(table.samplePath(u"Mine"_qs), home.filePath(u"own/languages/MINE.TXT"_qs));
    ASSERT_NE(table.definition(u"C"_qs), nullptr);
    EXPECT_EQ(table.samplePath(u"C"_qs), home.filePath(u"share/languages/C.TXT"_qs));
}

TEST_F(TheLanguageTable, AnIndexInTheProgramFolderReplacesTheShippedOneWhole) {
    putIndex("<<C>>\r\n*.c\r\n");
    put(u"own"_qs, u"languages.idx"_qs, "<<Mine>>\r\n*.mine\r\n");
    table.LoadLanguageIndex();
    EXPECT_EQ(names(), QStringList{u"MINE"_qs});
}

TEST_F(TheLanguageTable, TheIndexIsWrittenAsItIsReadAndToTheProgramFolder) {
    putIndex("<<Pascal>>\n*.pas,*.pp\n<<größe>>\n*.gr\n");
    table.LoadLanguageIndex();
    EXPECT_TRUE(table.saveIndex(table.rows()));
    EXPECT_EQ(writtenIndex(), "<<PASCAL>>\r\n*.PAS,*.PP\r\n<<GRÖSSE>>\r\n*.GR\r\n");
    LanguageTable again(home.filePath(u"own"_qs), home.filePath(u"share"_qs));
    again.LoadLanguageIndex();
    EXPECT_EQ(again.rows(), table.rows());
}

TEST_F(TheLanguageTable, RowsWithALineBreakAreNotWritten) {
    EXPECT_TRUE(table.saveIndex({{u"A"_qs, u"*.a\n<<B>>"_qs}, {u"C\r"_qs, u"*.c"_qs}, {u"D"_qs, u"*.d"_qs}}));
    EXPECT_EQ(writtenIndex(), "<<D>>\r\n*.d\r\n");
}

TEST_F(TheLanguageTable, WritingIntoAFolderThatCannotBeMadeEndsQuietly) {
    QFile file(home.filePath(u"own"_qs));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_FALSE(table.saveIndex({{u"A"_qs, u"*.a"_qs}}));
}

TEST_F(TheLanguageTable, AnIndexOfTheWindowsCodePageIsRead) {
    putIndex("<<gr\xF6sse>>\r\n*.g\r\n");
    table.LoadLanguageIndex();
    EXPECT_EQ(names(), QStringList{u"GRÖSSE"_qs});
}
