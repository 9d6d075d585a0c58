#include "shell/FrameFixture.h"
#include "widgets/Icons.h"

#include <QMenu>

using DocumentClose = FrameFixture;

TEST_F(DocumentClose, AnUneditedDocumentAsksNothing) {
    start();
    open(fileOf("a"));
    run("mnuFileClose");
    EXPECT_EQ(strip().count(), 0);
    EXPECT_EQ(active(), nullptr);
    EXPECT_TRUE(m_prompts.questions.isEmpty());
}

TEST_F(DocumentClose, YesSavesAndNoDiscards) {
    start();
    const QString file = fileOf("a");
    for (const bool yes : {true, false}) {
        open(file);
        type(u"x"_qs);
        yes ? m_prompts.answerYes() : m_prompts.answerNo();
        run("mnuFileClose");
        EXPECT_EQ(m_prompts.questions.takeFirst(), u"Save %1 ?"_qs.arg(file));
        EXPECT_EQ(bytesOf(file), "xa");
        EXPECT_TRUE(documents().isEmpty());
    }
}

TEST_F(DocumentClose, ASaveThatFailsIsAskedAboutAgainUntilTheAnswerIsNo) {
    start();
    const QString file = fileOf("\xE4");
    open(file);
    type(u"\u2192"_qs);
    m_prompts.answerYes();
    m_prompts.answerYes();
    m_prompts.answerNo();
    run("mnuFileClose");
    EXPECT_EQ(m_prompts.questions, QStringList(3, u"Save %1 ?"_qs.arg(file)));
    EXPECT_EQ(m_prompts.messages.size(), 2);
    EXPECT_EQ(bytesOf(file), "\xE4");
    EXPECT_TRUE(documents().isEmpty());
}

TEST_F(DocumentClose, ASaveThatFailedIsMadeGoodByTheNextYes) {
    start();
    const QString file = fileOf("a");
    open(file);
    type(u"x"_qs);
    ASSERT_EQ(chmod(QFile::encodeName(file).constData(), 0400), 0);
    m_prompts.answerYes();
    m_prompts.answerYes();
    m_prompts.whileShown([&] {
        m_prompts.whileShown([&] {
            ASSERT_EQ(m_prompts.messages.size(), 1);
            ASSERT_EQ(chmod(QFile::encodeName(file).constData(), 0600), 0);
        });
    });
    run("mnuFileClose");
    EXPECT_EQ(m_prompts.questions.size(), 2);
    EXPECT_EQ(bytesOf(file), "xa");
    EXPECT_TRUE(documents().isEmpty());
}

TEST_F(DocumentClose, AnUntitledDocumentWhoseSaveDialogIsCancelledAsksAgain) {
    start();
    type(u"x"_qs);
    m_prompts.answerYes();
    m_prompts.answerSavePath(QString());
    m_prompts.answerYes();
    m_prompts.answerSavePath(path(u"new.txt"_qs));
    run("mnuFileClose");
    EXPECT_EQ(m_prompts.questions, QStringList(2, u"Save Document1 ?"_qs));
    EXPECT_EQ(bytesOf(path(u"new.txt"_qs)), "x");
    EXPECT_TRUE(documents().isEmpty());
}

TEST_F(DocumentClose, AtTheEndASaveThatFailsIsAskedAboutAgainToo) {
    start();
    const QString file = fileOf("\xE4");
    open(file);
    type(u"\u2192"_qs);
    m_prompts.answerYes();
    m_prompts.answerNo();
    m_frame->close();
    EXPECT_EQ(m_prompts.questions, QStringList(2, u"Save %1 ?"_qs.arg(file)));
    EXPECT_TRUE(documents().isEmpty());
}

TEST_F(DocumentClose, CloseAllAsksForEachChangedDocumentAndSavesThatOne) {
    start();
    const QString first = fileOf("1", u"1.txt"_qs);
    const QString second = fileOf("2", u"2.txt"_qs);
    open(first);
    type(u"x"_qs);
    open(second);
    type(u"y"_qs);
    m_prompts.answerYes();
    m_prompts.answerNo();
    run("mnuAllFileClose");
    EXPECT_EQ(m_prompts.questions, QStringList({u"Save %1 ?"_qs.arg(second), u"Save %1 ?"_qs.arg(first)}));
    EXPECT_EQ(bytesOf(first), "1");
    EXPECT_EQ(bytesOf(second), "y2");
    EXPECT_TRUE(documents().isEmpty());
}

TEST_F(DocumentClose, KeysAreNeverUsedAgain) {
    start();
    run("mnuFileNew");
    run("mnuFileClose");
    run("mnuFileNew");
    EXPECT_EQ(active()->fIdx, u"F3"_qs);
    EXPECT_EQ(active()->Caption(), u"Document3"_qs);
}

TEST_F(DocumentClose, AfterTheLastDocumentTheCommandsStayAsTheyWere) {
    start();
    open(fileOf("a"), 1);
    EXPECT_FALSE(entry("mnuFileSave")->isEnabled());
    run("mnuFileClose");
    EXPECT_FALSE(entry("mnuFileSave")->isEnabled());
    EXPECT_TRUE(entry("mnuReadonly")->isChecked());
}

TEST_F(DocumentClose, AfterTheLastDocumentTheStatusBarIsEmpty) {
    start();
    open(fileOf("a"));
    run("mnuFileNew");
    type(u"xy"_qs);
    m_prompts.answerNo();
    run("mnuFileClose");
    EXPECT_EQ(house().status.text(2), u"Ln 1 / 1, Col 1, Pos 1"_qs);
    EXPECT_EQ(house().status.text(4), u"1"_qs);
    run("mnuFileClose");
    for (int panel = 1; panel <= 4; ++panel) {
        EXPECT_EQ(house().status.text(panel), QString()) << panel;
    }
}

TEST_F(DocumentClose, CloseAllGoesFromTheLastTabToTheFirst) {
    start();
    open(fileOf("1", u"1.txt"_qs));
    open(fileOf("2", u"2.txt"_qs));
    open(fileOf("3", u"3.txt"_qs));
    m_explorer.calls.clear();
    run("mnuAllFileClose");
    EXPECT_EQ(m_explorer.calls.filter(u"RemoveFile"_qs),
              QStringList({u"RemoveFile F3"_qs, u"RemoveFile F2"_qs, u"RemoveFile F1"_qs}));
    EXPECT_EQ(strip().count(), 0);
}

TEST_F(DocumentClose, CloseAllExceptLeavesThatOneAndSelectsIt) {
    for (int kept = 0; kept < 3; ++kept) {
        start();
        open(fileOf("1", u"1.txt"_qs));
        open(fileOf("2", u"2.txt"_qs));
        open(fileOf("3", u"3.txt"_qs));
        strip().setCurrentIndex(kept);
        frmDocument* document = active();
        run("mnuFileCloseExcept");
        ASSERT_EQ(documents(), QList<frmDocument*>{document});
        EXPECT_EQ(active(), document);
        EXPECT_EQ(strip().count(), 1);
        EXPECT_EQ(strip().tabData(0).toString(), document->fIdx);
    }
}

TEST_F(DocumentClose, TwoDocumentsOfOneNameAreToldApart) {
    start();
    ASSERT_TRUE(QDir(m_folder.path()).mkdir(u"d"_qs));
    open(fileOf("1"));
    open(fileOf("2", u"d/a.txt"_qs));
    EXPECT_EQ(tabs(), QStringList({u"a.txt"_qs, u"a.txt"_qs}));
    strip().setCurrentIndex(0);
    run("mnuFileClose");
    EXPECT_EQ(strip().tabData(0).toString(), u"F2"_qs);
    EXPECT_EQ(active()->filename, path(u"d/a.txt"_qs));
}

TEST_F(DocumentClose, TheFrameEndsByItsStepsInTheirOrder) {
    start();
    m_steps.clear();
    m_frame->close();
    EXPECT_EQ(m_steps,
              u"SaveSession unloadDocuments SaveRecentFiles SaveRecentProjects "
              "SaveFavProjects SaveSearchKeys PropertiesSave saveMacroFiles unloadForms releaseTabMenu "
              "Unhook"_qs.split(u' '));
    EXPECT_TRUE(documents().isEmpty());
    m_steps.clear();
    m_frame->close();
    EXPECT_TRUE(m_steps.isEmpty());
}

TEST_F(DocumentClose, TheSessionIsWrittenBeforeTheDocumentsAsk) {
    start();
    open(fileOf("a"));
    type(u"x"_qs);
    m_prompts.whileShown([&] {
        EXPECT_TRUE(QFile::exists(ownFile("lastopen.idx")));
        EXPECT_FALSE(QFile::exists(ownFile("lastfiles.idx")));
    });
    m_prompts.answerNo();
    run("mnuFileExit");
    EXPECT_EQ(m_prompts.questions.size(), 1);
    EXPECT_FALSE(m_frame->isVisible());
    EXPECT_TRUE(QFile::exists(ownFile("lastfiles.idx")));
}

TEST_F(DocumentClose, AtTheEndYesSavesTheActiveDocumentWhoeverAsks) {
    start();
    const QString first = fileOf("1", u"1.txt"_qs);
    const QString second = fileOf("2", u"2.txt"_qs);
    open(first);
    type(u"x"_qs);
    open(second);
    type(u"y"_qs);
    m_prompts.answerYes();
    m_frame->close();
    EXPECT_EQ(m_prompts.questions, QStringList(u"Save %1 ?"_qs.arg(first)));
    EXPECT_EQ(bytesOf(first), "1");
    EXPECT_EQ(bytesOf(second), "y2");
}

TEST_F(DocumentClose, TheTabMenuWorksOnTheActiveDocument) {
    start();
    open(fileOf("1"));
    auto* menu = m_frame->findChild<QMenu*>(u"Tab"_qs);
    ASSERT_NE(menu, nullptr);
    QStringList captions;
    for (const QAction* action : menu->actions())
        captions << (action->isSeparator() ? u"-"_qs : action->text());
    EXPECT_EQ(captions, QStringList({u"Close File"_qs, u"Close All Files Except This"_qs, u"-"_qs, u"Save File"_qs,
                                     u"-"_qs, u"ReadOnly"_qs}));
    QTest::mouseClick(&strip(), Qt::RightButton, Qt::NoModifier, strip().tabRect(0).center());
    EXPECT_TRUE(menu->isVisible());
    EXPECT_FALSE(menu->findChild<QAction*>(u"mnuReadonly"_qs)->isChecked());
    EXPECT_TRUE(menu->findChild<QAction*>(u"mnuSaveFile"_qs)->isEnabled());
    menu->findChild<QAction*>(u"mnuReadonly"_qs)->trigger();
    menu->hide();
    EXPECT_TRUE(active()->isReadOnly);
    Q_EMIT strip().menuWanted(QPoint(10, 10));
    EXPECT_TRUE(menu->findChild<QAction*>(u"mnuReadonly"_qs)->isChecked());
    EXPECT_FALSE(menu->findChild<QAction*>(u"mnuSaveFile"_qs)->isEnabled());
    menu->findChild<QAction*>(u"mnuCloseFile"_qs)->trigger();
    menu->hide();
    EXPECT_EQ(strip().count(), 0);
}

TEST_F(DocumentClose, TheRightButtonSelectsTheTabWhoseMenuItShows) {
    start();
    open(fileOf("1", u"1.txt"_qs));
    open(fileOf("2", u"2.txt"_qs));
    open(fileOf("3", u"3.txt"_qs));
    auto* menu = m_frame->findChild<QMenu*>(u"Tab"_qs);
    QTest::mousePress(&strip(), Qt::RightButton, Qt::NoModifier, strip().tabRect(1).center());
    EXPECT_EQ(strip().currentIndex(), 1);
    EXPECT_EQ(active()->filename, path(u"2.txt"_qs));
    EXPECT_FALSE(menu->isVisible());
    QTest::mouseRelease(&strip(), Qt::RightButton, Qt::NoModifier, strip().tabRect(1).center());
    EXPECT_TRUE(menu->isVisible());
    menu->findChild<QAction*>(u"mnuCloseFile"_qs)->trigger();
    menu->hide();
    EXPECT_EQ(tabs(), QStringList({u"1.txt"_qs, u"3.txt"_qs}));
}

TEST_F(DocumentClose, BesideTheTabsTheRightButtonSelectsNothing) {
    start();
    open(fileOf("1", u"1.txt"_qs));
    open(fileOf("2", u"2.txt"_qs));
    const QPoint beside(strip().tabRect(1).right() + 20, strip().height() / 2);
    ASSERT_TRUE(strip().rect().contains(beside));
    QTest::mouseClick(&strip(), Qt::RightButton, Qt::NoModifier, beside);
    m_frame->findChild<QMenu*>(u"Tab"_qs)->hide();
    EXPECT_EQ(strip().currentIndex(), 1);
}

TEST_F(DocumentClose, TheTabMenuShowsThePicturesOfItsCommands) {
    start();
    const auto* menu = m_frame->findChild<QMenu*>(u"Tab"_qs);
    const std::pair<const char*, const char*> pictures[] = {
        {"mnuCloseFile", "close"}, {"mnuSaveFile", "save"}, {"mnuReadonly", "readonly"}};
    for (const auto& [key, picture] : pictures) {
        const QImage shown = menu->findChild<QAction*>(QLatin1String(key))->icon().pixmap(16).toImage();
        EXPECT_FALSE(shown.isNull()) << key;
        EXPECT_EQ(shown, Icons::named(picture).pixmap(16).toImage()) << key;
    }
    EXPECT_TRUE(menu->findChild<QAction*>(u"mnuCloseFileExcept"_qs)->icon().isNull());
}

TEST_F(DocumentClose, TheTabMenuSavesAndClosesTheOthers) {
    start();
    open(fileOf("1", u"1.txt"_qs));
    const QString file = fileOf("2", u"2.txt"_qs);
    open(file);
    open(fileOf("3", u"3.txt"_qs));
    strip().setCurrentIndex(1);
    type(u"x"_qs);
    const auto* menu = m_frame->findChild<QMenu*>(u"Tab"_qs);
    menu->findChild<QAction*>(u"mnuSaveFile"_qs)->trigger();
    EXPECT_EQ(bytesOf(file), "x2");
    EXPECT_EQ(house().tabs.image(1), 1);
    menu->findChild<QAction*>(u"mnuCloseFileExcept"_qs)->trigger();
    EXPECT_EQ(tabs(), QStringList(u"2.txt"_qs));
    EXPECT_TRUE(m_prompts.questions.isEmpty());
}

TEST_F(DocumentClose, WithoutTabsThereIsNoTabMenu) {
    set("StartNewDocument", "0");
    start();
    QTest::mouseClick(&strip(), Qt::RightButton, Qt::NoModifier, QPoint(3, 3));
    EXPECT_FALSE(m_frame->findChild<QMenu*>(u"Tab"_qs)->isVisible());
}
