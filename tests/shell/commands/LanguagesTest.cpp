#include "document/DocumentServices.h"
#include "document/EditorGlobals.h"
#include "platform/Folders.h"
#include "shell/FrameFixture.h"
#include "shell/outside/HelpPages.h"

#include <QDesktopServices>
#include <QDialog>
#include <QDir>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>
#include <Qsci/qsciscintillabase.h>

namespace {

/// The desktop's opener, noted.
class NotedOpener : public QObject {
    Q_OBJECT

 public:
    NotedOpener() { QDesktopServices::setUrlHandler(u"file"_qs, this, "open"); }
    ~NotedOpener() override { QDesktopServices::unsetUrlHandler(u"file"_qs); }

    QStringList opened;

 public Q_SLOTS:
    void open(const QUrl& url) { opened << url.toLocalFile(); }
};

class FrameLanguages : public FrameFixture {
 protected:
    FrameLanguages() { m_shareFolder = shareFolder(); }

    /// Those marked in the menu.
    QStringList marked() {
        QStringList names;
        for (const QAction* one : house().entries.menu("mnuLanguages")->actions()) {
            if (one->isChecked())
                names << MenuText::captionOf(*one);
        }
        return names;
    }
    void drop(const QString& name, const QByteArray& bytes) {
        QDir().mkpath(m_programFolder.filePath(u"languages"_qs));
        QFile file(m_programFolder.filePath(u"languages/"_qs + name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    /// Runs the command and examines the form that it shows.
    void organize(const std::function<void(QDialog&)>& look) {
        bool shown = false;
        QTimer::singleShot(0, m_frame.get(), [&] {
            auto* form = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(form, nullptr);
            EXPECT_EQ(form->objectName(), u"fmrLangProperties"_qs);
            shown = true;
            look(*form);
            form->reject();
        });
        run("mnuOrgLanguages");
        EXPECT_TRUE(shown);
    }
};

}  // namespace

TEST_F(FrameLanguages, TheMenuListsThoseThatLoaded) {
    drop(u"languages.idx"_qs, "<<ONE>>\r\n*.one\r\n<<BAD>>\r\n*.bad\r\n<<TWO>>\r\n*.two\r\n");
    drop(u"ONE.lng"_qs, "rules\n");
    drop(u"BAD.lng"_qs, "nonsense\n");
    drop(u"TWO.lng"_qs, "rules\n");
    start();
    EXPECT_EQ(MenuText::captionOf(*entry("mnuLanguage(0)")), u"ONE"_qs);
    EXPECT_EQ(MenuText::captionOf(*entry("mnuLanguage(1)")), u"TWO"_qs);
    EXPECT_EQ(entry("mnuLanguage(2)"), nullptr);
}

TEST_F(FrameLanguages, AnIndexThatIsMissingLeavesTheMenuEmptyAndTheProgramRunning) {
    m_shareFolder = m_programFolder.path();
    start();
    EXPECT_EQ(entry("mnuLanguage(0)"), nullptr);
    open(fileOf("int", u"a.cpp"_qs));
    EXPECT_EQ(active()->GetLang(), QString());
    EXPECT_EQ(m_prompts.messages, QStringList());
}

TEST_F(FrameLanguages, TheTickFollowsLoadsChoicesAndActivation) {
    start();
    EXPECT_EQ(marked(), QStringList());
    open(fileOf("int", u"a.cpp"_qs));
    frmDocument* first = active();
    EXPECT_EQ(marked(), QStringList(u"C++"_qs));
    open(fileOf("x", u"b.py"_qs));
    EXPECT_EQ(marked(), QStringList(u"PYTHON"_qs));
    languageEntry("RUBY")->trigger();
    EXPECT_EQ(active()->GetLang(), u"RUBY"_qs);
    EXPECT_EQ(marked(), QStringList(u"RUBY"_qs));
    house().children.bringToFront(first);
    QCoreApplication::processEvents();
    EXPECT_EQ(marked(), QStringList(u"C++"_qs));
    EXPECT_TRUE(entry("mnuShowLineNumber")->isChecked());
}

TEST_F(FrameLanguages, StoredLooksAreThereFromTheStartAndReachAllOpenDocuments) {
    TokenLooks looks;
    looks.setItalic(TokenClass::Keyword, true);
    ASSERT_EQ(looks.save(m_registry), RegistryCode::Ok);
    start();
    TokenTheme& theme = house().documentServices.globals.theme;
    EXPECT_EQ(theme.looks(), looks);
    open(fileOf("if", u"a.cpp"_qs));
    const frmDocument* first = active();
    open(fileOf("if", u"b.cpp"_qs));
    constexpr unsigned long Keyword = 5;
    const auto italic = [](const frmDocument* document) {
        return document->GetEditor()->findChild<QsciScintillaBase*>()->SendScintilla(
                   QsciScintillaBase::SCI_STYLEGETITALIC, Keyword) != 0;
    };
    EXPECT_TRUE(italic(first));
    theme.setLooks(TokenLooks());
    EXPECT_FALSE(italic(first));
    EXPECT_FALSE(italic(active()));
    EXPECT_TRUE(m_frame->close());
    TokenLooks stored;
    stored.load(m_registry);
    EXPECT_EQ(stored, TokenLooks());
}

TEST_F(FrameLanguages, OrganizingThemShowsTheFormAlone) {
    start();
    organize([](QDialog& form) {
        const auto* list = form.findChild<QTreeWidget*>(u"lvLang"_qs);
        ASSERT_NE(list, nullptr);
        EXPECT_GE(list->topLevelItemCount(), 45);
    });
}

TEST_F(FrameLanguages, TheFormsHelpIsThePageOfLanguages) {
    NotedOpener opener;
    start();
    organize([](QDialog& form) { form.findChild<QPushButton*>(u"cmdHelp"_qs)->click(); });
    EXPECT_EQ(opener.opened, QStringList(shareFolder() + u"/help/languages.html"_qs));
}

TEST_F(FrameLanguages, APageOfOnesOwnGoesBeforeTheInstalledOneAndAMissingOneIsPassedOver) {
    NotedOpener opener;
    const HelpPages pages(m_programFolder.path(), shareFolder());
    pages.show(u"no such.html"_qs);
    EXPECT_EQ(opener.opened, QStringList());
    QDir(m_programFolder.path()).mkdir(u"help"_qs);
    QFile own(m_programFolder.filePath(u"help/main.html"_qs));
    ASSERT_TRUE(own.open(QIODevice::WriteOnly));
    pages.show(u"main.html"_qs);
    EXPECT_EQ(opener.opened, QStringList(own.fileName()));
}

#include "LanguagesTest.moc"
