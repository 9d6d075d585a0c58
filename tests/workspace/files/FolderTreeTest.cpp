#include "support/ScriptedPrompts.h"
#include "workspace/files/FolderFixture.h"
#include "workspace/files/FolderTree.h"
#include "workspace/files/FolderTreeModel.h"
#include "workspace/files/FolderTreeView.h"
#include "workspace/files/SlowDisk.h"
#include "workspace/lists/FolderKey.h"

#include <QAbstractItemModelTester>
#include <QIcon>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

namespace {

class FolderTreeOf : public FolderFixture {
 protected:
    void TearDown() override { m_disk->release(); }

    FolderTreeModel& model() { return m_tree->model(); }
    /// The root of the test is a volume of its own.
    void makeRootAVolume() { m_disk->volumeList.volumes.append({root(), false}); }
    QModelIndex volume(const QString& key) { return model().child({}, key); }
    QModelIndex rootNode() { return volume(volumeKey(root(), false)); }
    QStringList texts(const QModelIndex& parent = {}) {
        QStringList result;
        for (int row = 0; row < model().rowCount(parent); ++row)
            result.append(model().index(row, 0, parent).data().toString());
        return result;
    }

    std::shared_ptr<SlowDisk> m_disk = std::make_shared<SlowDisk>();
    ScriptedPrompts m_prompts;
    FolderTreeView m_view;
    std::unique_ptr<FolderTree> m_tree = std::make_unique<FolderTree>(m_view, m_prompts, m_disk, nullptr);
};

TEST_F(FolderTreeOf, AVolumeHasItsKeyItsTextAndADummyUntilItIsOpened) {
    makeRootAVolume();
    m_tree->RefreshView();
    EXPECT_EQ(texts(), QStringList({u"Disk (/)"_qs, u"Disk (%1)"_qs.arg(root())}));
    EXPECT_EQ(model().index(0, 0).data(Qt::UserRole).toString(), u"DRIVE/"_qs);
    EXPECT_EQ(model().index(1, 0).data(Qt::UserRole).toString(), u"REMOVABLE"_qs + root());
    EXPECT_EQ(texts(rootNode()), QStringList(u".."_qs));
    EXPECT_EQ(rootNode().data(Qt::UserRole + 1).toString(), QString());
    EXPECT_FALSE(rootNode().data(Qt::DecorationRole).value<QIcon>().isNull());
}

TEST_F(FolderTreeOf, AVolumeThatIsNotThereIsShownWithoutLabelAndChildren) {
    m_disk->volumeList.volumes.append({u"/no/such/volume"_qs, false});
    m_tree->RefreshView();
    EXPECT_EQ(texts(), QStringList({u"Disk (/)"_qs, u"(/no/such/volume)"_qs}));
    EXPECT_FALSE(model().hasChildren(model().index(1, 0)));
}

TEST_F(FolderTreeOf, AFileWithSomethingMountedOverItIsNotShown) {
    m_disk->volumeList.volumes.append({makeFile(u"file"_qs), true});
    m_tree->RefreshView();
    EXPECT_EQ(texts(), QStringList(u"Disk (/)"_qs));
}

TEST_F(FolderTreeOf, AVolumeThatDoesNotAnswerIsNotReadyUntilItDoes) {
    makeRootAVolume();
    m_disk->hold(root());
    m_tree->RefreshView();
    EXPECT_EQ(texts(), QStringList({u"Disk (/)"_qs, u"(%1)"_qs.arg(root())}));
    EXPECT_FALSE(model().hasChildren(rootNode()));
    m_tree->RefreshView();
    EXPECT_EQ(texts().size(), 2);
    QSignalSpy changed(&model(), &FolderTreeModel::dataChanged);
    m_disk->release();
    ASSERT_TRUE(changed.wait());
    EXPECT_EQ(texts(), QStringList({u"Disk (/)"_qs, u"Disk (%1)"_qs.arg(root())}));
    EXPECT_TRUE(model().hasChildren(rootNode()));
}

TEST_F(FolderTreeOf, ManyVolumesAreAskedAtOnceAndListedInOrder) {
    QStringList expected{u"Disk (/)"_qs};
    for (int n = 1; n <= 8; ++n) {
        m_disk->volumeList.volumes.append({makeFolder(QString::number(n)), false});
        expected.append(u"Disk (%1)"_qs.arg(in(QString::number(n))));
    }
    m_tree->RefreshView();
    EXPECT_EQ(texts(), expected);
    m_tree->RefreshView();
    EXPECT_EQ(texts(), expected);
}

TEST_F(FolderTreeOf, ATableOfMountsThatCannotBeReadIsTold) {
    m_disk->volumeList = {{5, u"Input/output error"_qs}, {}};
    m_tree->RefreshView();
    EXPECT_EQ(m_prompts.messages, QStringList(u"RefreshView : Input/output error"_qs));
}

TEST_F(FolderTreeOf, OpeningANodeReadsItsFoldersEachWithADummy) {
    makeRootAVolume();
    makeFolder(u"b"_qs);
    makeFolder(u"A"_qs);
    makeFile(u"file"_qs);
    m_tree->RefreshView();
    m_view.expand(rootNode());
    EXPECT_EQ(texts(rootNode()), QStringList({u"A"_qs, u"b"_qs}));
    EXPECT_EQ(rootNode().data(Qt::UserRole + 1).toString(), u"1"_qs);
    const QModelIndex folder = model().index(1, 0, rootNode());
    EXPECT_EQ(folder.data(Qt::UserRole).toString(), u"FOLDER"_qs + in(u"b"_qs));
    EXPECT_EQ(texts(folder), QStringList(u".."_qs));
}

TEST_F(FolderTreeOf, AFolderWithoutFoldersLosesItsMarkWhenItIsOpened) {
    makeRootAVolume();
    m_tree->RefreshView();
    m_view.expand(rootNode());
    EXPECT_FALSE(model().hasChildren(rootNode()));
    EXPECT_EQ(rootNode().data(Qt::UserRole + 1).toString(), u"1"_qs);
}

TEST_F(FolderTreeOf, ANodeIsReadOnceUntilTheViewIsRefreshed) {
    makeRootAVolume();
    makeFolder(u"a"_qs);
    m_tree->RefreshView();
    m_view.expand(rootNode());
    makeFolder(u"b"_qs);
    m_view.collapse(rootNode());
    m_view.expand(rootNode());
    EXPECT_EQ(texts(rootNode()), QStringList(u"a"_qs));
    m_tree->RefreshView();
    m_view.expand(rootNode());
    EXPECT_EQ(texts(rootNode()), QStringList({u"a"_qs, u"b"_qs}));
}

TEST_F(FolderTreeOf, AVolumeThatHasGoneSaysSoAndLosesItsChildren) {
    const QString stick = makeFolder(u"stick"_qs);
    m_disk->volumeList.volumes.append({stick, false});
    m_tree->RefreshView();
    const QModelIndex node = volume(volumeKey(stick, false));
    ASSERT_TRUE(QDir().rmdir(stick));
    m_view.expand(node);
    EXPECT_EQ(m_prompts.stops, QStringList(u"Drive is not ready"_qs));
    EXPECT_EQ(m_prompts.messages, m_prompts.stops);
    EXPECT_EQ(m_prompts.titles, QStringList(u"Tesmo Explorer"_qs));
    EXPECT_FALSE(model().hasChildren(node));
}

TEST_F(FolderTreeOf, AFolderThatHasGoneIsOpenedWithoutAWord) {
    makeRootAVolume();
    makeFolder(u"a"_qs);
    m_tree->RefreshView();
    m_view.expand(rootNode());
    ASSERT_TRUE(QDir().rmdir(in(u"a"_qs)));
    const QModelIndex node = model().index(0, 0, rootNode());
    m_view.expand(node);
    EXPECT_FALSE(model().hasChildren(node));
    EXPECT_EQ(m_prompts.messages, QStringList());
}

TEST_F(FolderTreeOf, APathIsWalkedFromTheLongestVolumeThatContainsIt) {
    makeRootAVolume();
    makeFolder(u"a/b"_qs);
    m_tree->RefreshView();
    EXPECT_TRUE(m_tree->GotoPath(u"FOLDER"_qs + in(u"a/b"_qs)));
    EXPECT_EQ(m_tree->selectedKey(), u"FOLDER"_qs + in(u"a/b"_qs));
    EXPECT_EQ(m_tree->selected().parent().parent(), rootNode());
    EXPECT_TRUE(m_view.isExpanded(rootNode()));
    EXPECT_TRUE(m_view.isExpanded(m_tree->selected().parent()));
}

TEST_F(FolderTreeOf, WithoutAVolumeOfItsOwnAPathStartsAtTheRoot) {
    makeFolder(u"a"_qs);
    EXPECT_TRUE(m_tree->GotoPath(u"FOLDER"_qs + in(u"a"_qs)));
    EXPECT_EQ(m_tree->selectedKey(), u"FOLDER"_qs + in(u"a"_qs));
}

TEST_F(FolderTreeOf, KeysOfVolumesAndEndsOfPathsAreUnderstood) {
    makeRootAVolume();
    makeFolder(u"a"_qs);
    EXPECT_TRUE(m_tree->GotoPath(u"DRIVE/"_qs));
    EXPECT_EQ(m_tree->selectedKey(), u"DRIVE/"_qs);
    EXPECT_TRUE(m_tree->GotoPath(u"FOLDER/"_qs));
    EXPECT_EQ(m_tree->selectedKey(), u"DRIVE/"_qs);
    EXPECT_TRUE(m_tree->GotoPath(u"DRIVE"_qs + root()));
    EXPECT_EQ(m_tree->selectedKey(), u"REMOVABLE"_qs + root());
    EXPECT_TRUE(m_tree->GotoPath(u"FOLDER"_qs + root() + u"//a/"_qs));
    EXPECT_EQ(m_tree->selectedKey(), u"FOLDER"_qs + in(u"a"_qs));
}

TEST_F(FolderTreeOf, TheWalkEndsAtTheLastFolderThatIsThere) {
    makeRootAVolume();
    makeFolder(u"a"_qs);
    EXPECT_TRUE(m_tree->GotoPath(u"FOLDER"_qs + in(u"a/gone/further"_qs)));
    EXPECT_EQ(m_tree->selectedKey(), u"FOLDER"_qs + in(u"a"_qs));
    EXPECT_TRUE(m_tree->GotoPath(u"FOLDER"_qs + root() + u"/../x"_qs));
    EXPECT_EQ(m_tree->selectedKey(), u"REMOVABLE"_qs + root());
    EXPECT_EQ(m_prompts.messages, QStringList());
}

TEST_F(FolderTreeOf, LetterCaseOfAPathCounts) {
    makeRootAVolume();
    makeFolder(u"a"_qs);
    EXPECT_TRUE(m_tree->GotoPath(u"FOLDER"_qs + in(u"A"_qs)));
    EXPECT_EQ(m_tree->selectedKey(), u"REMOVABLE"_qs + root());
}

TEST_F(FolderTreeOf, TheNameOfADeepFolderIsScrolledIntoTheView) {
    makeRootAVolume();
    const QString deep = QStringList(20, u"in"_qs).join(u'/') + u"/the deepest"_qs;
    makeFolder(deep);
    m_view.resize(200, 300);
    m_view.show();
    const auto isNameInView = [&](const QModelIndex& index) {
        const QRect row = m_view.visualRect(index);
        const int end = row.left() + m_view.sizeHintForIndex(index).width();
        return row.left() >= 0 && end <= m_view.viewport()->width() &&
               m_view.viewport()->rect().contains(0, row.center().y());
    };
    ASSERT_TRUE(m_tree->GotoPath(u"FOLDER"_qs + in(deep)));
    EXPECT_TRUE(isNameInView(m_tree->selected()));
    QCoreApplication::processEvents();
    EXPECT_TRUE(isNameInView(m_tree->selected()));
    EXPECT_TRUE(m_view.horizontalScrollBar()->isVisible());
    QTest::keyClick(&m_view, Qt::Key_Up);
    EXPECT_TRUE(isNameInView(m_tree->selected()));
    QTest::keyClick(&m_view, Qt::Key_Home);
    EXPECT_EQ(m_view.horizontalScrollBar()->value(), 0);
    EXPECT_GE(m_view.visualRect(m_tree->selected()).left(), 0);
}

TEST_F(FolderTreeOf, ANameThatIsWiderThanTheViewIsShownFromItsStart) {
    makeRootAVolume();
    const QString name(200, u'w');
    makeFolder(u"a/"_qs + name);
    m_view.resize(200, 300);
    m_view.show();
    ASSERT_TRUE(m_tree->GotoPath(u"FOLDER"_qs + in(u"a/"_qs + name)));
    QCoreApplication::processEvents();
    const QRect row = m_view.visualRect(m_tree->selected());
    EXPECT_GE(row.left(), 0);
    EXPECT_LT(row.left(), m_view.viewport()->width() / 2);
    EXPECT_GE(row.width(), m_view.sizeHintForIndex(m_tree->selected()).width());
}

TEST_F(FolderTreeOf, RowsOfShortNamesReachToTheEdgeOfTheView) {
    m_disk->volumeList.volumes = {{u"/"_qs, true}};
    m_view.resize(400, 300);
    m_view.show();
    m_tree->RefreshView();
    for (const int width : {400, 250, 500}) {
        m_view.resize(width, 300);
        QCoreApplication::processEvents();
        const int middle = m_view.visualRect(model().index(0, 0)).center().y();
        EXPECT_TRUE(m_view.indexAt({m_view.viewport()->width() - 1, middle}).isValid()) << width;
        EXPECT_EQ(m_view.horizontalScrollBar()->maximum(), 0) << width;
    }
}

TEST_F(FolderTreeOf, AKeyWhoseVolumeIsNotThereIsTold) {
    m_tree->RefreshView();
    EXPECT_FALSE(m_tree->GotoPath(u"REMOVABLE/media/u/STICK"_qs));
    EXPECT_FALSE(m_tree->GotoPath(u"FOLDERrelative"_qs));
    EXPECT_FALSE(m_tree->GotoPath({}));
    EXPECT_EQ(m_prompts.messages,
              QStringList({u"'/media/u/STICK' not found !"_qs, u"'relative' not found !"_qs, u"'' not found !"_qs}));
}

TEST_F(FolderTreeOf, PercentSignsInAPathAreNoPlaces) {
    m_disk->volumeList.volumes = {};
    EXPECT_FALSE(m_tree->GotoPath(u"FOLDER/a%1b"_qs));
    EXPECT_EQ(m_prompts.messages, QStringList(u"'/a%1b' not found !"_qs));
}

TEST_F(FolderTreeOf, AMountPointIsNotTheStartOfAnotherName) {
    const QString stick = makeFolder(u"stick"_qs);
    makeFolder(u"stick2"_qs);
    m_disk->volumeList.volumes.append({stick, false});
    EXPECT_TRUE(m_tree->GotoPath(u"FOLDER"_qs + in(u"stick2"_qs)));
    EXPECT_EQ(m_tree->selectedKey(), u"FOLDER"_qs + in(u"stick2"_qs));
}

TEST_F(FolderTreeOf, LinksInACircleAreWalkedAsFarAsThePathGoes) {
    makeRootAVolume();
    makeFolder(u"a"_qs);
    makeLink(u"a/up"_qs, root());
    EXPECT_TRUE(m_tree->GotoPath(u"FOLDER"_qs + in(u"a/up/a/up/a"_qs)));
    EXPECT_EQ(m_tree->selectedKey(), u"FOLDER"_qs + in(u"a/up/a/up/a"_qs));
}

TEST_F(FolderTreeOf, AFolderStandsAloneAtTheRootWithItsFolders) {
    makeRootAVolume();
    makeFolder(u"a/b"_qs);
    m_tree->GotoPath(u"FOLDER"_qs + in(u"a"_qs));
    EXPECT_TRUE(m_tree->setAsRoot());
    EXPECT_EQ(texts(), QStringList(u"a"_qs));
    EXPECT_EQ(m_tree->selectedKey(), u"FOLDER"_qs + in(u"a"_qs));
    EXPECT_EQ(texts(m_tree->selected()), QStringList(u"b"_qs));
    EXPECT_FALSE(m_tree->GotoPath(u"FOLDER"_qs + in(u"a/b"_qs)));
    m_tree->RefreshView();
    EXPECT_EQ(texts().size(), 2);
}

TEST_F(FolderTreeOf, WithoutASelectionThereIsNoNewRoot) {
    m_tree->RefreshView();
    EXPECT_FALSE(m_tree->setAsRoot());
    EXPECT_EQ(texts(), QStringList(u"Disk (/)"_qs));
}

TEST_F(FolderTreeOf, AVolumeThatHasGoneIsNoRoot) {
    const QString stick = makeFolder(u"stick"_qs);
    m_disk->volumeList.volumes.append({stick, false});
    m_tree->RefreshView();
    m_view.setCurrentIndex(volume(volumeKey(stick, false)));
    ASSERT_TRUE(QDir().rmdir(stick));
    EXPECT_FALSE(m_tree->setAsRoot());
    EXPECT_EQ(m_prompts.stops, QStringList(u"Drive is not ready"_qs));
    EXPECT_EQ(m_prompts.messages, m_prompts.stops);
    EXPECT_EQ(texts().size(), 2);
}

TEST_F(FolderTreeOf, WhileAFolderDoesNotAnswerTheWindowLives) {
    makeRootAVolume();
    makeFolder(u"slow/below"_qs);
    m_tree->GotoPath(u"FOLDER"_qs + root());
    m_disk->hold(in(u"slow"_qs));
    bool isAlive = false;
    QTimer::singleShot(0, [&] {
        isAlive = true;
        m_disk->release();
    });
    const QModelIndex slow = model().index(0, 0, rootNode());
    m_view.expand(slow);
    EXPECT_TRUE(isAlive);
    EXPECT_EQ(texts(slow), QStringList(u"below"_qs));
}

TEST_F(FolderTreeOf, AFolderThatNeverAnswersIsNotReadyAndCanBeTriedAgain) {
    makeRootAVolume();
    makeFolder(u"slow/below"_qs);
    m_tree->GotoPath(u"FOLDER"_qs + root());
    m_disk->hold(in(u"slow"_qs));
    const QModelIndex slow = model().index(0, 0, rootNode());
    m_view.expand(slow);
    EXPECT_EQ(m_prompts.stops, QStringList(u"Drive is not ready"_qs));
    EXPECT_EQ(m_prompts.messages, m_prompts.stops);
    EXPECT_EQ(texts(slow), QStringList(u".."_qs));
    EXPECT_FALSE(m_view.isExpanded(slow));
    m_disk->release();
    m_view.expand(slow);
    EXPECT_EQ(texts(slow), QStringList(u"below"_qs));
}

TEST_F(FolderTreeOf, TheTreeMayBeRefreshedWhileAFolderIsRead) {
    makeRootAVolume();
    makeFolder(u"slow"_qs);
    m_tree->GotoPath(u"FOLDER"_qs + root());
    m_disk->hold(in(u"slow"_qs));
    QTimer::singleShot(0, [&] {
        m_tree->RefreshView();
        m_disk->release();
    });
    m_view.expand(model().index(0, 0, rootNode()));
    EXPECT_EQ(texts().size(), 2);
}

TEST_F(FolderTreeOf, TheTreeMayBeDestroyedWhileAFolderIsRead) {
    makeRootAVolume();
    makeFolder(u"slow"_qs);
    m_tree->GotoPath(u"FOLDER"_qs + root());
    m_disk->hold(in(u"slow"_qs));
    const QPersistentModelIndex slow = model().index(0, 0, rootNode());
    QTimer::singleShot(0, [&] { m_tree.reset(); });
    EXPECT_FALSE(m_tree->readFolders(slow));
    EXPECT_EQ(m_tree, nullptr);
}

TEST_F(FolderTreeOf, ItsModelKeepsTheRulesOfModels) {
    const QAbstractItemModelTester tester(&model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    makeRootAVolume();
    makeFolder(u"a/b"_qs);
    m_tree->GotoPath(u"FOLDER"_qs + in(u"a/b"_qs));
    m_tree->setAsRoot();
    m_tree->RefreshView();
    EXPECT_EQ(texts().size(), 2);
}

class FolderTreeClicks : public FolderTreeOf {
 protected:
    void SetUp() override {
        makeRootAVolume();
        m_tree->RefreshView();
        m_view.resize(300, 200);
        m_view.show();
    }
    void click(const QModelIndex& index, Qt::MouseButton button) {
        QTest::mouseClick(m_view.viewport(), button, {}, m_view.visualRect(index).center());
    }

    QSignalSpy m_clicked{&m_view, &FolderTreeView::nodeClicked};
};

TEST_F(FolderTreeClicks, ALeftClickIsReportedOnceEvenOnTheCurrentNode) {
    click(rootNode(), Qt::LeftButton);
    EXPECT_EQ(m_clicked.count(), 1);
    click(rootNode(), Qt::LeftButton);
    EXPECT_EQ(m_clicked.count(), 2);
}

TEST_F(FolderTreeClicks, ARightPressSelectsWithoutAReport) {
    click(rootNode(), Qt::RightButton);
    EXPECT_EQ(m_view.currentIndex(), rootNode());
    EXPECT_EQ(m_clicked.count(), 0);
}

TEST_F(FolderTreeClicks, AKeyIsReportedEvenAfterARightPress) {
    click(model().index(0, 0), Qt::RightButton);
    QTest::keyClick(&m_view, Qt::Key_Down);
    EXPECT_EQ(m_view.currentIndex(), rootNode());
    EXPECT_EQ(m_clicked.count(), 1);
}

}  // namespace
