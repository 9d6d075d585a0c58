#include "platform/Product.h"
#include "settings/registry/modRegistry.h"
#include "shell/FrameFixture.h"
#include "support/PrivateBus.h"

#include <QDesktopServices>
#include <QDialog>
#include <QDir>
#include <QListWidget>
#include <QTimer>
#include <QUrl>
#include <QUrlQuery>

namespace {

/// The desktop's opener, noted.
class NotedOpener : public QObject {
    Q_OBJECT

 public:
    NotedOpener() {
        for (const QString& scheme : schemes())
            QDesktopServices::setUrlHandler(scheme, this, "open");
    }
    ~NotedOpener() override {
        for (const QString& scheme : schemes())
            QDesktopServices::unsetUrlHandler(scheme);
    }
    Q_DISABLE_COPY_MOVE(NotedOpener)

    QList<QUrl> opened;

 public Q_SLOTS:
    void open(const QUrl& address) { opened << address; }

 private:
    static QStringList schemes() { return {u"file"_qs, u"https"_qs, u"mailto"_qs}; }
};

class OutsideCommandsTest : public FrameFixture {
 protected:
    OutsideCommandsTest() { qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus"); }

    /// The folder that the desktop is asked for by the command.
    QString folderOpenedBy(const char* name) {
        m_opener.opened.clear();
        run(name);
        EXPECT_TRUE(QTest::qWaitFor([this] { return !m_opener.opened.isEmpty(); }, 20'000)) << name;
        EXPECT_EQ(m_opener.opened.size(), 1) << name;
        return m_opener.opened.value(0).toLocalFile();
    }

    /// Runs the action while a form is shown, which is to have that name.
    void inForm(const char* name, const std::function<void()>& show, const std::function<void(QDialog&)>& act) {
        bool shown = false;
        QTimer::singleShot(0, m_frame.get(), [&] {
            auto* form = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(form, nullptr);
            EXPECT_EQ(form->objectName(), QLatin1String(name));
            shown = true;
            act(*form);
            if (form->isVisible())
                form->reject();
        });
        show();
        EXPECT_TRUE(shown);
    }

    NotedOpener m_opener;
};

QString home(const QString& name) {
    return QDir::homePath() + u'/' + name;
}

}  // namespace

TEST_F(OutsideCommandsTest, TheFoldersOfTheSystemAreOpened) {
    start();
    EXPECT_EQ(folderOpenedBy("mnuWindowDirectory"), u"/usr"_qs);
    EXPECT_EQ(folderOpenedBy("mnuSystemDirectory"), u"/etc"_qs);
}

TEST_F(OutsideCommandsTest, TheFoldersOfTheUserAreOpened) {
    start();
    QDir().mkpath(home(u"Desktop"_qs));
    QDir().mkpath(home(u"Documents"_qs));
    EXPECT_EQ(folderOpenedBy("mnuDesktop"), home(u"Desktop"_qs));
    EXPECT_EQ(folderOpenedBy("mnuMyDocuments"), home(u"Documents"_qs));
}

TEST_F(OutsideCommandsTest, AFolderThatIsNotThereOpensTheFileManagerOnTheHomeFolder) {
    start();
    QDir(home(u"Documents"_qs)).removeRecursively();
    EXPECT_EQ(folderOpenedBy("mnuMyDocuments"), QDir::homePath());
}

TEST_F(OutsideCommandsTest, TheFileManagerOnTheBusIsAskedFirst) {
    const PrivateBus bus;
    const FakeFileManager manager(bus);
    start();
    run("mnuWindowDirectory");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !manager.shown.isEmpty(); }));
    EXPECT_EQ(manager.shown, QStringList(u"file:///usr"_qs));
    EXPECT_TRUE(m_opener.opened.isEmpty());
}

TEST_F(OutsideCommandsTest, TheContentsOfTheHelpAreOpened) {
    QDir(m_programFolder.path()).mkpath(u"help"_qs);
    QFile page(m_programFolder.filePath(u"help/main.html"_qs));
    ASSERT_TRUE(page.open(QIODevice::WriteOnly));
    start();
    run("mnuHelpContents");
    EXPECT_EQ(m_opener.opened, QList<QUrl>({QUrl::fromLocalFile(page.fileName())}));
}

TEST_F(OutsideCommandsTest, HelpThatIsNotThereOpensNothing) {
    start();
    run("mnuHelpContents");
    EXPECT_TRUE(m_opener.opened.isEmpty());
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(OutsideCommandsTest, TheWebSiteIsThatOfTheBuild) {
    start();
    run("mnuHelpSearchForHelpOn");
    EXPECT_EQ(m_opener.opened, QList<QUrl>({QUrl(Product::webAddress())}));
    EXPECT_TRUE(m_opener.opened.first().isValid());
}

TEST_F(OutsideCommandsTest, AMailHasItsAddressAndItsSubject) {
    start();
    run("mnuSendEmail");
    ASSERT_EQ(m_opener.opened.size(), 1);
    const QUrl mail = m_opener.opened.first();
    EXPECT_EQ(mail.scheme(), u"mailto"_qs);
    EXPECT_EQ(mail.path(), Product::mailAddress());
    EXPECT_EQ(QUrlQuery(mail).queryItemValue(u"subject"_qs, QUrl::FullyDecoded), u"Quillmark Support"_qs);
    EXPECT_EQ(mail.toEncoded(), "mailto:" + Product::mailAddress().toUtf8() + "?subject=Quillmark%20Support");
}

TEST_F(OutsideCommandsTest, WithoutProgramsAndFoldersNothingIsToldAndNothingFails) {
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/no/such/folder");
    start();
    for (const char* name : {"mnuCalculator", "mnuHelpContents"})
        run(name);
    qputenv("PATH", path);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
    EXPECT_TRUE(m_opener.opened.isEmpty());
    EXPECT_TRUE(m_frame->isVisible());
}

TEST_F(OutsideCommandsTest, TheAboutBoxIsModalAndOfTheFrame) {
    start();
    const auto show = [this] { run("mnuHelpAbout"); };
    inForm("frmAbout", show, [this](QDialog& form) {
        EXPECT_TRUE(form.isModal());
        EXPECT_EQ(form.parentWidget(), m_frame.get());
    });
    EXPECT_EQ(m_frame->findChild<QDialog*>(u"frmAbout"_qs), nullptr);
}

TEST_F(OutsideCommandsTest, TheSystemInformationNamesTheFoldersOfTheProgram) {
    m_shareFolder = u"/a share folder"_qs;
    start();
    const auto show = [this] { run("mnuHelpAbout"); };
    inForm("frmAbout", show, [this](QDialog& about) {
        const auto showInformation = [&about] { QMetaObject::invokeMethod(&about, "StartSysInfo"); };
        inForm("SystemInformationDialog", showInformation, [this](QDialog& form) {
            const QString text = form.findChild<QWidget*>(u"txtInformation"_qs)->property("plainText").toString();
            EXPECT_TRUE(text.contains(m_programFolder.path()));
            EXPECT_TRUE(text.contains(u"/a share folder"_qs));
        });
    });
}

TEST_F(OutsideCommandsTest, TheChosenLanguageIsStored) {
    start();
    const auto stored = [this] {
        return GetRegString(m_registry, HKEY_CURRENT_USER, u"Software/Flioplo/General"_qs, u"Language"_qs);
    };
    const auto ask = [this] { Q_EMIT active()->LanguageRequest(); };
    inForm("LanguageChooser", ask, [](QDialog& form) { QTest::keyClick(&form, Qt::Key_Escape); });
    EXPECT_EQ(stored(), QString());
    inForm("LanguageChooser", ask, [](QDialog& form) {
        EXPECT_EQ(form.findChild<QListWidget*>(u"lstLanguages"_qs)->currentItem()->text(), u"English"_qs);
        QTest::keyClick(&form, Qt::Key_Return);
    });
    EXPECT_EQ(stored(), u"English"_qs);
}

TEST_F(OutsideCommandsTest, EveryPanelOfTheStatusBarShowsItsTextInABox) {
    start();
    open(fileOf("12345"));
    for (int panel = 1; panel <= 4; ++panel) {
        m_prompts.messages.clear();
        QTest::mouseDClick(m_frame->findChild<QWidget*>(u"sbStatusBar(%1)"_qs.arg(panel)), Qt::LeftButton);
        EXPECT_EQ(m_prompts.messages, QStringList(house().status.text(panel)));
    }
    EXPECT_EQ(m_prompts.messages, QStringList(u"5"_qs));
}

TEST_F(OutsideCommandsTest, TheKeyboardReachesThePanelsOfTheStatusBarFromTheFindBar) {
    start();
    open(fileOf("12345"));
    m_frame->activateWindow();
    QTest::keyClick(m_frame.get(), Qt::Key_F6);
    for (int panel = 1; panel <= 4; ++panel) {
        m_prompts.messages.clear();
        QTest::keyClick(m_frame->focusWidget(), Qt::Key_Tab);
        QWidget* reached = m_frame->focusWidget();
        EXPECT_EQ(reached->objectName(), u"sbStatusBar(%1)"_qs.arg(panel));
        EXPECT_FALSE(reached->accessibleDescription().isEmpty());
        QTest::keyClick(reached, panel % 2 == 0 ? Qt::Key_Return : Qt::Key_Space);
        EXPECT_EQ(m_prompts.messages, QStringList(house().status.text(panel)));
    }
    QTest::keyClick(m_frame->focusWidget(), Qt::Key_Escape);
    EXPECT_TRUE(active()->isAncestorOf(m_frame->focusWidget()));
}

TEST_F(OutsideCommandsTest, APanelOfTheStatusBarShowsThatItHasTheKeyboard) {
    start();
    auto* panel = m_frame->findChild<QWidget*>(u"sbStatusBar(2)"_qs);
    const QImage without = panel->grab().toImage();
    panel->setFocus(Qt::TabFocusReason);
    EXPECT_NE(panel->grab().toImage(), without);
}

#include "OutsideCommandsTest.moc"
