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
        type(QStringLiteral("x"));
        yes ? m_prompts.answerYes() : m_prompts.answerNo();
        run("mnuFileClose");
        EXPECT_EQ(m_prompts.questions.takeFirst(), QStringLiteral("Save %1 ?").arg(file));
        EXPECT_EQ(bytesOf(file), "xa");
        EXPECT_TRUE(documents().isEmpty());
    }
}

TEST_F(DocumentClose, CloseAllAsksForEachChangedDocumentAndSavesThatOne) {
    start();
    const QString first = fileOf("1", QStringLiteral("1.txt"));
    const QString second = fileOf("2", QStringLiteral("2.txt"));
    open(first);
    type(QStringLiteral("x"));
    open(second);
    type(QStringLiteral("y"));
    m_prompts.answerYes();
    m_prompts.answerNo();
    run("mnuAllFileClose");
    EXPECT_EQ(m_prompts.questions,
              QStringList({QStringLiteral("Save %1 ?").arg(second), QStringLiteral("Save %1 ?").arg(first)}));
    EXPECT_EQ(bytesOf(first), "1");
    EXPECT_EQ(bytesOf(second), "y2");
    EXPECT_TRUE(documents().isEmpty());
}

TEST_F(DocumentClose, KeysAreNeverUsedAgain) {
    start();
    run("mnuFileNew");
    run("mnuFileClose");
    run("mnuFileNew");
    EXPECT_EQ(active()->fIdx, QStringLiteral("F3"));
    EXPECT_EQ(active()->Caption(), QStringLiteral("Document3"));
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
    type(QStringLiteral("xy"));
    m_prompts.answerNo();
    run("mnuFileClose");
    EXPECT_EQ(parts().status->text(2), QStringLiteral("Ln 1 / 1, Col 1, Pos 1"));
    EXPECT_EQ(parts().status->text(4), QStringLiteral("1"));
    run("mnuFileClose");
    for (int panel = 1; panel <= 4; ++panel)
        EXPECT_EQ(parts().status->text(panel), QString()) << panel;
}

TEST_F(DocumentClose, CloseAllGoesFromTheLastTabToTheFirst) {
    start();
    open(fileOf("1", QStringLiteral("1.txt")));
    open(fileOf("2", QStringLiteral("2.txt")));
    open(fileOf("3", QStringLiteral("3.txt")));
    m_explorer.calls.clear();
    run("mnuAllFileClose");
    EXPECT_EQ(m_explorer.calls.filter(QStringLiteral("RemoveFile")),
              QStringList(
                  {QStringLiteral("RemoveFile F3"), QStringLiteral("RemoveFile F2"), QStringLiteral("RemoveFile F1")}));
    EXPECT_EQ(strip().count(), 0);
}

TEST_F(DocumentClose, CloseAllExceptLeavesThatOneAndSelectsIt) {
    for (int kept = 0; kept < 3; ++kept) {
        start();
        open(fileOf("1", QStringLiteral("1.txt")));
        open(fileOf("2", QStringLiteral("2.txt")));
        open(fileOf("3", QStringLiteral("3.txt")));
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
    ASSERT_TRUE(QDir(m_folder.path()).mkdir(QStringLiteral("d")));
    open(fileOf("1"));
    open(fileOf("2", QStringLiteral("d/a.txt")));
    EXPECT_EQ(tabs(), QStringList({QStringLiteral("a.txt"), QStringLiteral("a.txt")}));
    strip().setCurrentIndex(0);
    run("mnuFileClose");
    EXPECT_EQ(strip().tabData(0).toString(), QStringLiteral("F2"));
    EXPECT_EQ(active()->filename, path(QStringLiteral("d/a.txt")));
}

TEST_F(DocumentClose, TheFrameEndsByItsStepsInTheirOrder) {
    start();
    m_steps.clear();
    m_frame->close();
    EXPECT_EQ(m_steps,
              QStringLiteral("SaveSession unloadDocuments releaseMenus SaveRecentFiles SaveRecentProjects "
                             "SaveFavProjects SaveSearchKeys PropertiesSave saveMacroFiles unloadForms releaseTabMenu "
                             "Unhook")
                  .split(u' '));
    EXPECT_TRUE(documents().isEmpty());
    m_steps.clear();
    m_frame->close();
    EXPECT_TRUE(m_steps.isEmpty());
}

TEST_F(DocumentClose, TheSessionIsWrittenBeforeTheDocumentsAsk) {
    start();
    open(fileOf("a"));
    type(QStringLiteral("x"));
    m_prompts.whileShown([&] { EXPECT_TRUE(m_rooms.calls.contains(QStringLiteral("SaveSession"))); });
    m_prompts.answerNo();
    run("mnuFileExit");
    EXPECT_EQ(m_prompts.questions.size(), 1);
    EXPECT_FALSE(m_frame->isVisible());
    EXPECT_EQ(m_rooms.calls.last(), QStringLiteral("SaveRecentFiles"));
}

TEST_F(DocumentClose, AtTheEndYesSavesTheActiveDocumentWhoeverAsks) {
    start();
    const QString first = fileOf("1", QStringLiteral("1.txt"));
    const QString second = fileOf("2", QStringLiteral("2.txt"));
    open(first);
    type(QStringLiteral("x"));
    open(second);
    type(QStringLiteral("y"));
    m_prompts.answerYes();
    m_frame->close();
    EXPECT_EQ(m_prompts.questions, QStringList(QStringLiteral("Save %1 ?").arg(first)));
    EXPECT_EQ(bytesOf(first), "1");
    EXPECT_EQ(bytesOf(second), "y2");
}

TEST_F(DocumentClose, TheTabMenuWorksOnTheActiveDocument) {
    start();
    open(fileOf("1"));
    auto* menu = m_frame->findChild<QMenu*>(QStringLiteral("Tab"));
    ASSERT_NE(menu, nullptr);
    QStringList captions;
    for (const QAction* action : menu->actions())
        captions << (action->isSeparator() ? QStringLiteral("-") : action->text());
    EXPECT_EQ(captions, QStringList({QStringLiteral("Close File"), QStringLiteral("Close All Files Except This"),
                                     QStringLiteral("-"), QStringLiteral("Save File"), QStringLiteral("-"),
                                     QStringLiteral("ReadOnly")}));
    QTest::mouseClick(&strip(), Qt::RightButton, Qt::NoModifier, strip().tabRect(0).center());
    EXPECT_TRUE(menu->isVisible());
    EXPECT_FALSE(menu->findChild<QAction*>(QStringLiteral("mnuReadonly"))->isChecked());
    EXPECT_TRUE(menu->findChild<QAction*>(QStringLiteral("mnuSaveFile"))->isEnabled());
    menu->findChild<QAction*>(QStringLiteral("mnuReadonly"))->trigger();
    menu->hide();
    EXPECT_TRUE(active()->isReadOnly);
    Q_EMIT strip().menuWanted(QPoint(10, 10));
    EXPECT_TRUE(menu->findChild<QAction*>(QStringLiteral("mnuReadonly"))->isChecked());
    EXPECT_FALSE(menu->findChild<QAction*>(QStringLiteral("mnuSaveFile"))->isEnabled());
    menu->findChild<QAction*>(QStringLiteral("mnuCloseFile"))->trigger();
    menu->hide();
    EXPECT_EQ(strip().count(), 0);
}

TEST_F(DocumentClose, TheTabMenuShowsThePicturesOfItsCommands) {
    start();
    const auto* menu = m_frame->findChild<QMenu*>(QStringLiteral("Tab"));
    const std::pair<const char*, const char*> pictures[] = {
        {"mnuCloseFile", "close"}, {"mnuSaveFile", "save"}, {"mnuReadonly", "readonly"}};
    for (const auto& [key, picture] : pictures) {
        const QImage shown = menu->findChild<QAction*>(QLatin1String(key))->icon().pixmap(16).toImage();
        EXPECT_FALSE(shown.isNull()) << key;
        EXPECT_EQ(shown, Icons::named(picture).pixmap(16).toImage()) << key;
    }
    EXPECT_TRUE(menu->findChild<QAction*>(QStringLiteral("mnuCloseFileExcept"))->icon().isNull());
}

TEST_F(DocumentClose, TheTabMenuSavesAndClosesTheOthers) {
    start();
    open(fileOf("1", QStringLiteral("1.txt")));
    const QString file = fileOf("2", QStringLiteral("2.txt"));
    open(file);
    open(fileOf("3", QStringLiteral("3.txt")));
    strip().setCurrentIndex(1);
    type(QStringLiteral("x"));
    const auto* menu = m_frame->findChild<QMenu*>(QStringLiteral("Tab"));
    menu->findChild<QAction*>(QStringLiteral("mnuSaveFile"))->trigger();
    EXPECT_EQ(bytesOf(file), "x2");
    EXPECT_EQ(parts().tabs->image(1), 1);
    menu->findChild<QAction*>(QStringLiteral("mnuCloseFileExcept"))->trigger();
    EXPECT_EQ(tabs(), QStringList(QStringLiteral("2.txt")));
    EXPECT_TRUE(m_prompts.questions.isEmpty());
}

TEST_F(DocumentClose, WithoutTabsThereIsNoTabMenu) {
    set("StartNewDocument", "0");
    start();
    QTest::mouseClick(&strip(), Qt::RightButton, Qt::NoModifier, QPoint(3, 3));
    EXPECT_FALSE(m_frame->findChild<QMenu*>(QStringLiteral("Tab"))->isVisible());
}
