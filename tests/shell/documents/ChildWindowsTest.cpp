#include "shell/FrameFixture.h"
#include "shell/bars/StatusPanel.h"
#include "shell/commands/PanelRequests.h"
#include "widgets/Icons.h"

#include <QContextMenuEvent>
#include <QDateTime>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMdiArea>
#include <QMenu>
#include <QMimeData>
#include <QUrl>

#include <fcntl.h>

class ChildWindows : public FrameFixture {
 protected:
    void startWith(int count) {
        start();
        for (int i = 1; i < count; ++i)
            run("mnuFileNew");
    }
    QMdiSubWindow* window(int index) { return house().children.windowOf(documents().at(index)); }
    QRect room() { return house().children.area().viewport()->rect(); }
    void drop(const QList<QUrl>& urls) {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_frame.get(), &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent event(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_frame.get(), &event);
        QCoreApplication::processEvents();
    }
    static void setTime(const QString& file, time_t Seconds) {
        const timespec times[2] = {{Seconds, 0}, {Seconds, 0}};
        ASSERT_EQ(utimensat(AT_FDCWD, QFile::encodeName(file).constData(), times, 0), 0);
    }
};

TEST_F(ChildWindows, HorizontalTilesAreBandsOverTheFullWidth) {
    startWith(3);
    run("mnuWindowTileHorizontal");
    int height = 0;
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(window(i)->isMaximized());
        EXPECT_EQ(window(i)->width(), room().width());
        height += window(i)->height();
    }
    EXPECT_EQ(height, room().height());
    EXPECT_EQ(active(), documents().at(2));
}

TEST_F(ChildWindows, VerticalTilesAreColumnsOverTheFullHeight) {
    startWith(2);
    run("mnuWindowTileVertical");
    EXPECT_EQ(window(0)->height(), room().height());
    EXPECT_EQ(window(0)->geometry().right() + 1, window(1)->geometry().left());
}

TEST_F(ChildWindows, CascadeKeepsTheActiveOneInFront) {
    startWith(3);
    strip().setCurrentIndex(0);
    run("mnuWindowCascade");
    EXPECT_EQ(active(), documents().at(0));
    EXPECT_EQ(house().children.windowsByOrder().last(), window(0));
    EXPECT_NE(window(0)->pos(), window(1)->pos());
}

TEST_F(ChildWindows, AMinimisedDocumentComesBackWhenItsTabIsChosen) {
    startWith(2);
    run("mnuWindowCascade");
    window(0)->showMinimized();
    strip().setCurrentIndex(1);
    strip().setCurrentIndex(0);
    EXPECT_FALSE(window(0)->isMinimized());
    EXPECT_EQ(active(), documents().at(0));
}

TEST_F(ChildWindows, AMinimisedActiveDocumentComesBackWhenItsTabIsClicked) {
    startWith(2);
    run("mnuWindowCascade");
    window(0)->showMinimized();
    EXPECT_TRUE(window(0)->isMinimized());
    strip().setCurrentIndex(0);
    QTest::mouseClick(&strip(), Qt::LeftButton, Qt::NoModifier, strip().tabRect(0).center());
    EXPECT_FALSE(window(0)->isMinimized());
    EXPECT_EQ(active(), documents().at(0));
}

TEST_F(ChildWindows, TheFocusIsInTheTextAfterEveryWayToADocument) {
    start();
    EXPECT_EQ(m_frame->focusWidget(), &textWidget()) << "after the start";
    run("mnuFileNew");
    EXPECT_EQ(m_frame->focusWidget(), &textWidget()) << "after New";
    open(fileOf("1"));
    EXPECT_EQ(m_frame->focusWidget(), &textWidget()) << "after opening";
    for (const int tab : {0, 0, 1}) {
        strip().setFocus();
        QTest::mouseClick(&strip(), Qt::LeftButton, Qt::NoModifier, strip().tabRect(tab).center());
        EXPECT_EQ(strip().currentIndex(), tab);
        EXPECT_EQ(m_frame->focusWidget(), &textWidget()) << "after a click on tab " << tab;
    }
    QTest::mouseClick(&strip(), Qt::RightButton, Qt::NoModifier, strip().tabRect(0).center());
    m_frame->findChild<QMenu*>(u"Tab"_qs)->hide();
    EXPECT_EQ(m_frame->focusWidget(), &textWidget()) << "after the tab menu";
    QTest::keyClick(m_frame.get(), Qt::Key_F6, Qt::ControlModifier);
    EXPECT_EQ(m_frame->focusWidget(), &textWidget()) << "after walking on";
    run("mnuFileClose");
    EXPECT_EQ(m_frame->focusWidget(), &textWidget()) << "after closing another";
}

TEST_F(ChildWindows, TheFocusLeavesTheFindBarForTheDocumentThatOpens) {
    start();
    auto* bar = m_frame->findChild<QWidget*>(u"cmbSearch"_qs);
    const QString file = fileOf("1");
    bar->setFocus();
    open(file);
    EXPECT_EQ(documents().size(), 1);
    EXPECT_EQ(m_frame->focusWidget(), &textWidget()) << "into the untouched document";
    bar->setFocus();
    open(file);
    EXPECT_EQ(m_frame->focusWidget(), &textWidget()) << "already open and in front";
    open(fileOf("2", u"b.txt"_qs));
    bar->setFocus();
    open(file);
    EXPECT_EQ(active()->filename, file);
    EXPECT_EQ(m_frame->focusWidget(), &textWidget()) << "already open behind another";
}

TEST_F(ChildWindows, TheTabMenuComesByItsKeyToo) {
    startWith(2);
    QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(1, 1), strip().mapToGlobal(QPoint(1, 1)));
    QCoreApplication::sendEvent(&strip(), &key);
    auto* menu = m_frame->findChild<QMenu*>(u"Tab"_qs);
    EXPECT_TRUE(menu->isVisible());
    menu->hide();
}

TEST_F(ChildWindows, ArrangingIconsPutsMinimisedWindowsAlongTheLowerEdge) {
    startWith(2);
    run("mnuWindowCascade");
    window(0)->showMinimized();
    window(0)->move(200, 50);
    run("mnuWindowArrangeIcons");
    EXPECT_EQ(window(0)->geometry().bottomLeft(), room().bottomLeft());
    EXPECT_TRUE(window(0)->isMinimized());
}

TEST_F(ChildWindows, AWindowBearsThePictureOfItsDocumentsState) {
    startWith(2);
    const auto picture = [](const QWidget& bearer) { return bearer.windowIcon().pixmap(16).toImage(); };
    const QImage untouched = picture(*window(1));
    EXPECT_EQ(untouched, Icons::named("doc-normal").pixmap(16).toImage());
    type(u"x"_qs);
    EXPECT_NE(picture(*window(1)), untouched);
    EXPECT_EQ(picture(*window(1)), picture(*active()));
    EXPECT_EQ(picture(*window(0)), untouched);
}

TEST_F(ChildWindows, AChosenTabBringsItsDocumentForward) {
    startWith(3);
    strip().setCurrentIndex(0);
    EXPECT_EQ(active()->fIdx, u"F1"_qs);
    EXPECT_EQ(house().children.area().activeSubWindow(), window(0));
    house().children.area().setActiveSubWindow(window(1));
    EXPECT_EQ(strip().currentIndex(), 1);
    EXPECT_EQ(active(), documents().at(1));
}

TEST_F(ChildWindows, AClickWithinAClickIsPassedOver) {
    startWith(2);
    m_explorer.calls.clear();
    strip().setCurrentIndex(0);
    EXPECT_EQ(m_explorer.calls, QStringList(u"FileSelected F1"_qs));
}

TEST_F(ChildWindows, KeysWalkTheDocumentsRoundTheEnds) {
    startWith(3);
    QTest::keyClick(m_frame.get(), Qt::Key_F6, Qt::ControlModifier);
    EXPECT_EQ(active(), documents().at(0));
    QTest::keyClick(m_frame.get(), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(active(), documents().at(1));
    QTest::keyClick(m_frame.get(), Qt::Key_F6, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(active(), documents().at(0));
    QTest::keyClick(m_frame.get(), Qt::Key_F4, Qt::ControlModifier);
    EXPECT_EQ(documents().size(), 2);
}

TEST_F(ChildWindows, TheWindowMenuListsNineAndChecksTheActiveOne) {
    startWith(11);
    strip().setCurrentIndex(3);
    QMenu* menu = house().entries.menu("mnuWindow");
    for (int round = 0; round < 2; ++round) {
        Q_EMIT menu->aboutToShow();
        QStringList listed;
        QStringList checked;
        for (const QAction* action : menu->actions()) {
            if (!action->objectName().startsWith(QLatin1String("mnuWindowList")))
                continue;
            listed << action->text();
            if (action->isChecked())
                checked << action->text();
        }
        EXPECT_EQ(listed.size(), 9);
        EXPECT_EQ(listed.last(), u"&9 Document9"_qs);
        EXPECT_EQ(checked, QStringList(u"&4 Document4"_qs));
    }
    menu->findChild<QAction*>(u"mnuWindowList(2)"_qs)->trigger();
    EXPECT_EQ(active()->Caption(), u"Document2"_qs);
}

TEST_F(ChildWindows, ALaterActiveDocumentTakesTheNinthPlaceOfTheList) {
    startWith(11);
    QMenu* menu = house().entries.menu("mnuWindow");
    for (int index : {10, 9, 8}) {
        strip().setCurrentIndex(index);
        Q_EMIT menu->aboutToShow();
        for (int place = 1; place <= 8; ++place) {
            const auto* entry = menu->findChild<QAction*>(u"mnuWindowList(%1)"_qs.arg(place));
            EXPECT_EQ(entry->text(), u"&%1 Document%1"_qs.arg(place));
            EXPECT_FALSE(entry->isChecked());
        }
        const auto* ninth = menu->findChild<QAction*>(u"mnuWindowList(9)"_qs);
        EXPECT_EQ(ninth->text(), u"&9 Document%1"_qs.arg(index + 1));
        EXPECT_TRUE(ninth->isChecked());
        EXPECT_EQ(menu->findChild<QAction*>(u"mnuWindowList(10)"_qs), nullptr);
    }
}

TEST_F(ChildWindows, DroppedFilesOpenInTheirOrder) {
    start();
    drop({QUrl::fromLocalFile(fileOf("1", u"1.txt"_qs)), QUrl(u"http://x/y"_qs),
          QUrl::fromLocalFile(fileOf("2", u"2 ü.txt"_qs))});
    EXPECT_EQ(tabs(), QStringList({u"1.txt"_qs, u"2 ü.txt"_qs}));
}

TEST_F(ChildWindows, ADroppedFileThatIsOpenIsFoundWhateverItsSpelling) {
    start();
    const QString file = fileOf("1");
    open(file);
    drop({QUrl::fromLocalFile(m_folder.path() + u"//./a.txt"_qs)});
    EXPECT_EQ(documents().size(), 1);
    EXPECT_EQ(m_prompts.messages, QStringList(u"'%1' already open!"_qs.arg(file)));
}

TEST_F(ChildWindows, ADropOfThePanelsOwnRowsIsNotRead) {
    start();
    m_explorer.busy = true;
    drop({QUrl::fromLocalFile(fileOf("1"))});
    EXPECT_EQ(m_explorer.calls, QStringList(u"OpenSelectedFiles"_qs));
    EXPECT_EQ(tabs(), QStringList(u"Document1"_qs));
}

TEST_F(ChildWindows, ComingBackToTheApplicationReloadsWhatChanged) {
    const QString file = fileOf("1");
    setTime(file, 1'600'000'000);
    start();
    open(file);
    run("mnuFileNew");
    fileOf("changed");
    setTime(file, 1'600'000'100);
    m_prompts.answerYes();
    m_frame->CheckFileUpdate();
    EXPECT_EQ(m_prompts.questions, QStringList(u"'%1' has been changed, do you want to reload it."_qs.arg(file)));
    EXPECT_EQ(active()->filename, file);
    EXPECT_EQ(active()->GetEditor()->Text(), u"changed"_qs);
    EXPECT_EQ(house().status.text(4), u"7"_qs);
    m_frame->CheckFileUpdate();
    EXPECT_EQ(m_prompts.questions.size(), 1);
}

TEST_F(ChildWindows, ActivationChecksOnlyWhenHookedAndWanted) {
    const QString file = fileOf("1");
    for (const auto& [tail, notice, asks] :
         {std::tuple{"", "True", true}, std::tuple{"", "False", false}, std::tuple{"-d", "True", false}}) {
        setTime(file, 1'600'000'000);
        m_prompts.questions.clear();
        set("FileModifyNotice", notice);
        start(QString::fromLatin1(tail));
        open(file);
        setTime(file, 1'600'000'100);
        if (asks)
            m_prompts.answerNo();
        Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
        EXPECT_TRUE(m_prompts.questions.isEmpty());
        Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
        EXPECT_EQ(m_prompts.questions.size(), asks ? 1 : 0) << tail << notice;
        m_frame.reset();
    }
}

TEST_F(ChildWindows, TheStatusBarFollowsTheCursor) {
    start();
    type(u"ab"_qs);
    EXPECT_EQ(house().status.text(2), u"Ln 1 / 1, Col 3, Pos 3"_qs);
    EXPECT_EQ(house().status.text(3), QString());
    QTest::mouseDClick(m_frame->findChild<QWidget*>(u"sbStatusBar(2)"_qs), Qt::LeftButton);
    EXPECT_EQ(m_prompts.messages, QStringList(u"Ln 1 / 1, Col 3, Pos 3"_qs));
}

TEST_F(ChildWindows, TheStatusBarCountsTheLinesOfWhatWasLoadedAndEdited) {
    start();
    open(fileOf("1\n2\n3"));
    EXPECT_EQ(house().status.text(2), u"Ln 1 / 3, Col 1, Pos 1"_qs);
    select(1, 1);
    QTest::keyClick(&textWidget(), Qt::Key_Delete);
    EXPECT_EQ(house().status.text(2), u"Ln 1 / 2, Col 2, Pos 2"_qs);
}

TEST_F(ChildWindows, TheStatusBarIsRightAfterEveryEdit) {
    start();
    type(u"b\na\nc"_qs);
    const auto position = [this] { return house().status.text(2); };
    const auto told = [this] { return active()->GetCursorPos(); };
    EXPECT_EQ(position(), u"Ln 3 / 3, Col 2, Pos 6"_qs);
    const char* commands[] = {"mnuEditUndo",    "mnuEditRedo",          "mnuSelectAll",  "mnuEditCut",
                              "mnuEditPaste",   "mnuSortLineAscending", "mnuDeleteLine", "mnuEditUndo",
                              "mnuToUppercase", "mnuDeleteToStart",     "mnuIndent"};
    for (const char* name : commands) {
        run(name);
        EXPECT_EQ(position(), told()) << name;
    }
    select(0, 0);
    QTest::keyClick(&textWidget(), Qt::Key_Return);
    EXPECT_EQ(position(), told());
    select(0, 0);
    const QString before = position();
    QTest::keyClick(&textWidget(), Qt::Key_Delete);
    EXPECT_EQ(position(), told());
    EXPECT_NE(position(), before);
}

TEST_F(ChildWindows, TheStatusBarIsThatOfTheActiveDocument) {
    startWith(2);
    const QString before = house().status.text(2);
    rtCM& behind = *documents().first()->GetEditor();
    behind.AddText(u"one\ntwo"_qs);
    behind.setSelStart(1);
    behind.setSelEnd(2);
    EXPECT_EQ(house().status.text(2), before);
    strip().setCurrentIndex(0);
    EXPECT_EQ(house().status.text(2), documents().first()->GetCursorPos());
    EXPECT_NE(house().status.text(2), before);
}

TEST_F(ChildWindows, ALongPositionHasRoomAndIsTheToolTip) {
    start();
    m_frame->resize(1000, 700);
    open(fileOf(QByteArray(30'000, '\n') + QByteArray(99, 'x')));
    select(30'099, 30'099);
    QCoreApplication::processEvents();
    const QString text = u"Ln 30,001 / 30,001, Col 100, Pos 30100"_qs;
    ASSERT_EQ(house().status.text(2), text);
    auto* panel = m_frame->findChild<StatusPanel*>(u"sbStatusBar(2)"_qs);
    EXPECT_EQ(panel->toolTip(), text);
    EXPECT_FALSE(panel->isCutOff());
    panel->setText(text.repeated(4));
    EXPECT_TRUE(panel->isCutOff());
    EXPECT_EQ(panel->toolTip(), text.repeated(4));
}

TEST_F(ChildWindows, TheStatusBarShowsTimeAndSizeEachWithItsPicture) {
    const QString file = fileOf("12345");
    constexpr time_t Seconds = 1'600'000'000;
    setTime(file, Seconds);
    start();
    open(file);
    const QString local = QDateTime::fromSecsSinceEpoch(Seconds).toString(u"yyyy/MM/dd HH:mm:ss"_qs);
    EXPECT_EQ(house().status.text(3), local);
    EXPECT_EQ(house().status.text(4), u"5"_qs);
    const auto picture = [this](int panel) {
        const QString name = u"sbStatusBar(%1)"_qs.arg(panel);
        return m_frame->findChild<StatusPanel*>(name)->picture().pixmap(16).toImage();
    };
    EXPECT_EQ(picture(3), Icons::named("save").pixmap(16).toImage());
    EXPECT_EQ(picture(4), Icons::named("countall").pixmap(16).toImage());
    EXPECT_TRUE(picture(1).isNull());
    EXPECT_TRUE(picture(2).isNull());
}

TEST_F(ChildWindows, AnEmptyPanelShowsAnEmptyBox) {
    start();
    QTest::mouseDClick(m_frame->findChild<QWidget*>(u"sbStatusBar(1)"_qs), Qt::LeftButton);
    EXPECT_EQ(m_prompts.messages, QStringList(QString()));
}

TEST_F(ChildWindows, TheHexSwitchShowsWhatTheDocumentReallyDid) {
    start();
    open(fileOf("1"));
    house().entries.button("ShowHex")->trigger();
    EXPECT_EQ(house().entries.button("ShowHex")->isChecked(), !active()->TextEdit());
    EXPECT_EQ(entry("mnuToggleHex")->isChecked(), !active()->TextEdit());
}
