#include "shell/FrameFixture.h"
#include "shell/bars/SidePanel.h"
#include "workspace/files/ucFileExplorer.h"
#include "workspace/panel/BandTitle.h"
#include "workspace/panel/ucExplorer.h"

#include <QAbstractItemView>
#include <QMdiArea>
#include <QPointer>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

/// The frame with its real side panel.
class ExplorerInTheFrame : public FrameFixture {
 protected:
    ExplorerInTheFrame() {
        m_makePanel = [](const WorkspaceServices& services) -> PanelLink& { return *new ucExplorer(services); };
    }

    ucExplorer& explorer() { return *m_frame->findChild<ucExplorer*>(u"ucExplorer1"_qs); }
    QAbstractItemView& list() {
        return *m_frame->findChild<QWidget*>(u"ucOpen1"_qs)->findChild<QAbstractItemView*>(u"lvOpen"_qs);
    }
    QStringList rows(int role = Qt::DisplayRole) {
        QStringList values;
        for (int row = 0; row < list().model()->rowCount(); ++row)
            values << list().model()->index(row, 0).data(role).toString();
        return values;
    }
    QString selectedKey() {
        const QModelIndexList selected = list().selectionModel()->selectedRows();
        return selected.size() == 1 ? selected.first().data(Qt::UserRole).toString() : QString();
    }
    void click(int row) {
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {},
                          list().visualRect(list().model()->index(row, 0)).center());
    }
    void choose(const char* entry) {
        m_frame->findChild<QMenu*>(u"Open"_qs)->findChild<QAction*>(QLatin1String(entry))->trigger();
    }
    QString twoFiles() {
        open(fileOf("1", u"one.txt"_qs));
        open(fileOf("2", u"two.txt"_qs));
        return active()->fIdx;
    }
};

TEST_F(ExplorerInTheFrame, TheFirstStartShowsThePanelWithTheOpenFilesAlone) {
    start();
    EXPECT_TRUE(explorer().isVisible());
    EXPECT_TRUE(explorer().Initialised());
    EXPECT_FALSE(explorer().isTabOpen(0));
    EXPECT_FALSE(explorer().isTabOpen(1));
    EXPECT_TRUE(explorer().isTabOpen(2));
    EXPECT_TRUE(entry("mnuEditExplorer")->isChecked());
    EXPECT_EQ(rows(), QStringList(u"Document1"_qs));
    EXPECT_EQ(explorer().parentWidget()->objectName(), u"picButtons"_qs);
    EXPECT_EQ(house().children.area().x(), explorer().width() + 5);
}

TEST_F(ExplorerInTheFrame, TheListFollowsTheDocuments) {
    start();
    EXPECT_EQ(twoFiles(), u"F2"_qs);
    EXPECT_EQ(rows(), QStringList({u"one.txt"_qs, u"two.txt"_qs}));
    EXPECT_EQ(rows(Qt::UserRole), QStringList({u"F1"_qs, u"F2"_qs}));
    EXPECT_EQ(rows(Qt::ToolTipRole), QStringList({path(u"one.txt"_qs), path(u"two.txt"_qs)}));
    EXPECT_EQ(selectedKey(), u"F2"_qs);
    constexpr int ImageRole = Qt::UserRole + 2;
    type(u"x"_qs);
    EXPECT_EQ(rows(ImageRole), QStringList({u"1"_qs, u"2"_qs}));
    run("mnuFileSave");
    EXPECT_EQ(rows(ImageRole), QStringList({u"1"_qs, u"1"_qs}));
    run("mnuReadonly");
    EXPECT_EQ(rows(ImageRole), QStringList({u"1"_qs, u"3"_qs}));
    strip().setCurrentIndex(0);
    EXPECT_EQ(selectedKey(), u"F1"_qs);
    run("mnuFileClose");
    EXPECT_EQ(rows(), QStringList(u"two.txt"_qs));
    EXPECT_EQ(selectedKey(), u"F2"_qs);
}

TEST_F(ExplorerInTheFrame, AClickOnARowBringsItsDocumentForward) {
    start();
    twoFiles();
    click(0);
    EXPECT_EQ(active()->fIdx, u"F1"_qs);
    EXPECT_EQ(strip().currentIndex(), 0);
    click(1);
    EXPECT_EQ(active()->fIdx, u"F2"_qs);
    EXPECT_EQ(m_frame->focusWidget(), &textWidget());
}

TEST_F(ExplorerInTheFrame, ClosingAllAsksAboutEachChangedDocumentInTurn) {
    start();
    twoFiles();
    type(u"b"_qs);
    click(0);
    type(u"a"_qs);
    run("mnuFileNew");
    m_prompts.answerNo();
    m_prompts.answerYes();
    choose("mnuCloseAll");
    ASSERT_EQ(m_prompts.questions.size(), 2);
    EXPECT_TRUE(m_prompts.questions.at(0).contains(u"two.txt"_qs));
    EXPECT_TRUE(m_prompts.questions.at(1).contains(u"one.txt"_qs));
    EXPECT_TRUE(documents().isEmpty());
    EXPECT_TRUE(rows().isEmpty());
    EXPECT_EQ(bytesOf(path(u"one.txt"_qs)), "a1");
    EXPECT_EQ(bytesOf(path(u"two.txt"_qs)), "2");
}

TEST_F(ExplorerInTheFrame, SeveralFilesAreSavedFromTheMenu) {
    start();
    twoFiles();
    type(u"b"_qs);
    click(0);
    type(u"a"_qs);
    list().selectAll();
    choose("mnuSave");
    EXPECT_EQ(bytesOf(path(u"one.txt"_qs)), "a1");
    EXPECT_EQ(bytesOf(path(u"two.txt"_qs)), "b2");
    EXPECT_EQ(list().selectionModel()->selectedRows().size(), 2);
}

TEST_F(ExplorerInTheFrame, AllButOneAreClosedFromTheMenu) {
    start();
    twoFiles();
    run("mnuFileNew");
    click(1);
    choose("mnuCloseAllExceptThis");
    EXPECT_EQ(rows(), QStringList(u"two.txt"_qs));
    EXPECT_EQ(tabs(), QStringList(u"two.txt"_qs));
    EXPECT_EQ(active()->filename, path(u"two.txt"_qs));
}

TEST_F(ExplorerInTheFrame, ItsCloseButtonHidesThePanelAndTheMarkFollows) {
    start();
    QTest::mouseClick(explorer().findChild<QToolButton*>(u"tbToolBar.close"_qs), Qt::LeftButton);
    EXPECT_FALSE(explorer().isVisible());
    EXPECT_FALSE(entry("mnuEditExplorer")->isChecked());
    EXPECT_EQ(house().children.area().x(), 0);
    run("mnuEditExplorer");
    EXPECT_TRUE(explorer().isVisible());
    EXPECT_TRUE(explorer().isTabOpen(2));
}

TEST_F(ExplorerInTheFrame, WhileRowsAreDraggedNoDocumentTakesADrop) {
    start();
    auto& files = *m_frame->findChild<ucFileExplorer*>(u"ucFileExplorer1"_qs);
    Q_EMIT files.dragStarted();
    EXPECT_FALSE(active()->DocEnabled());
    EXPECT_TRUE(explorer().Busy());
    Q_EMIT files.dragEnded();
    EXPECT_TRUE(active()->DocEnabled());
    EXPECT_FALSE(explorer().Busy());
}

TEST_F(ExplorerInTheFrame, AFileOfThePanelIsOpenedUnlocked) {
    start();
    auto& files = *m_frame->findChild<ucFileExplorer*>(u"ucFileExplorer1"_qs);
    Q_EMIT files.openFile(fileOf("1"));
    EXPECT_EQ(active()->filename, path(u"a.txt"_qs));
    EXPECT_FALSE(active()->Locked());
}

TEST_F(ExplorerInTheFrame, TheRoundOfF6EntersThePanelWhileItIsShown) {
    start();
    textWidget().setFocus();
    QTest::keyClick(m_frame.get(), Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(m_frame->focusWidget(), &list());
    QTest::keyClick(m_frame.get(), Qt::Key_F6);
    EXPECT_EQ(m_frame->focusWidget(), &textWidget());
    run("mnuEditExplorer");
    QTest::keyClick(m_frame.get(), Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(m_frame->focusWidget(), &strip());
}

TEST_F(ExplorerInTheFrame, TheWindowLivesWhileAProjectOfAMillionLinesOpens) {
    constexpr int Items = 500'000;
    QByteArray lines = "<<EXPLORER STATUS>>\r\nTrue\t3300\r\n<<PROJECT FILE>>\r\n";
    for (int i = 0; i < Items; ++i)
        lines += "FILE\t/gone/" + QByteArray::number(Items + i) + "\r\nNOTHING\r\n";
    lines += "<<NO SECTION>>\r\nFILE\t/in/none\r\n";
    start();
    int rounds = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, m_frame.get(), [&] { ++rounds; });
    timer.start(0);
    EXPECT_TRUE(m_frame->OpenProject(fileOf(lines, u"large.qmp"_qs)));
    EXPECT_GT(rounds, 10);
    EXPECT_EQ(explorer().PjtItemCount(), Items);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(ExplorerInTheFrame, AClosedTabLeavesTheKeyboardInThePanelAndTheDocumentActive) {
    start();
    const QString last = twoFiles();
    house().children.bringToFront(documents().at(0));
    const frmDocument* present = active();
    explorer().OpenAllTabs();
    const auto focused = [this] { return m_frame->focusWidget()->parentWidget()->objectName(); };
    const auto closeByKey = [this] { QTest::keyClick(m_frame->focusWidget(), Qt::Key_Delete); };
    explorer().findChild<QWidget*>(u"picTitle(1)"_qs)->findChild<BandTitle*>()->setFocus();
    closeByKey();
    EXPECT_FALSE(explorer().isTabOpen(1));
    EXPECT_EQ(focused(), u"picTitle(2)"_qs);
    closeByKey();
    EXPECT_EQ(focused(), u"picTitle(0)"_qs);
    closeByKey();
    EXPECT_EQ(m_frame->focusWidget()->objectName(), u"tbToolBar.close"_qs);
    EXPECT_EQ(active(), present);
    EXPECT_NE(active()->fIdx, last);

    explorer().OpenAllTabs();
    list().setFocus();
    explorer().CloseTab(2);
    EXPECT_EQ(focused(), u"picTitle(1)"_qs);
    textWidget().setFocus();
    explorer().CloseTab(1);
    EXPECT_EQ(m_frame->focusWidget(), &textWidget());
    EXPECT_EQ(active(), present);
}

TEST_F(ExplorerInTheFrame, FromTheFindBarTheWayBackLeadsToTheDocument) {
    start();
    textWidget().setFocus();
    QTest::keyClick(m_frame.get(), Qt::Key_F6);
    QStringList walked;
    for (int i = 0; i < 3 && !active()->isAncestorOf(m_frame->focusWidget()); ++i) {
        QTest::keyClick(m_frame->focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
        walked << m_frame->focusWidget()->objectName();
    }
    EXPECT_TRUE(active()->isAncestorOf(m_frame->focusWidget())) << walked.join(u' ').toStdString();
    EXPECT_TRUE(walked.contains(u"PictureV"_qs)) << walked.join(u' ').toStdString();
}

TEST_F(ExplorerInTheFrame, EachPartOfThePanelIsReachedByTheTabKey) {
    start();
    explorer().OpenAllTabs();
    explorer().findChild<QToolButton*>(u"tbToolBar.close"_qs)->setFocus();
    QStringList walked;
    for (int i = 0; i < 40; ++i) {
        walked << m_frame->focusWidget()->objectName();
        QTest::keyClick(m_frame->focusWidget(), Qt::Key_Tab);
        if (active()->isAncestorOf(m_frame->focusWidget()))
            break;
    }
    for (const char* name : {"tbToolBar.close", "tbToolBar.resize", "imgUp(0)", "imgCenter(1)", "imgUp(2)", "lvOpen"}) {
        EXPECT_TRUE(walked.contains(QLatin1String(name))) << name << ": " << walked.join(u' ').toStdString();
    }
}

TEST_F(ExplorerInTheFrame, TheFrameEndsWithItsDocumentsAndItsPanel) {
    start();
    twoFiles();
    m_frame->close();
    EXPECT_TRUE(documents().isEmpty());
    m_frame.reset();
    start();
    twoFiles();
    const QPointer<ucExplorer> panel(&explorer());
    m_frame.reset();  // without a close
    EXPECT_TRUE(panel.isNull());
}
