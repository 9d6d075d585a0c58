#include "workspace/files/FileListModel.h"
#include "workspace/files/FolderFixture.h"
#include "workspace/files/SlowDisk.h"

#include <QAbstractItemModelTester>
#include <QIcon>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>

#include <ctime>
#include <memory>

namespace {

class FileListOf : public FolderFixture {
 protected:
    void TearDown() override { m_disk->release(); }

    QStringList column(int number = FileListModel::NameColumn) const {
        QStringList texts;
        for (int row = 0; row < m_model.rowCount(); ++row)
            texts.append(m_model.index(row, number).data().toString());
        return texts;
    }
    /// Three files whose order by time is another than that by name.
    void makeTimedFiles() const {
        makeFile(u"a"_qs);
        makeFile(u"b"_qs);
        makeFile(u"c"_qs);
        setWritten(u"a"_qs, 3'000'000);
        setWritten(u"b"_qs, 1'000'000);
        setWritten(u"c"_qs, 2'000'000);
    }

    std::shared_ptr<SlowDisk> m_disk = std::make_shared<SlowDisk>();
    FileListModel m_model{m_disk};
    QAbstractItemModelTester m_tester{&m_model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(FileListOf, ARowHasNamePathAndToolTip) {
    makeFile(u"b.txt"_qs);
    makeFile(u"a.txt"_qs);
    m_model.load(root(), {});
    EXPECT_EQ(column(), QStringList({u"a.txt"_qs, u"b.txt"_qs}));
    const QModelIndex row = m_model.index(1, 0);
    EXPECT_EQ(row.data(Qt::UserRole).toString(), in(u"b.txt"_qs));
    EXPECT_EQ(row.data(Qt::ToolTipRole).toString(), in(u"b.txt"_qs));
    EXPECT_FALSE(row.data(Qt::DecorationRole).value<QIcon>().isNull());
}

TEST_F(FileListOf, PathsInTheRootHaveOneSlash) {
    m_model.load(u"/"_qs, {});
    for (int row = 0; row < m_model.rowCount(); ++row) {
        EXPECT_EQ(m_model.pathOf(row), u'/' + column().at(row));
    }
    EXPECT_EQ(m_model.pathOf(-1), QString());
    EXPECT_EQ(m_model.pathOf(m_model.rowCount()), QString());
}

TEST_F(FileListOf, WithoutModifiedThereIsOneColumn) {
    EXPECT_EQ(m_model.columnCount(), 1);
    EXPECT_EQ(m_model.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), u"Filename"_qs);
    EXPECT_FALSE(m_model.headerData(1, Qt::Horizontal, Qt::DisplayRole).isValid());
}

TEST_F(FileListOf, ModifiedIsADateColumnWithTheTimeOfTheLastWrite) {
    makeFile(u"a"_qs);
    tm local{};
    local.tm_year = 124;
    local.tm_mon = 2;
    local.tm_mday = 5;
    local.tm_hour = 14;
    local.tm_min = 7;
    local.tm_sec = 9;
    local.tm_isdst = -1;
    setWritten(u"a"_qs, std::mktime(&local));
    m_model.setModifiedShown(true);
    m_model.load(root(), {});
    EXPECT_EQ(m_model.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), u"Modified"_qs);
    EXPECT_EQ(m_model.headerData(1, Qt::Horizontal, Qt::UserRole + 1).toInt(), 2);
    EXPECT_EQ(column(1), QStringList(u"2024/03/05 14:07:09"_qs));
}

TEST_F(FileListOf, AFileThatHasGoneKeepsItsRowWithTheTimeOfNone) {
    makeFile(u"a"_qs);
    m_model.setModifiedShown(true);
    m_model.load(root(), {});
    ASSERT_TRUE(QFile::remove(in(u"a"_qs)));
    EXPECT_EQ(column(1), QStringList(u"1601/01/01 00:00:00"_qs));
}

TEST_F(FileListOf, AFilterThatMatchesNothingGivesAnEmptyList) {
    makeFile(u"a"_qs);
    m_model.load(root(), u"*.c"_qs);
    EXPECT_EQ(m_model.rowCount(), 0);
}

TEST_F(FileListOf, AFolderThatCannotBeReadGivesAnEmptyList) {
    makeFile(u"a"_qs);
    m_model.load(root(), {});
    m_model.load(in(u"nothing"_qs), {});
    EXPECT_EQ(m_model.rowCount(), 0);
    EXPECT_FALSE(m_model.isLoading());
}

TEST_F(FileListOf, SortingByDateReadsTheTimesAndTurnsRound) {
    makeTimedFiles();
    m_model.setModifiedShown(true);
    m_model.load(root(), {});
    m_model.sort(FileListModel::ModifiedColumn, Qt::AscendingOrder);
    EXPECT_EQ(column(), QStringList({u"b"_qs, u"c"_qs, u"a"_qs}));
    m_model.sort(FileListModel::ModifiedColumn, Qt::DescendingOrder);
    EXPECT_EQ(column(), QStringList({u"a"_qs, u"c"_qs, u"b"_qs}));
    m_model.sort(FileListModel::NameColumn, Qt::DescendingOrder);
    EXPECT_EQ(column(), QStringList({u"c"_qs, u"b"_qs, u"a"_qs}));
}

TEST_F(FileListOf, FilesThatHaveGoneComeFirstByDate) {
    makeTimedFiles();
    m_model.setModifiedShown(true);
    m_model.load(root(), {});
    ASSERT_TRUE(QFile::remove(in(u"a"_qs)));
    m_model.sort(FileListModel::ModifiedColumn, Qt::AscendingOrder);
    EXPECT_EQ(column(), QStringList({u"a"_qs, u"b"_qs, u"c"_qs}));
}

TEST_F(FileListOf, TheOrderStaysForTheNextFolder) {
    makeTimedFiles();
    m_model.setModifiedShown(true);
    m_model.sort(FileListModel::ModifiedColumn, Qt::AscendingOrder);
    m_model.load(root(), {});
    EXPECT_EQ(column(), QStringList({u"b"_qs, u"c"_qs, u"a"_qs}));
}

TEST_F(FileListOf, WithoutModifiedItIsSortedByNameAgain) {
    makeTimedFiles();
    m_model.setModifiedShown(true);
    m_model.load(root(), {});
    m_model.sort(FileListModel::ModifiedColumn, Qt::AscendingOrder);
    m_model.setModifiedShown(false);
    EXPECT_EQ(column(), QStringList({u"a"_qs, u"b"_qs, u"c"_qs}));
}

TEST_F(FileListOf, SortedRowsKeepWhoHoldsThem) {
    makeTimedFiles();
    m_model.setModifiedShown(true);
    m_model.load(root(), {});
    const QPersistentModelIndex held(m_model.index(0, 0));
    m_model.sort(FileListModel::ModifiedColumn, Qt::AscendingOrder);
    EXPECT_EQ(held.row(), 2);
    EXPECT_EQ(held.data().toString(), u"a"_qs);
}

TEST_F(FileListOf, DeletedFilesAreTakenOutTogether) {
    for (const char* name : {"a", "b", "c", "d", "e", "f"})
        makeFile(QString::fromLatin1(name));
    m_model.load(root(), {});
    const QPersistentModelIndex held(m_model.index(4, 0));
    const QSignalSpy removals(&m_model, &FileListModel::rowsRemoved);
    m_model.removeFiles({in(u"f"_qs), in(u"a"_qs), in(u"b"_qs), in(u"d"_qs), u"/elsewhere/c"_qs});
    EXPECT_EQ(column(), QStringList({u"c"_qs, u"e"_qs}));
    EXPECT_EQ(removals.count(), 1);
    EXPECT_EQ(held.row(), 1);
    EXPECT_EQ(held.data().toString(), u"e"_qs);
    m_model.removeFiles({in(u"c"_qs), in(u"e"_qs)});
    EXPECT_EQ(column(), QStringList());
    m_model.removeFiles({in(u"c"_qs)});
}

TEST_F(FileListOf, IconsAreThoseOfTheTypesWhereThatIsWanted) {
    makeFile(u"a.png"_qs);
    makeFile(u"b.txt"_qs);
    m_model.load(root(), {});
    const auto pictureOf = [&](int row) {
        return m_model.index(row, 0).data(Qt::DecorationRole).value<QIcon>().pixmap(16, 16).toImage();
    };
    EXPECT_EQ(pictureOf(0), pictureOf(1));
    m_model.setSystemIcons(true);
    EXPECT_NE(pictureOf(0), pictureOf(1));
}

TEST_F(FileListOf, TimesOfRowsThatNobodySeesAreNotRead) {
    for (int n = 0; n < 200; ++n)
        makeFile(QString::number(n));
    m_model.setModifiedShown(true);
    m_model.load(root(), {});
    EXPECT_EQ(m_disk->timesRead(), 0);
    EXPECT_FALSE(m_model.index(0, 1).data().toString().isEmpty());
    EXPECT_FALSE(m_model.index(1, 1).data().toString().isEmpty());
    EXPECT_LT(m_disk->timesRead(), 64);
}

TEST_F(FileListOf, RowsAreDraggedAsAddresses) {
    makeFile(u"a b"_qs);
    makeFile(u"c#"_qs);
    m_model.setModifiedShown(true);
    m_model.load(root(), {});
    const std::unique_ptr<QMimeData> data(
        m_model.mimeData({m_model.index(0, 0), m_model.index(0, 1), m_model.index(1, 0)}));
    EXPECT_TRUE(data->hasFormat(u"text/uri-list"_qs));
    EXPECT_EQ(data->urls(), QList<QUrl>({QUrl::fromLocalFile(in(u"a b"_qs)), QUrl::fromLocalFile(in(u"c#"_qs))}));
    EXPECT_EQ(m_model.supportedDragActions(), Qt::CopyAction);
    EXPECT_TRUE(m_model.index(0, 0).flags().testFlag(Qt::ItemIsDragEnabled));
}

TEST_F(FileListOf, AFolderThatDoesNotAnswerIsShownWhenItDoes) {
    makeFile(u"a"_qs);
    m_disk->hold(root());
    QSignalSpy loaded(&m_model, &FileListModel::loaded);
    m_model.load(root(), {});
    EXPECT_TRUE(m_model.isLoading());
    EXPECT_EQ(m_model.rowCount(), 0);
    m_disk->release();
    ASSERT_TRUE(loaded.wait());
    EXPECT_EQ(column(), QStringList(u"a"_qs));
    EXPECT_FALSE(m_model.isLoading());
}

TEST_F(FileListOf, TheAnswerOfAFolderThatWasLeftIsDropped) {
    makeFolder(u"slow"_qs);
    makeFile(u"slow/late"_qs);
    makeFile(u"a"_qs);
    m_disk->hold(in(u"slow"_qs));
    m_model.load(in(u"slow"_qs), {});
    m_model.load(root(), {});
    m_disk->release();
    QTest::qWait(50);
    EXPECT_EQ(column(), QStringList(u"a"_qs));
}

TEST_F(FileListOf, TimesThatDoNotArriveAreLeftEmptyAndAskedForOnce) {
    makeTimedFiles();
    m_model.setModifiedShown(true);
    m_model.load(root(), {});
    m_disk->hold(root());
    EXPECT_EQ(column(1), QStringList({QString(), QString(), QString()}));
    m_disk->release();
}

TEST_F(FileListOf, AnOrderByDateComesIntoForceWhenTheTimesHaveArrived) {
    makeTimedFiles();
    m_model.setModifiedShown(true);
    m_model.load(root(), {});
    m_disk->hold(root());
    m_model.sort(FileListModel::ModifiedColumn, Qt::AscendingOrder);
    EXPECT_EQ(column(), QStringList({u"a"_qs, u"b"_qs, u"c"_qs}));
    QSignalSpy changed(&m_model, &FileListModel::layoutChanged);
    m_disk->release();
    ASSERT_TRUE(changed.wait());
    EXPECT_EQ(column(), QStringList({u"b"_qs, u"c"_qs, u"a"_qs}));
}

TEST_F(FileListOf, ItMayBeDestroyedWhileAFolderDoesNotAnswer) {
    m_disk->hold(root());
    auto model = std::make_unique<FileListModel>(m_disk);
    model->load(root(), {});
    model.reset();
    m_disk->release();
    QTest::qWait(20);
    SUCCEED();
}

}  // namespace
