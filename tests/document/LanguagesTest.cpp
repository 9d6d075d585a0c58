#include "document/DocumentFixture.h"
#include "document/EditorGlobals.h"

#include <QDir>
#include <QFileInfo>

using documenttest::writeFile;

namespace {

/// A document, and a program folder that a person puts languages into.
class Languages : public DocumentFixture {
 protected:
    LanguageTable& table() { return m_given.globals.languages; }
    void drop(const QString& name, const QByteArray& bytes) {
        const QString folder = m_given.programFolder.filePath(QStringLiteral("languages"));
        QDir().mkpath(folder);
        writeFile(folder + u'/' + name, bytes);
    }
    QByteArray installedIndex() const {
        return documenttest::readFile(shareFolder() + QStringLiteral("/languages/languages.idx"));
    }
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
    ASSERT_TRUE(open(fileOf("int x = 1; // one\n", QStringLiteral("a.cpp"))));
    EXPECT_EQ(m_document.GetLang(), QStringLiteral("C++"));
    EXPECT_EQ(classOf("int"), TokenClass::Type);
    EXPECT_EQ(classOf("1"), TokenClass::Number);
    EXPECT_EQ(classOf("//"), TokenClass::Comment);
    ASSERT_TRUE(open(fileOf("# one\nx = None\n", QStringLiteral("A.PY"))));
    EXPECT_EQ(m_document.GetLang(), QStringLiteral("PYTHON"));
    EXPECT_EQ(classOf("# one"), TokenClass::Comment);
    EXPECT_EQ(classOf("None"), TokenClass::Keyword);
}

TEST_F(Languages, AFileWithoutALanguageKeepsTheOneOfTheView) {
    table().LoadLanguageIndex();
    for (const char* name : {"plain", "notes.unknown", "with.dot/plain"}) {
        QDir(m_folder.path()).mkdir(QStringLiteral("with.dot"));
        ASSERT_TRUE(open(fileOf("int", QStringLiteral("a.cpp"))));
        ASSERT_TRUE(open(fileOf("int", QString::fromLatin1(name))));
        EXPECT_EQ(m_document.GetLang(), QStringLiteral("C++")) << name;
        EXPECT_EQ(classOf("int"), TokenClass::Type) << name;
    }
}

TEST_F(Languages, ADocumentBeginsWithoutOne) {
    table().LoadLanguageIndex();
    EXPECT_EQ(m_document.GetLang(), QString());
    ASSERT_TRUE(open(fileOf("int", QStringLiteral("notes.unknown"))));
    EXPECT_EQ(m_document.GetLang(), QString());
    EXPECT_EQ(classOf("int"), std::nullopt);
}

TEST_F(Languages, OneIsChosenByItsNameInAnyCaseAndTold) {
    table().LoadLanguageIndex();
    m_host.take();
    m_document.SetLang(QStringLiteral("html"));
    EXPECT_EQ(m_document.GetLang(), QStringLiteral("HTML"));
    EXPECT_EQ(m_host.take(), QStringList(QStringLiteral("CheckLangMenu")));
    m_document.SetLang(QStringLiteral("no such"));
    EXPECT_EQ(m_document.GetLang(), QStringLiteral("HTML"));
    EXPECT_EQ(m_host.take(), QStringList(QStringLiteral("CheckLangMenu")));
}

TEST_F(Languages, ADroppedLanguageColoursItsFilesWithoutABuild) {
    drop(QStringLiteral("languages.idx"), installedIndex() + "<<Knitting>>\r\n*.knit,*.purl\r\n");
    drop(QStringLiteral("KNITTING.lng"), "rules nocase\ncomment #\nkeywords 0 knit purl\nstring \" \" none\n");
    table().LoadLanguageIndex();
    ASSERT_TRUE(open(fileOf("KNIT 2 \"blue\" # row\n", QStringLiteral("sock.Purl"))));
    EXPECT_EQ(m_document.GetLang(), QStringLiteral("KNITTING"));
    EXPECT_EQ(classOf("KNIT"), TokenClass::Keyword);
    EXPECT_EQ(classOf("2"), TokenClass::Number);
    EXPECT_EQ(classOf("\"blue"), TokenClass::String);
    EXPECT_EQ(classOf("# row"), TokenClass::Comment);
    ASSERT_TRUE(open(fileOf("int", QStringLiteral("a.cpp"))));
    EXPECT_EQ(m_document.GetLang(), QStringLiteral("C++"));
}

TEST_F(Languages, ADroppedDefinitionReplacesTheInstalledOne) {
    drop(QStringLiteral("C++.lng"), "rules\nkeywords 0 spam\n");
    table().LoadLanguageIndex();
    ASSERT_TRUE(open(fileOf("spam int", QStringLiteral("a.cpp"))));
    EXPECT_EQ(classOf("spam"), TokenClass::Keyword);
    EXPECT_EQ(classOf("int"), TokenClass::Text);
}

TEST_F(Languages, AMissingOrDamagedDefinitionLeavesTheLanguageAsItWas) {
    drop(QStringLiteral("languages.idx"), "<<GOOD>>\r\n*.good\r\n<<GONE>>\r\n*.gone\r\n<<BAD>>\r\n*.bad\r\n");
    drop(QStringLiteral("GOOD.lng"), "rules\nkeywords 0 good\n");
    drop(QStringLiteral("BAD.lng"), QByteArray("lexer nonsense\n\0\xFF", 17));
    table().LoadLanguageIndex();
    ASSERT_TRUE(open(fileOf("good", QStringLiteral("a.good"))));
    for (const char* name : {"a.gone", "a.bad"}) {
        ASSERT_TRUE(open(fileOf("good", QString::fromLatin1(name))));
        EXPECT_EQ(m_document.GetLang(), QStringLiteral("GOOD")) << name;
        EXPECT_EQ(classOf("good"), TokenClass::Keyword) << name;
    }
    for (const char* name : {"GONE", "BAD"}) {
        m_document.SetLang(QString::fromLatin1(name));
        EXPECT_EQ(m_document.GetLang(), QStringLiteral("GOOD")) << name;
    }
    EXPECT_EQ(table().loadedNames(), QStringList(QStringLiteral("GOOD")));
    EXPECT_EQ(m_prompts.messages, QStringList());
}

TEST_F(Languages, WithoutAnIndexNoFileHasALanguage) {
    drop(QStringLiteral("languages.idx"), "");
    table().LoadLanguageIndex();
    ASSERT_TRUE(open(fileOf("int", QStringLiteral("a.cpp"))));
    EXPECT_EQ(m_document.GetLang(), QString());
    EXPECT_EQ(view().Text(), QStringLiteral("int"));
    EXPECT_EQ(m_prompts.messages, QStringList());
}

TEST_F(Languages, TheFiftySecondOfTheIndexIsNotKnown) {
    QByteArray index;
    for (int i = 1; i <= 52; ++i) {
        index += "<<L" + QByteArray::number(i) + ">>\r\n*.l" + QByteArray::number(i) + "\r\n";
        drop(QStringLiteral("L%1.lng").arg(i), "rules\nkeywords 0 word\n");
    }
    drop(QStringLiteral("languages.idx"), index);
    table().LoadLanguageIndex();
    ASSERT_TRUE(open(fileOf("word", QStringLiteral("a.l52"))));
    EXPECT_EQ(m_document.GetLang(), QString());
    ASSERT_TRUE(open(fileOf("word", QStringLiteral("a.l51"))));
    EXPECT_EQ(m_document.GetLang(), QStringLiteral("L51"));
    EXPECT_EQ(classOf("word"), TokenClass::Keyword);
}

TEST_F(Languages, OfTwoThatClaimAFileTheFirstHasIt) {
    drop(QStringLiteral("languages.idx"), "<<ONE>>\r\n*.x,*.a\r\n<<TWO>>\r\n*.a,*.b\r\n");
    for (const char* name : {"ONE.lng", "TWO.lng"})
        drop(QString::fromLatin1(name), "rules\n");
    table().LoadLanguageIndex();
    ASSERT_TRUE(open(fileOf("", QStringLiteral("f.a"))));
    EXPECT_EQ(m_document.GetLang(), QStringLiteral("ONE"));
}

TEST_F(Languages, ATextTooLargeToBeColouredKeepsItsLanguage) {
    table().LoadLanguageIndex();
    ASSERT_TRUE(open(fileOf(QByteArray("int x;\n").repeated(10'000'000), QStringLiteral("a.cpp"))));
    EXPECT_EQ(m_document.GetLang(), QStringLiteral("C++"));
    EXPECT_EQ(control().limitations(), QStringLiteral("no colouring above 64 MB"));
    control().grab();
    EXPECT_EQ(control().colouring().classAt(0), std::nullopt);
    ASSERT_TRUE(open(fileOf("int x;\n", QStringLiteral("b.cpp"))));
    EXPECT_EQ(classOf("int"), TokenClass::Type);
}
