#include "search/results/SearchResultsModel.h"
#include "search/results/ucSearchResults.h"
#include "support/ScriptedPrompts.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QCursor>
#include <QMenu>
#include <QPointer>
#include <QScrollBar>
#include <QTest>
#include <QTreeView>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>

namespace {

class SearchResultsTest : public testing::Test {
 protected:
    void SetUp() override {
        m_results->setObjectName(u"ucSearchResults1"_qs);
        m_results->resize(400, 300);
        QObject::connect(m_results.get(), &ucSearchResults::ItemAction,
                         [this](const QString& file, const QString& tag, const QString& flag) {
                             m_actions << file + u'|' + tag + u'|' + flag;
                             if (m_onAction)
                                 m_onAction();
                         });
        m_results->show();
        m_results->activateWindow();
        QCoreApplication::processEvents();
    }

    QTreeView& tree() const { return *m_results->findChild<QTreeView*>(u"t1"_qs); }
    QAbstractItemModel& model() const { return *tree().model(); }
    QMenu& menu(const char* name = "Search") const { return *m_results->findChild<QMenu*>(QLatin1String(name)); }
    QModelIndex file(int row) const { return model().index(row, 0); }
    QModelIndex match(int fileRow, int row) const { return model().index(row, 0, file(fileRow)); }
    void run(const char* key) const { menu().findChild<QAction*>(QLatin1String(key))->trigger(); }
    void check(const QModelIndex& index) const { model().setData(index, Qt::Checked, Qt::CheckStateRole); }
    static bool isChecked(const QModelIndex& index) { return index.data(Qt::CheckStateRole).toInt() == Qt::Checked; }
    void select(const QModelIndex& index) const { tree().setCurrentIndex(index); }
    void press(Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) const {
        tree().setFocus();
        QTest::keyClick(&tree(), key, with);
    }
    QPoint placeOf(const QModelIndex& index) const { return tree().visualRect(index).center(); }
    QPoint checkBoxOf(const QModelIndex& index) const {
        const QRect row = tree().visualRect(index);
        return {row.left() + 9, row.center().y()};
    }
    void click(QPoint place, Qt::MouseButton button = Qt::LeftButton) const {
        QTest::mouseClick(tree().viewport(), button, {}, place);
    }
    void doubleClick(QPoint place, Qt::MouseButton button = Qt::LeftButton) const {
        click(place, button);
        QTest::mouseDClick(tree().viewport(), button, {}, place);
        if (m_results)
            QTest::mouseRelease(tree().viewport(), button, {}, place);
    }
    /// The files "/a" and "/b" with two matches each.
    void addTwoFiles() const {
        for (const QString& name : {u"/a"_qs, u"/b"_qs}) {
            m_results->AddItem(name, 1, 5, 3, u"one"_qs);
            m_results->AddItem(name, 20, 90, 4, u"two"_qs);
        }
    }
    QStringList takeActions() { return std::exchange(m_actions, {}); }

    ScriptedPrompts m_prompts;
    std::unique_ptr<ucSearchResults> m_results = std::make_unique<ucSearchResults>(m_prompts);
    QStringList m_actions;
    std::function<void()> m_onAction;
};

QStringList entriesOf(const QMenu& menu) {
    QStringList entries;
    for (const QAction* each : menu.actions())
        entries << (each->isSeparator() ? u"-"_qs : QString(each->objectName() + u'=' + each->text()));
    return entries;
}

TEST_F(SearchResultsTest, TheTreeFillsTheControlAndBearsItsName) {
    EXPECT_EQ(tree().geometry(), m_results->rect());
    EXPECT_EQ(tree().accessibleName(), u"Search results"_qs);
    EXPECT_TRUE(tree().isHeaderHidden());
    EXPECT_EQ(tree().selectionMode(), QAbstractItemView::SingleSelection);
    EXPECT_EQ(model().rowCount(), 0);
}

TEST_F(SearchResultsTest, AnAddedItemStandsUnderItsFile) {
    m_results->AddItem(u"/a"_qs, 12345, 678, 9, u"\ttext"_qs);
    m_results->AddItem(u"/a"_qs, 12346, 700, 9, u"more"_qs);
    ASSERT_EQ(model().rowCount(), 1);
    EXPECT_EQ(file(0).data().toString(), u"/a"_qs);
    EXPECT_EQ(match(0, 0).data().toString(), u"2345 : \ttext"_qs);
    EXPECT_EQ(match(0, 0).data(Qt::UserRole + 1).toString(), u"12345,678,9"_qs);
    EXPECT_EQ(match(0, 1).data(Qt::UserRole + 1).toString(), u"12346,700,9"_qs);
    EXPECT_EQ(match(0, 0).data(SearchResultsModel::MarkLength).toInt(), 0);
}

TEST_F(SearchResultsTest, TheOperationsCanBeCalledByName) {
    QMetaObject::invokeMethod(m_results.get(), "AddItem", Q_ARG(QString, u"/a"_qs), Q_ARG(qint64, 1), Q_ARG(qint64, 2),
                              Q_ARG(int, 3), Q_ARG(QString, u"x"_qs));
    QMetaObject::invokeMethod(m_results.get(), "SetNodeText", Q_ARG(QString, u"/a"_qs), Q_ARG(QString, u"text"_qs));
    QModelIndex node;
    QMetaObject::invokeMethod(m_results.get(), "GetTreeNode", Q_RETURN_ARG(QModelIndex, node),
                              Q_ARG(QString, u"/a"_qs));
    EXPECT_EQ(node, file(0));
    EXPECT_EQ(node.data().toString(), u"text"_qs);
    QMetaObject::invokeMethod(m_results.get(), "ClearTree");
    EXPECT_EQ(model().rowCount(), 0);
}

TEST_F(SearchResultsTest, ANodeIsFoundByItsKeyAlone) {
    addTwoFiles();
    EXPECT_EQ(m_results->GetTreeNode(u"/b"_qs), file(1));
    EXPECT_FALSE(m_results->GetTreeNode(u"/c"_qs).isValid());
    EXPECT_FALSE(m_results->GetTreeNode({}).isValid());
    m_results->SetNodeText(u"/c"_qs, u"text"_qs);
    EXPECT_EQ(file(0).data().toString(), u"/a"_qs);
    EXPECT_EQ(file(1).data().toString(), u"/b"_qs);
}

TEST_F(SearchResultsTest, WithoutAFileNameNothingIsListed) {
    m_results->AddItem({}, 1, 0, 1, u"x"_qs);
    EXPECT_EQ(model().rowCount(), 0);
}

TEST_F(SearchResultsTest, MatchesThatAreAddedTogetherAreListedAtOnce) {
    FileMatches matches;
    matches.addLine(2, u"a b a"_qs);
    matches.addMatch({10, 1, 0, 0, 1});
    matches.addMatch({14, 1, 0, 4, 1});
    m_results->addMatches(u"/a"_qs, matches);
    m_results->addMatches({}, matches);
    EXPECT_EQ(model().rowCount(), 1);
    EXPECT_EQ(model().rowCount(m_results->GetTreeNode(u"/a"_qs)), 2);
    m_results->addMatches(u"/a"_qs, matches);
    EXPECT_EQ(model().rowCount(file(0)), 4);
    EXPECT_EQ(match(0, 3).data(Qt::UserRole + 1).toString(), u"2,14,1"_qs);
}

TEST_F(SearchResultsTest, NewFilesAreClosedAndAnOpenOneTakesMore) {
    addTwoFiles();
    EXPECT_FALSE(tree().isExpanded(file(0)));
    tree().expand(file(0));
    m_results->AddItem(u"/a"_qs, 30, 100, 1, u"three"_qs);
    QCoreApplication::processEvents();
    EXPECT_TRUE(tree().isExpanded(file(0)));
    EXPECT_FALSE(tree().visualRect(match(0, 2)).isEmpty());
}

TEST_F(SearchResultsTest, TheMenuHasItsEntriesInOrder) {
    EXPECT_EQ(entriesOf(menu()),
              QStringList({u"mnuExpandAllNodes=Expand All Nodes"_qs, u"mnuCollapseAllNodes=Collapse All Nodes"_qs,
                           u"-"_qs, u"mnuOpenFile=Open File"_qs, u"mnuOpenAllFiles=Open All Files"_qs, u"-"_qs,
                           u"mnuBookLines=Bookmark Line(s)"_qs, u"-"_qs,
                           u"mnuRemoveSelectedNodes=Remove Checked Nodes"_qs, u"mnuClearAllNodes=Clear All Nodes"_qs,
                           u"-"_qs, u"mnuCheckNodes=Check All Nodes"_qs, u"mnuUncheckNodes=Uncheck All Nodes"_qs}));
}

TEST_F(SearchResultsTest, TheHiddenMenuHasAllButTheLastTwoAndAPlaceholder) {
    QStringList expected = entriesOf(menu());
    expected.resize(expected.size() - 3);
    expected << u"mnuHighlightKeyword=Highlight Keywords Found"_qs;
    EXPECT_EQ(entriesOf(menu("mnuMenu")), expected);
    EXPECT_FALSE(menu("mnuMenu").isVisible());
}

TEST_F(SearchResultsTest, ThePlaceholdersHaveNoEffect) {
    addTwoFiles();
    select(file(0));
    menu("mnuMenu").findChild<QAction*>(u"mnuHighlightKeyword"_qs)->trigger();
    for (const char* key : {"mnuHighLightFound", "mnuHighlightKeyword", "mnuOther", ""})
        m_results->runCommand(QLatin1String(key));
    EXPECT_TRUE(m_actions.isEmpty());
    EXPECT_EQ(model().rowCount(), 2);
    EXPECT_FALSE(isChecked(file(0)));
}

TEST_F(SearchResultsTest, TheHiddenMenuRunsTheSameCommands) {
    addTwoFiles();
    select(match(0, 1));
    menu("mnuMenu").findChild<QAction*>(u"mnuOpenFile"_qs)->trigger();
    EXPECT_EQ(m_actions, QStringList(u"/a|20,90,4|OPEN"_qs));
}

TEST_F(SearchResultsTest, AllNodesAreOpenedAndClosed) {
    addTwoFiles();
    run("mnuExpandAllNodes");
    EXPECT_TRUE(tree().isExpanded(file(0)));
    EXPECT_TRUE(tree().isExpanded(file(1)));
    run("mnuCollapseAllNodes");
    EXPECT_FALSE(tree().isExpanded(file(0)));
    EXPECT_FALSE(tree().isExpanded(file(1)));
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(SearchResultsTest, TheHourglassIsShownWhileAllNodesAreOpenedAndClosed) {
    for (int n = 0; n < 100; ++n)
        m_results->AddItem(u"/%1"_qs.arg(n), 1, 0, 1, u"x"_qs);
    QCoreApplication::processEvents();
    for (const char* key : {"mnuExpandAllNodes", "mnuCollapseAllNodes"}) {
        SCOPED_TRACE(key);
        bool isSeen = false;
        const auto heard = QObject::connect(tree().verticalScrollBar(), &QScrollBar::rangeChanged, [&isSeen] {
            const QCursor* pointer = QGuiApplication::overrideCursor();
            isSeen = pointer != nullptr && pointer->shape() == Qt::WaitCursor;
        });
        run(key);
        QObject::disconnect(heard);
        EXPECT_TRUE(isSeen);
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    }
}

TEST_F(SearchResultsTest, TheCursorOfAClosedFileIsOnTheFile) {
    addTwoFiles();
    run("mnuExpandAllNodes");
    select(match(1, 1));
    run("mnuCollapseAllNodes");
    EXPECT_EQ(tree().currentIndex(), file(1));
    tree().expand(file(0));
    select(match(0, 0));
    tree().collapse(file(0));
    EXPECT_EQ(tree().currentIndex(), file(0));
}

TEST_F(SearchResultsTest, AFileIsOpenedWithoutALineAndAMatchAtItsPlace) {
    addTwoFiles();
    run("mnuOpenFile");
    EXPECT_TRUE(m_actions.isEmpty());  // no node is selected
    select(file(1));
    run("mnuOpenFile");
    select(match(1, 0));
    run("mnuOpenFile");
    EXPECT_EQ(m_actions, QStringList({u"/b|-1|OPEN"_qs, u"/b|1,5,3|OPEN"_qs}));
}

TEST_F(SearchResultsTest, AllFilesAreOpenedAfterAQuestion) {
    addTwoFiles();
    m_prompts.answerNo();
    run("mnuOpenAllFiles");
    EXPECT_TRUE(m_actions.isEmpty());
    m_prompts.answerYes();
    bool isBusy = true;
    m_onAction = [&] { isBusy = isBusy && QGuiApplication::overrideCursor() != nullptr; };
    run("mnuOpenAllFiles");
    EXPECT_EQ(m_actions, QStringList({u"/a||OPEN"_qs, u"/b||OPEN"_qs}));
    EXPECT_EQ(m_prompts.questions, QStringList({u"Open all files ?"_qs, u"Open all files ?"_qs}));
    EXPECT_TRUE(isBusy);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(SearchResultsTest, TheEventLoopRunsAfterEachOpenedFile) {
    addTwoFiles();
    m_prompts.answerYes();
    m_onAction = [this] {
        QMetaObject::invokeMethod(
            m_results.get(), [this] { m_actions << u"event"_qs; }, Qt::QueuedConnection);
    };
    run("mnuOpenAllFiles");
    EXPECT_EQ(m_actions, QStringList({u"/a||OPEN"_qs, u"event"_qs, u"/b||OPEN"_qs, u"event"_qs}));
}

TEST_F(SearchResultsTest, FilesThatAreRemovedWhileOthersAreOpenedAreLeftOut) {
    addTwoFiles();
    m_results->AddItem(u"/c"_qs, 1, 0, 1, u"x"_qs);
    m_prompts.answerYes();
    m_onAction = [this] {
        if (m_actions.size() > 1)
            return;
        check(file(0));
        check(file(1));
        run("mnuRemoveSelectedNodes");
    };
    run("mnuOpenAllFiles");
    EXPECT_EQ(m_actions, QStringList({u"/a||OPEN"_qs, u"/c||OPEN"_qs}));
}

TEST_F(SearchResultsTest, ATreeThatIsClearedMeanwhileEndsTheOpeningOfAllFiles) {
    addTwoFiles();
    m_prompts.answerYes();
    m_onAction = [this] {
        m_results->ClearTree();
        addTwoFiles();
    };
    run("mnuOpenAllFiles");
    EXPECT_EQ(m_actions, QStringList(u"/a||OPEN"_qs));
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(SearchResultsTest, AMatchBecomesABookmarkAndAFileOneForEachMatch) {
    addTwoFiles();
    run("mnuBookLines");
    EXPECT_TRUE(m_actions.isEmpty());
    select(match(0, 1));
    run("mnuBookLines");
    EXPECT_EQ(takeActions(), QStringList(u"/a|20,90,4|BOOKMARK"_qs));
    select(file(1));
    run("mnuBookLines");
    EXPECT_EQ(takeActions(), QStringList({u"/b|1,5,3|BOOKMARK"_qs, u"/b|20,90,4|BOOKMARK"_qs}));
}

TEST_F(SearchResultsTest, AFileWithOneMatchRaisesOneActionAndOneWithoutRaisesNone) {
    m_results->AddItem(u"/a"_qs, 4, 5, 6, u"x"_qs);
    select(file(0));
    run("mnuBookLines");
    EXPECT_EQ(takeActions(), QStringList(u"/a|4,5,6|BOOKMARK"_qs));
    check(match(0, 0));
    run("mnuRemoveSelectedNodes");
    run("mnuBookLines");
    EXPECT_TRUE(m_actions.isEmpty());
}

TEST_F(SearchResultsTest, TheRestOfAFileThatIsRemovedIsNotBookmarked) {
    addTwoFiles();
    select(file(0));
    m_onAction = [this] { m_results->ClearTree(); };
    run("mnuBookLines");
    EXPECT_EQ(m_actions, QStringList(u"/a|1,5,3|BOOKMARK"_qs));
}

TEST_F(SearchResultsTest, MatchesThatAreAddedWhileAFileIsBookmarkedAreNotBookmarked) {
    addTwoFiles();
    select(file(0));
    m_onAction = [this] { m_results->AddItem(u"/a"_qs, 99, 0, 1, u"x"_qs); };
    run("mnuBookLines");
    EXPECT_EQ(m_actions.size(), 2);
}

TEST_F(SearchResultsTest, CheckedNodesAreRemovedWithoutAQuestion) {
    addTwoFiles();
    run("mnuExpandAllNodes");
    check(file(0));
    check(match(1, 0));
    run("mnuRemoveSelectedNodes");
    ASSERT_EQ(model().rowCount(), 1);
    EXPECT_EQ(file(0).data().toString(), u"/b"_qs);
    EXPECT_TRUE(tree().isExpanded(file(0)));
    EXPECT_EQ(model().rowCount(file(0)), 1);
    EXPECT_EQ(tree().indexAt(placeOf(match(0, 0))), match(0, 0));
    EXPECT_TRUE(m_prompts.questions.isEmpty());
}

TEST_F(SearchResultsTest, ACheckedMatchIsRemovedAndItsFileStaysEvenWithoutMatches) {
    m_results->AddItem(u"/a"_qs, 4, 5, 6, u"x"_qs);
    tree().expand(file(0));
    check(match(0, 0));
    run("mnuRemoveSelectedNodes");
    EXPECT_EQ(model().rowCount(), 1);
    EXPECT_EQ(model().rowCount(file(0)), 0);
}

TEST_F(SearchResultsTest, TheFilesThatRemainStayOpenOrClosed) {
    for (int n = 0; n < 9; ++n)
        m_results->AddItem(u"/%1"_qs.arg(n), 1, 0, 1, u"x"_qs);
    for (const int row : {1, 4, 7})
        tree().expand(file(row));
    for (const int row : {0, 4, 5})
        check(file(row));
    run("mnuRemoveSelectedNodes");
    QStringList open;
    for (int row = 0; row < model().rowCount(); ++row) {
        if (tree().isExpanded(file(row)))
            open << file(row).data().toString();
    }
    EXPECT_EQ(open, QStringList({u"/1"_qs, u"/7"_qs}));
}

TEST_F(SearchResultsTest, TheCursorIsOnTheNearestNodeAfterARemoval) {
    addTwoFiles();
    run("mnuExpandAllNodes");
    select(match(0, 0));
    check(match(0, 0));
    run("mnuRemoveSelectedNodes");
    EXPECT_EQ(tree().currentIndex(), match(0, 0));
    EXPECT_EQ(tree().currentIndex().data().toString(), u"  20 : two"_qs);
    check(file(0));
    run("mnuRemoveSelectedNodes");
    EXPECT_EQ(tree().currentIndex(), file(0));
    EXPECT_TRUE(tree().selectionModel()->isSelected(file(0)));
    check(file(0));
    run("mnuRemoveSelectedNodes");
    EXPECT_FALSE(tree().currentIndex().isValid());
}

TEST_F(SearchResultsTest, AllNodesAreClearedAfterAQuestion) {
    addTwoFiles();
    m_prompts.answerNo();
    run("mnuClearAllNodes");
    EXPECT_EQ(model().rowCount(), 2);
    m_prompts.answerYes();
    run("mnuClearAllNodes");
    EXPECT_EQ(model().rowCount(), 0);
    EXPECT_EQ(m_prompts.questions, QStringList({u"Clear all nodes ?"_qs, u"Clear all nodes ?"_qs}));
    addTwoFiles();
    m_results->ClearTree();
    EXPECT_EQ(model().rowCount(), 0);
    EXPECT_EQ(m_prompts.questions.size(), 2);
}

TEST_F(SearchResultsTest, AllNodesAreCheckedAndUnchecked) {
    addTwoFiles();
    check(match(0, 1));
    run("mnuCheckNodes");
    for (const QModelIndex& each : {file(0), match(0, 0), match(0, 1), file(1), match(1, 0), match(1, 1)}) {
        EXPECT_TRUE(isChecked(each));
    }
    run("mnuUncheckNodes");
    for (const QModelIndex& each : {file(0), match(0, 0), match(0, 1), file(1), match(1, 0), match(1, 1)}) {
        EXPECT_FALSE(isChecked(each));
    }
}

TEST_F(SearchResultsTest, TheRightButtonSelectsTheNodeAndItsReleaseOpensTheMenu) {
    addTwoFiles();
    tree().expand(file(0));
    select(file(1));
    QTest::mousePress(tree().viewport(), Qt::RightButton, {}, placeOf(match(0, 1)));
    EXPECT_EQ(tree().currentIndex(), match(0, 1));
    EXPECT_FALSE(menu().isVisible());
    QTest::mouseRelease(tree().viewport(), Qt::RightButton, {}, placeOf(match(0, 1)));
    ASSERT_TRUE(menu().isVisible());
    EXPECT_EQ(menu().pos(), tree().viewport()->mapToGlobal(placeOf(match(0, 1))));
    EXPECT_FALSE(isChecked(match(0, 1)));
    EXPECT_TRUE(m_actions.isEmpty());
}

TEST_F(SearchResultsTest, TheRightButtonBelowTheRowsKeepsTheNode) {
    addTwoFiles();
    select(file(1));
    click(QPoint(100, 250), Qt::RightButton);
    EXPECT_TRUE(menu().isVisible());
    EXPECT_EQ(tree().currentIndex(), file(1));
}

TEST_F(SearchResultsTest, AnEmptyTreeHasNoMenu) {
    click(QPoint(20, 20), Qt::RightButton);
    EXPECT_FALSE(menu().isVisible());
    QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QCoreApplication::sendEvent(&tree(), &key);
    EXPECT_FALSE(menu().isVisible());
    addTwoFiles();
    m_results->ClearTree();
    click(QPoint(20, 20), Qt::RightButton);
    EXPECT_FALSE(menu().isVisible());
}

TEST_F(SearchResultsTest, TheRightButtonReleasedOutsideOpensNoMenu) {
    addTwoFiles();
    QTest::mousePress(tree().viewport(), Qt::RightButton, {}, placeOf(file(0)));
    QTest::mouseRelease(tree().viewport(), Qt::RightButton, {}, QPoint(50, -40));
    EXPECT_FALSE(menu().isVisible());
}

TEST_F(SearchResultsTest, TheMenuKeyOpensTheMenuAtTheNode) {
    addTwoFiles();
    select(file(1));
    QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QCoreApplication::sendEvent(&tree(), &key);
    ASSERT_TRUE(menu().isVisible());
    EXPECT_EQ(menu().pos(), tree().viewport()->mapToGlobal(tree().visualRect(file(1)).bottomLeft()));
}

TEST_F(SearchResultsTest, ShiftF10OpensTheMenuAtTheNodeInAViewThatIsScrolled) {
    m_results->AddItem(u"/a"_qs, 1, 0, 1, QString(400, u'x'));
    run("mnuExpandAllNodes");
    QCoreApplication::processEvents();
    tree().horizontalScrollBar()->setValue(300);
    select(match(0, 0));
    press(Qt::Key_F10);
    EXPECT_FALSE(menu().isVisible());
    press(Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_TRUE(menu().isVisible());
    EXPECT_EQ(menu().pos(), tree().viewport()->mapToGlobal(QPoint(0, tree().visualRect(match(0, 0)).bottom())));
}

TEST_F(SearchResultsTest, WithoutANodeTheEntriesForOneAreGreyed) {
    addTwoFiles();
    tree().selectionModel()->clear();
    click(QPoint(100, 250), Qt::RightButton);
    for (const char* key : {"mnuOpenFile", "mnuBookLines"}) {
        EXPECT_FALSE(menu().findChild<QAction*>(QLatin1String(key))->isEnabled());
    }
    menu().close();
    click(placeOf(file(0)), Qt::RightButton);
    for (const char* key : {"mnuOpenFile", "mnuBookLines"}) {
        EXPECT_TRUE(menu().findChild<QAction*>(QLatin1String(key))->isEnabled());
    }
}

TEST_F(SearchResultsTest, ADoubleClickOpensAMatchAndOpensTheNodeOfAFile) {
    addTwoFiles();
    doubleClick(placeOf(file(0)));
    EXPECT_TRUE(m_actions.isEmpty());
    EXPECT_TRUE(tree().isExpanded(file(0)));
    click(placeOf(match(0, 1)));
    EXPECT_TRUE(m_actions.isEmpty());
    doubleClick(placeOf(match(0, 1)));
    EXPECT_EQ(m_actions, QStringList(u"/a|20,90,4|OPEN"_qs));
    doubleClick(placeOf(match(0, 1)), Qt::MiddleButton);
    EXPECT_EQ(m_actions.size(), 1);
}

TEST_F(SearchResultsTest, QuickClicksOnACheckBoxCheckAndUncheckAndOpenNothing) {
    addTwoFiles();
    tree().expand(file(0));
    click(checkBoxOf(match(0, 0)));
    EXPECT_TRUE(isChecked(match(0, 0)));
    doubleClick(checkBoxOf(match(0, 1)));
    EXPECT_FALSE(isChecked(match(0, 1)));
    EXPECT_FALSE(isChecked(file(0)));
    EXPECT_TRUE(m_actions.isEmpty());
}

TEST_F(SearchResultsTest, EnterOpensAMatchAndOpensAndClosesAFile) {
    addTwoFiles();
    press(Qt::Key_Home);
    press(Qt::Key_Return);
    EXPECT_TRUE(tree().isExpanded(file(0)));
    EXPECT_TRUE(m_actions.isEmpty());
    press(Qt::Key_Down);
    press(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(takeActions(), QStringList(u"/a|1,5,3|OPEN"_qs));
    press(Qt::Key_Return, Qt::ControlModifier);
    press(Qt::Key_Return, Qt::AltModifier);
    EXPECT_TRUE(m_actions.isEmpty());
    press(Qt::Key_Up);
    press(Qt::Key_Enter);
    EXPECT_FALSE(tree().isExpanded(file(0)));
}

TEST_F(SearchResultsTest, EnterInAnEmptyTreeDoesNothing) {
    press(Qt::Key_Return);
    EXPECT_TRUE(m_actions.isEmpty());
}

TEST_F(SearchResultsTest, SpaceChecksTheNodeAndTheCursorStays) {
    addTwoFiles();
    tree().expand(file(0));
    select(file(0));
    press(Qt::Key_Space);
    EXPECT_TRUE(isChecked(file(0)));
    EXPECT_FALSE(isChecked(match(0, 0)));
    EXPECT_EQ(tree().currentIndex(), file(0));
    press(Qt::Key_Space);
    EXPECT_FALSE(isChecked(file(0)));
    select(match(0, 1));
    press(Qt::Key_Space);
    EXPECT_TRUE(isChecked(match(0, 1)));
    EXPECT_EQ(tree().currentIndex(), match(0, 1));
}

TEST_F(SearchResultsTest, TypingSelectsTheNextFileOfThatName) {
    for (const char* path : {"/m/one.c", "/m/two.c", "/m/three.c", "/m/old.c"})
        m_results->AddItem(QLatin1String(path), 1, 0, 1, u"t"_qs);
    m_results->SetNodeText(u"/m/two.c"_qs, u"Find      1 't'  in '/m/two.c'"_qs);
    const int interval = QApplication::keyboardInputInterval();
    tree().setFocus();
    select(file(0));
    QApplication::setKeyboardInputInterval(1'000'000);
    QTest::keyClicks(&tree(), u"th"_qs);
    EXPECT_EQ(tree().currentIndex(), file(2));
    QApplication::setKeyboardInputInterval(0);  // after a pause a letter begins a name
    QTest::qWait(5);
    QTest::keyClick(&tree(), Qt::Key_T);
    EXPECT_EQ(tree().currentIndex(), file(1));
    QApplication::setKeyboardInputInterval(1'000'000);
    QTest::keyClick(&tree(), Qt::Key_T);  // a letter that is repeated
    EXPECT_EQ(tree().currentIndex(), file(2));
    QTest::keyClicks(&tree(), u"x"_qs);
    EXPECT_EQ(tree().currentIndex(), file(2));
    QApplication::setKeyboardInputInterval(interval);
}

TEST_F(SearchResultsTest, TypingInAMatchStartsAtItsFile) {
    for (const char* path : {"/m/one.c", "/m/two.c", "/m/other.c"})
        m_results->AddItem(QLatin1String(path), 1, 0, 1, u"t"_qs);
    tree().expandAll();
    select(match(0, 0));
    press(Qt::Key_O);
    EXPECT_EQ(tree().currentIndex(), file(2));
}

TEST_F(SearchResultsTest, RemovedRecordsAreReleasedByTheEventLoop) {
    for (int n = 0; n < 5000; ++n)
        m_results->AddItem(u"/%1"_qs.arg(n), 1, 0, 1, u"x"_qs);
    tree().expandAll();
    m_results->ClearTree();
    addTwoFiles();
    for (int turn = 0; turn < 10; ++turn)
        QCoreApplication::processEvents();
    EXPECT_EQ(model().rowCount(), 2);
    EXPECT_EQ(match(1, 1).data().toString(), u"  20 : two"_qs);
}

TEST_F(SearchResultsTest, ARowThatIsWiderThanTheViewCanBeScrolled) {
    m_results->AddItem(u"/a"_qs, 1, 0, 1, QString(400, u'x'));
    run("mnuExpandAllNodes");
    QCoreApplication::processEvents();
    EXPECT_GT(tree().columnWidth(0), tree().viewport()->width());
    tree().horizontalScrollBar()->setValue(200);
    select(match(0, 0));
    EXPECT_EQ(tree().horizontalScrollBar()->value(), 200);
    m_results->ClearTree();
    m_results->AddItem(u"/a"_qs, 1, 0, 1, u"x"_qs);
    QCoreApplication::processEvents();
    EXPECT_EQ(tree().columnWidth(0), tree().viewport()->width());
}

TEST_F(SearchResultsTest, AHandlerMayDestroyTheControl) {
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"double click", [this] { doubleClick(placeOf(match(0, 0))); }},
        {"enter", [this] { press(Qt::Key_Return); }},
        {"entry of the menu",
         [this] {
             click(placeOf(match(0, 0)), Qt::RightButton);
             menu().setActiveAction(menu().findChild<QAction*>(u"mnuOpenFile"_qs));
             QTest::keyClick(&menu(), Qt::Key_Return);
         }},
        {"open", [this] { run("mnuOpenFile"); }},
        {"bookmark", [this] { run("mnuBookLines"); }},
    };
    for (const auto& [name, act] : ways) {
        SCOPED_TRACE(name);
        if (!m_results) {
            m_results = std::make_unique<ucSearchResults>(m_prompts);
            SetUp();
        }
        addTwoFiles();
        tree().expand(file(0));
        select(match(0, 0));
        const QPointer<ucSearchResults> control(m_results.get());
        m_onAction = [this] { m_results.reset(); };
        act();
        EXPECT_TRUE(control.isNull());
        EXPECT_EQ(takeActions().size(), 1);
    }
}

TEST_F(SearchResultsTest, AWalkEndsWhenTheControlIsDestroyed) {
    addTwoFiles();
    select(file(0));
    m_onAction = [this] { m_results.reset(); };
    run("mnuBookLines");
    EXPECT_EQ(takeActions().size(), 1);

    m_results = std::make_unique<ucSearchResults>(m_prompts);
    SetUp();
    addTwoFiles();
    m_prompts.answerYes();
    run("mnuOpenAllFiles");
    EXPECT_EQ(takeActions().size(), 1);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(SearchResultsTest, TheControlMayBeDestroyedDuringAQuestion) {
    for (const char* key : {"mnuOpenAllFiles", "mnuClearAllNodes"}) {
        m_results = std::make_unique<ucSearchResults>(m_prompts);
        SetUp();
        addTwoFiles();
        m_prompts.answerYes();
        m_prompts.whileShown([this] { m_results.reset(); });
        run(key);
        EXPECT_TRUE(m_actions.isEmpty());
    }
}

TEST_F(SearchResultsTest, MoreThan32767NodesAreWalked) {
    constexpr int Many = 33'000;
    FileMatches matches;
    for (int line = 1; line <= Many; ++line) {
        matches.addLine(line, u"x"_qs);
        matches.addMatch({line, 1, 0, 0, 1});
    }
    m_results->addMatches(u"/many"_qs, matches);
    for (int n = 0; n < Many; ++n)
        m_results->AddItem(u"/%1"_qs.arg(n), 1, 0, 1, u"x"_qs);
    run("mnuExpandAllNodes");
    EXPECT_TRUE(tree().isExpanded(file(Many)));
    select(file(0));
    run("mnuBookLines");
    EXPECT_EQ(takeActions().size(), Many);
    m_prompts.answerYes();
    run("mnuOpenAllFiles");
    EXPECT_EQ(takeActions().size(), Many + 1);
    run("mnuCheckNodes");
    EXPECT_TRUE(isChecked(match(Many, 0)));
    m_results->AddItem(u"/last"_qs, 1, 0, 1, u"x"_qs);
    run("mnuRemoveSelectedNodes");
    ASSERT_EQ(model().rowCount(), 1);
    EXPECT_EQ(file(0).data().toString(), u"/last"_qs);
}

TEST_F(SearchResultsTest, RowsThatAreAddedToALargeTreeAppear) {
    FileMatches matches;
    matches.addLine(1, u"x"_qs);
    matches.addMatch({0, 1, 0, 0, 1});
    for (int n = 0; n < 20'000; ++n)
        m_results->addMatches(u"/%1"_qs.arg(n), matches);
    QCoreApplication::processEvents();
    m_results->addMatches(u"/last"_qs, matches);
    select(m_results->GetTreeNode(u"/last"_qs));  // looked up at once
    EXPECT_FALSE(tree().visualRect(file(20'000)).isEmpty());
    m_results->addMatches(u"/later"_qs, matches);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !tree().visualRect(file(20'001)).isNull(); }));
}

}  // namespace
