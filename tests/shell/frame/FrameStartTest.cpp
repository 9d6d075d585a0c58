#include "settings/files/OwnTextFile.h"
#include "shell/FrameFixture.h"
#include "shell/bars/CoolBar.h"
#include "shell/start/frmOpenCheck.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QMenu>
#include <QTimer>

using FrameStart = FrameFixture;

namespace {

QStringList list(std::initializer_list<const char*> names) {
    QStringList all;
    for (const char* name : names)
        all << QString::fromLatin1(name);
    return all;
}

}  // namespace

TEST_F(FrameStart, RunsItsStepsInTheirOrder) {
    start();
    EXPECT_EQ(m_steps, list({"putStatusPictures", "loadOpenCheck",   "hookOpenCheck",     "readFirstSettings",
                             "loadMacroFiles",    "PropertiesLoad",  "LoadOptions",       "loadLanguages",
                             "loadLists",         "setLoaded",       "placeSearchBox",    "buildCoolBar",
                             "startNewDocument",  "layOutPanels",    "followCommandLine", "UpdateMacroMenu",
                             "restoreSession",    "markViewParts",   "setCommandStates",  "makeTabMenu",
                             "setCaption",        "recoverDocuments"}));
    EXPECT_TRUE(m_frame->isLoaded());
}

TEST_F(FrameStart, ShowsOneUntitledDocumentMaximised) {
    start();
    ASSERT_EQ(documents().size(), 1);
    EXPECT_EQ(active()->fIdx, u"F1"_qs);
    EXPECT_EQ(active()->Caption(), u"Document1"_qs);
    EXPECT_TRUE(active()->isNew);
    EXPECT_TRUE(house().children.windowOf(active())->isMaximized());
    EXPECT_EQ(tabs(), list({"Document1"}));
    EXPECT_TRUE(m_frame->windowTitle().startsWith(QLatin1String("Quillmark")));
    EXPECT_NE(QGuiApplication::overrideCursor() == nullptr, false);
}

TEST_F(FrameStart, WithoutANewDocumentThereIsNoTabAndNoCommandChanges) {
    set("StartNewDocument", "0");
    start();
    EXPECT_TRUE(documents().isEmpty());
    EXPECT_EQ(strip().count(), 0);
    EXPECT_TRUE(entry("mnuFileSave")->isEnabled());
    for (const char* name : {"mnuFileSave", "mnuFileSaveAs", "mnuANSI", "mnuFileSaveAll", "mnuFileClose",
                             "mnuAllFileClose", "mnuFileCloseExcept", "mnuEditUndo", "mnuEditPaste", "mnuReadonly",
                             "mnuToggleHex", "mnuWindowCascade", "mnuWindowTileVertical", "mnuWindowArrangeIcons"})
        run(name);
    EXPECT_FALSE(entry("mnuReadonly")->isChecked());
    EXPECT_FALSE(entry("mnuToggleHex")->isChecked());
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(FrameStart, LeavesTheStoreEmpty) {
    start();
    QStringList names;
    m_registry.subKeys(HKEY_CURRENT_USER, QString(), names);
    EXPECT_TRUE(names.isEmpty());
}

/// Closes the dialog of the search in files when it opens, and keeps the directories with which it was opened.
class SearchDialogCloser : public QTimer {
 public:
    SearchDialogCloser() {
        callOnTimeout([this] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (dialog == nullptr || dialog->objectName() != u"frmSearchInFiles")
                return;
            directory = dialog->findChild<QComboBox*>(u"cmbDir"_qs)->currentText();
            dialog->close();
        });
        start(0);
    }
    QString directory;
};

TEST_F(FrameStart, RestoresTheSessionOnlyWhenWantedAndNothingWasAskedFor) {
    const QString file = fileOf("1");
    OwnTextFile::writeLines(ownFile("lastopen.idx"), {u"<FILE>"_qs, file});
    start();
    EXPECT_EQ(tabs(), list({"Document1"}));
    set("LoadLastFiles", "1");
    for (const char* tail : {"", "-d"}) {
        start(QString::fromLatin1(tail));
        EXPECT_EQ(tabs(), list({"a.txt"})) << tail;
    }
    const SearchDialogCloser closer;
    m_prompts.answerNo();  // the project does not exist
    for (const char* tail : {"\"\"", "/a;/b", "/p.qmp"}) {
        start(QString::fromLatin1(tail));
        EXPECT_EQ(tabs(), list({"Document1"})) << tail;
    }
}

TEST_F(FrameStart, HandsProjectsAndFoldersToTheirRooms) {
    m_prompts.answerNo();
    start(u"\"/p q.Qmp\""_qs);
    EXPECT_EQ(missingProject(), u"/p q.Qmp"_qs);
    for (const QString& folders : {path(QString()), u"a;b"_qs}) {
        SearchDialogCloser closer;
        start(folders);
        EXPECT_EQ(closer.directory, folders);
    }
}

TEST_F(FrameStart, AFileOfTheCommandLineTakesOverTheUntitledDocumentAMomentLater) {
    const QString file = fileOf("one\r\ntwo", u"with blank.txt"_qs);
    start(u'"' + file + u'"');
    EXPECT_EQ(tabs(), list({"Document1"}));
    ASSERT_TRUE(QTest::qWaitFor([&] { return active()->filename == file; }));
    EXPECT_EQ(tabs(), list({"with blank.txt"}));
    EXPECT_EQ(active()->GetEditor()->Text(), u"one\r\ntwo"_qs);
    EXPECT_TRUE(house().children.windowOf(active())->isMaximized());
}

TEST_F(FrameStart, AFileOfTheCommandLineWithoutALanguageHasTheDefaultOne) {
    m_shareFolder = shareFolder();
    const QString file = fileOf("one", u"notes.xyz"_qs);
    start(file);
    ASSERT_TRUE(QTest::qWaitFor([&] { return active()->filename == file; }));
    EXPECT_EQ(active()->GetLang(), u"HTML"_qs);
    EXPECT_TRUE(languageEntry("HTML")->isChecked());
    EXPECT_TRUE(entry("mnuShowLineNumber")->isChecked());
}

TEST_F(FrameStart, AFileOfTheCommandLineHasTheLanguageOfItsName) {
    m_shareFolder = shareFolder();
    const QString file = fileOf("one", u"a.rs"_qs);
    start(file);
    ASSERT_TRUE(QTest::qWaitFor([&] { return active()->filename == file; }));
    EXPECT_EQ(active()->GetLang(), u"RUST"_qs);
    EXPECT_TRUE(languageEntry("RUST")->isChecked());
}

TEST_F(FrameStart, AFileThatIsNotThereIsToldByTheFrame) {
    start(path(u"gone.txt"_qs));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !m_prompts.messages.isEmpty(); }));
    EXPECT_EQ(m_prompts.messages, QStringList(path(u"gone.txt"_qs) + QLatin1String("\nFile not found!")));
    EXPECT_EQ(tabs(), list({"Document1"}));
}

TEST_F(FrameStart, ATailOfAHundredThousandCharactersIsToldAsNotFound) {
    start(u'/' + QString(99'999, u'x'));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !m_prompts.messages.isEmpty(); }));
    EXPECT_TRUE(m_prompts.messages.first().endsWith(QLatin1String("x\nFile not found!")));
}

TEST_F(FrameStart, ANameThatIsNotUtf8IsToldAsNotFound) {
    const QString replaced = path(u"\uFFFD"_qs);
    fileOf("x", u"\uFFFD"_qs);
    start(path(QString(QChar(0xDCFF))));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !m_prompts.messages.isEmpty(); }));
    EXPECT_TRUE(m_prompts.messages.first().endsWith(QLatin1String("\nFile not found!")));
    EXPECT_NE(active()->filename, replaced);
}

TEST_F(FrameStart, TheHiddenWindowBearsItsCaptionAndIsHookedUnlessAFurtherInstanceIsAskedFor) {
    for (const bool hooked : {true, false}) {
        start(hooked ? QString() : u"-d"_qs);
        frmOpenCheck* found = nullptr;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->windowTitle() == QLatin1String("QuillmarkOpen"))
                found = qobject_cast<frmOpenCheck*>(widget);
        }
        ASSERT_NE(found, nullptr);
        EXPECT_FALSE(found->isVisible());
        EXPECT_EQ(found->isHooked(), hooked);
        m_frame.reset();
    }
}

TEST_F(FrameStart, MarksTheBandsAndTogglesThem) {
    start();
    auto* bar = m_frame->findChild<CoolBar*>(u"CoolBar1"_qs);
    ASSERT_NE(bar, nullptr);
    EXPECT_TRUE(entry("mnuShowEditToolbar")->isChecked());
    EXPECT_TRUE(entry("mnuShowFilesTab")->isChecked());
    run("mnuShowEditToolbar");
    EXPECT_FALSE(entry("mnuShowEditToolbar")->isChecked());
    EXPECT_FALSE(m_frame->findChild<QWidget*>(u"tbToolBar"_qs)->isVisible());
    EXPECT_TRUE(bar->isVisible());
    run("mnuShowFilesTab");
    EXPECT_FALSE(bar->isVisible());
    run("mnuShowEditToolbar");
    EXPECT_TRUE(bar->isVisible());
    EXPECT_FALSE(strip().isVisible());
}

TEST_F(FrameStart, PartsBearTheirNames) {
    start();
    for (const char* name :
         {"TabStrip1", "CoolBar1", "tbToolBar", "tbToolBar.Save", "tbToolBar.ShowHex", "sbStatusBar", "sbStatusBar(1)",
          "sbStatusBar(4)", "frmDocument", "mnuFile", "CoolBar1.Tool", "CoolBar1.Tab"}) {
        EXPECT_NE(m_frame->findChild<QWidget*>(QString::fromLatin1(name)), nullptr) << name;
    }
    EXPECT_NE(m_frame->findChild<QAction*>(u"mnuFileSaveAs"_qs), nullptr);
    EXPECT_NE(m_frame->findChild<QMenu*>(u"Tab"_qs), nullptr);
    EXPECT_EQ(m_frame->findChildren<QWidget*>(u"Tab"_qs).size(), 1);
    EXPECT_EQ(m_frame->objectName(), u"frmMain"_qs);
}

TEST_F(FrameStart, WhateverTakesTheFocusHasANameForReaders) {
    start();
    int named = 0;
    for (QWidget* widget : m_frame->findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus || widget->focusProxy() != nullptr)
            continue;
        QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(widget);
        ASSERT_NE(reader, nullptr);
        EXPECT_FALSE(reader->text(QAccessible::Name).isEmpty())
            << widget->metaObject()->className() << ' ' << widget->objectName().toStdString();
        ++named;
    }
    EXPECT_GT(named, 2);
}

TEST_F(FrameStart, PathsThatComeTogetherOpenInOneRoundInTheirOrder) {
    start();
    const QString first = fileOf("1", u"1.txt"_qs);
    const QString second = fileOf("2", u"2.txt"_qs);
    m_frame->OpenFileFromCmd(u'"' + first + u'"');
    m_frame->OpenFileFromCmd(path(QString()));
    m_frame->OpenFileFromCmd(QString());
    m_frame->OpenFileFromCmd(second);
    m_frame->OpenFileFromCmd(first);
    ASSERT_TRUE(QTest::qWaitFor([&] { return documents().size() == 2 && active()->filename == first; }));
    EXPECT_EQ(tabs(), list({"1.txt", "2.txt"}));
    EXPECT_EQ(m_prompts.messages, QStringList(QLatin1String("Directory search : ") + path(QString())));
}

/// An event that destroys a child would do so while Qt walks over the children that it shows.
TEST_F(FrameStart, ShowingTheFrameWithItsDocumentsLetsNoEventRun) {
    set("StartNewDocument", "0");
    load();
    for (const QString& name : {u"1.txt"_qs, u"2.txt"_qs, u"3.txt"_qs})
        open(fileOf("text", name));
    ASSERT_FALSE(house().children.windowOf(active())->isMaximized());
    const frmDocument* last = active();
    bool ran = false;
    QTimer::singleShot(0, m_frame.get(), [&] { ran = true; });
    m_frame->show();
    EXPECT_FALSE(ran);
    QCoreApplication::processEvents();
    EXPECT_TRUE(ran);
    EXPECT_EQ(active(), last);
    EXPECT_EQ(strip().tabData(strip().currentIndex()).toString(), last->fIdx);
    EXPECT_EQ(m_frame->focusWidget(), &textWidget());
}
