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

namespace {

/// The desktop's opener, noted.
class NotedOpener : public QObject {
    Q_OBJECT

 public:
    NotedOpener() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~NotedOpener() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }

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
        for (const QAction* one : parts().commands->menu("mnuLanguages")->actions()) {
            if (one->isChecked())
                names << MenuText::captionOf(*one);
        }
        return names;
    }
    void drop(const QString& name, const QByteArray& bytes) {
        QDir().mkpath(m_programFolder.filePath(QStringLiteral("languages")));
        QFile file(m_programFolder.filePath(QStringLiteral("languages/") + name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    /// Runs the command and looks at the form that it shows.
    void organize(const std::function<void(QDialog&)>& look) {
        bool shown = false;
        QTimer::singleShot(0, m_frame.get(), [&] {
            auto* form = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(form, nullptr);
            EXPECT_EQ(form->objectName(), QStringLiteral("fmrLangProperties"));
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
    drop(QStringLiteral("languages.idx"), "<<ONE>>\r\n*.one\r\n<<BAD>>\r\n*.bad\r\n<<TWO>>\r\n*.two\r\n");
    drop(QStringLiteral("ONE.lng"), "rules\n");
    drop(QStringLiteral("BAD.lng"), "nonsense\n");
    drop(QStringLiteral("TWO.lng"), "rules\n");
    start();
    EXPECT_EQ(MenuText::captionOf(*entry("mnuLanguage(0)")), QStringLiteral("ONE"));
    EXPECT_EQ(MenuText::captionOf(*entry("mnuLanguage(1)")), QStringLiteral("TWO"));
    EXPECT_EQ(entry("mnuLanguage(2)"), nullptr);
}

TEST_F(FrameLanguages, AnIndexThatIsMissingLeavesTheMenuEmptyAndTheProgramRunning) {
    m_shareFolder = m_programFolder.path();
    start();
    EXPECT_EQ(entry("mnuLanguage(0)"), nullptr);
    open(fileOf("int", QStringLiteral("a.cpp")));
    EXPECT_EQ(active()->GetLang(), QString());
    EXPECT_EQ(m_prompts.messages, QStringList());
}

TEST_F(FrameLanguages, TheTickFollowsLoadsChoicesAndActivation) {
    start();
    EXPECT_EQ(marked(), QStringList());
    open(fileOf("int", QStringLiteral("a.cpp")));
    frmDocument* first = active();
    EXPECT_EQ(marked(), QStringList(QStringLiteral("C++")));
    open(fileOf("x", QStringLiteral("b.py")));
    EXPECT_EQ(marked(), QStringList(QStringLiteral("PYTHON")));
    languageEntry("RUBY")->trigger();
    EXPECT_EQ(active()->GetLang(), QStringLiteral("RUBY"));
    EXPECT_EQ(marked(), QStringList(QStringLiteral("RUBY")));
    parts().children->bringToFront(first);
    QCoreApplication::processEvents();
    EXPECT_EQ(marked(), QStringList(QStringLiteral("C++")));
    EXPECT_TRUE(entry("mnuShowLineNumber")->isChecked());
}

TEST_F(FrameLanguages, StoredLooksAreThereFromTheStartAndReachAllOpenDocuments) {
    TokenLooks looks;
    looks.setItalic(TokenClass::Keyword, true);
    ASSERT_EQ(looks.save(m_registry), RegistryCode::Ok);
    start();
    TokenTheme& theme = parts().documentServices->globals.theme;
    EXPECT_EQ(theme.looks(), looks);
    open(fileOf("if", QStringLiteral("a.cpp")));
    const frmDocument* first = active();
    open(fileOf("if", QStringLiteral("b.cpp")));
    constexpr unsigned long keyword = 5;
    const auto italic = [](const frmDocument* document) {
        return document->GetEditor()->control().SendScintilla(TextControl::SCI_STYLEGETITALIC, keyword) != 0;
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
        const auto* list = form.findChild<QTreeWidget*>(QStringLiteral("lvLang"));
        ASSERT_NE(list, nullptr);
        EXPECT_GE(list->topLevelItemCount(), 45);
    });
}

TEST_F(FrameLanguages, TheFormsHelpIsThePageOfLanguages) {
    NotedOpener opener;
    start();
    organize([](QDialog& form) { form.findChild<QPushButton*>(QStringLiteral("cmdHelp"))->click(); });
    EXPECT_EQ(opener.opened, QStringList(shareFolder() + QStringLiteral("/help/languages.html")));
}

TEST_F(FrameLanguages, APageOfOnesOwnGoesBeforeTheInstalledOneAndAMissingOneIsPassedOver) {
    NotedOpener opener;
    const HelpPages pages(m_programFolder.path(), shareFolder());
    pages.show(QStringLiteral("no such.html"));
    EXPECT_EQ(opener.opened, QStringList());
    QDir(m_programFolder.path()).mkdir(QStringLiteral("help"));
    QFile own(m_programFolder.filePath(QStringLiteral("help/main.html")));
    ASSERT_TRUE(own.open(QIODevice::WriteOnly));
    pages.show(QStringLiteral("main.html"));
    EXPECT_EQ(opener.opened, QStringList(own.fileName()));
}

#include "LanguagesTest.moc"
