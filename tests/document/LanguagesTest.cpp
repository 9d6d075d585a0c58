#include "document/DocumentFixture.h"
#include "document/EditorGlobals.h"
#include "editor/control/ControlFile.h"
#include "editor/control/TextControl.h"
#include "editor/held/Colouring.h"

#include <QDir>
#include <QFileInfo>

using documenttest::writeFile;

namespace {

/// A document, and a program folder to which the user adds languages.
class Languages : public DocumentFixture {
 protected:
    LanguageTable& table() { return m_given.globals.languages; }
    void drop(const QString& name, const QByteArray& bytes) {
        const QString folder = m_given.programFolder.filePath(u"languages"_qs);
        QDir().mkpath(folder);
        writeFile(folder + u'/' + name, bytes);
    }
    QByteArray installedIndex() const { return documenttest::readFile(shareFolder() + u"/languages/languages.idx"_qs); }
    std::optional<TokenClass> classOf(const QByteArray& piece) {
        const auto byte = view().Text().toUtf8().indexOf(piece);
        EXPECT_GE(byte, 0) << piece.constData();
        control().colouring().completeTo(byte + piece.size());
        return control().colouring().classAt(byte);
    }
};

}  // namespace

TEST_F(Languages, AFileIsColouredByItsExtension) {
    table().LoadLanguageIndex();
    ASSERT_TRUE(open(fileOf("int x = 1; // one\n", u"a.cpp"_qs)));
    EXPECT_EQ(m_document.GetLang(), u"C++"_qs);
    EXPECT_EQ(classOf("int"), TokenClass::Type);
    EXPECT_EQ(classOf("1"), TokenClass::Number);
    EXPECT_EQ(classOf("//"), TokenClass::Comment);
    ASSERT_TRUE(open(fileOf("# one\nx = None\n", u"A.PY"_qs)));
    EXPECT_EQ(m_document.GetLang(), u"PYTHON"_qs);
    EXPECT_EQ(classOf("# one"), TokenClass::Comment);
    EXPECT_EQ(classOf("None"), TokenClass::Keyword);
}

TEST_F(Languages, AFileWithoutALanguageKeepsTheOneOfTheView) {
    table().LoadLanguageIndex();
    for (const char* name : {"plain", "notes.unknown", "with.dot/plain"}) {
        QDir(m_folder.path()).mkdir(u"with.dot"_qs);
        ASSERT_TRUE(open(fileOf("int", u"a.cpp"_qs)));
        ASSERT_TRUE(open(fileOf("int", QString::fromLatin1(name))));
        EXPECT_EQ(m_document.GetLang(), u"C++"_qs) << name;
        EXPECT_EQ(classOf("int"), TokenClass::Type) << name;
    }
}

TEST_F(Languages, ADocumentBeginsWithoutOne) {
    table().LoadLanguageIndex();
    EXPECT_EQ(m_document.GetLang(), QString());
    ASSERT_TRUE(open(fileOf("int", u"notes.unknown"_qs)));
    EXPECT_EQ(m_document.GetLang(), QString());
    EXPECT_EQ(classOf("int"), std::nullopt);
}

TEST_F(Languages, OneIsChosenByItsNameInAnyCaseAndTold) {
    table().LoadLanguageIndex();
    m_host.take();
    m_document.SetLang(u"html"_qs);
    EXPECT_EQ(m_document.GetLang(), u"HTML"_qs);
    EXPECT_EQ(m_host.take(), QStringList(u"CheckLangMenu"_qs));
    m_document.SetLang(u"no such"_qs);
    EXPECT_EQ(m_document.GetLang(), u"HTML"_qs);
    EXPECT_EQ(m_host.take(), QStringList(u"CheckLangMenu"_qs));
}

TEST_F(Languages, ADroppedLanguageColoursItsFilesWithoutABuild) {
    drop(u"languages.idx"_qs, installedIndex() + "<<Knitting>>\r\n*.knit,*.purl\r\n");
    drop(u"KNITTING.lng"_qs, "rules nocase\ncomment #\nkeywords 0 knit purl\nstring \" \" none\n");
    table().LoadLanguageIndex();
    ASSERT_TRUE(open(fileOf("KNIT 2 \"blue\" # row\n", u"sock.Purl"_qs)));
    EXPECT_EQ(m_document.GetLang(), u"KNITTING"_qs);
    EXPECT_EQ(classOf("KNIT"), TokenClass::Keyword);
    EXPECT_EQ(classOf("2"), TokenClass::Number);
    EXPECT_EQ(classOf("\"blue"), TokenClass::String);
    EXPECT_EQ(classOf("# row"), TokenClass::Comment);
    ASSERT_TRUE(open(fileOf("int", u"a.cpp"_qs)));
    EXPECT_EQ(m_document.GetLang(), u"C++"_qs);
}

TEST_F(Languages, ADroppedDefinitionReplacesTheInstalledOne) {
    drop(u"C++.lng"_qs, "rules\nkeywords 0 spam\n");
    table().LoadLanguageIndex();
    ASSERT_TRUE(open(fileOf("spam int", u"a.cpp"_qs)));
    EXPECT_EQ(classOf("spam"), TokenClass::Keyword);
    EXPECT_EQ(classOf("int"), TokenClass::Text);
}

TEST_F(Languages, AMissingOrDamagedDefinitionLeavesTheLanguageAsItWas) {
    drop(u"languages.idx"_qs, "<<GOOD>>\r\n*.good\r\n<<GONE>>\r\n*.gone\r\n<<BAD>>\r\n*.bad\r\n");
    drop(u"GOOD.lng"_qs, "rules\nkeywords 0 good\n");
    drop(u"BAD.lng"_qs, QByteArray("lexer nonsense\n\0\xFF", 17));
    table().LoadLanguageIndex();
    ASSERT_TRUE(open(fileOf("good", u"a.good"_qs)));
    for (const char* name : {"a.gone", "a.bad"}) {
        ASSERT_TRUE(open(fileOf("good", QString::fromLatin1(name))));
        EXPECT_EQ(m_document.GetLang(), u"GOOD"_qs) << name;
        EXPECT_EQ(classOf("good"), TokenClass::Keyword) << name;
    }
    for (const char* name : {"GONE", "BAD"}) {
        m_document.SetLang(QString::fromLatin1(name));
        EXPECT_EQ(m_document.GetLang(), u"GOOD"_qs) << name;
    }
    EXPECT_EQ(table().loadedNames(), QStringList(u"GOOD"_qs));
    EXPECT_EQ(m_prompts.messages, QStringList());
}

TEST_F(Languages, WithoutAnIndexNoFileHasALanguage) {
    drop(u"languages.idx"_qs, "");
    table().LoadLanguageIndex();
    ASSERT_TRUE(open(fileOf("int", u"a.cpp"_qs)));
    EXPECT_EQ(m_document.GetLang(), QString());
    EXPECT_EQ(view().Text(), u"int"_qs);
    EXPECT_EQ(m_prompts.messages, QStringList());
}

TEST_F(Languages, TheFiftySecondOfTheIndexIsNotKnown) {
    QByteArray index;
    for (int i = 1; i <= 52; ++i) {
        index += "<<L" + QByteArray::number(i) + ">>\r\n*.l" + QByteArray::number(i) + "\r\n";
        drop(u"L%1.lng"_qs.arg(i), "rules\nkeywords 0 word\n");
    }
    drop(u"languages.idx"_qs, index);
    table().LoadLanguageIndex();
    ASSERT_TRUE(open(fileOf("word", u"a.l52"_qs)));
    EXPECT_EQ(m_document.GetLang(), QString());
    ASSERT_TRUE(open(fileOf("word", u"a.l51"_qs)));
    EXPECT_EQ(m_document.GetLang(), u"L51"_qs);
    EXPECT_EQ(classOf("word"), TokenClass::Keyword);
}

TEST_F(Languages, OfTwoThatClaimAFileTheFirstHasIt) {
    drop(u"languages.idx"_qs, "<<ONE>>\r\n*.x,*.a\r\n<<TWO>>\r\n*.a,*.b\r\n");
    for (const char* name : {"ONE.lng", "TWO.lng"})
        drop(QString::fromLatin1(name), "rules\n");
    table().LoadLanguageIndex();
    ASSERT_TRUE(open(fileOf("", u"f.a"_qs)));
    EXPECT_EQ(m_document.GetLang(), u"ONE"_qs);
}

TEST_F(Languages, ATextTooLargeToBeColouredKeepsItsLanguage) {
    table().LoadLanguageIndex();
    ASSERT_TRUE(open(fileOf(QByteArray("int x;\n").repeated(10'000'000), u"a.cpp"_qs)));
    EXPECT_EQ(m_document.GetLang(), u"C++"_qs);
    EXPECT_EQ(control().file().limitations(), u"no colouring above 64 MB"_qs);
    control().grab();
    EXPECT_EQ(control().colouring().classAt(0), std::nullopt);
    ASSERT_TRUE(open(fileOf("int x;\n", u"b.cpp"_qs)));
    EXPECT_EQ(classOf("int"), TokenClass::Type);
}
