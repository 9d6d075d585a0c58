#include "search/results/SearchResultsModel.h"

#include <QAbstractItemModelTester>
#include <QFont>
#include <QIcon>
#include <QPersistentModelIndex>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

/// One match in a line of its own.
FileMatches oneMatch(qint64 line, const QString& text, FileMatches::Match match = {}) {
    FileMatches matches;
    matches.addLine(line, text);
    matches.addMatch(match);
    return matches;
}

/// Matches in the lines from 1.
FileMatches manyMatches(int count) {
    FileMatches matches;
    for (int line = 1; line <= count; ++line) {
        matches.addLine(line, u"x"_qs);
        matches.addMatch({line * 10, 1, 0, 0, 1});
    }
    return matches;
}

class SearchResultsModelTest : public testing::Test {
 protected:
    QModelIndex file(int row) const { return m_model.index(row, 0); }
    QModelIndex match(int fileRow, int row) const { return m_model.index(row, 0, file(fileRow)); }
    void check(const QModelIndex& index) { m_model.setData(index, Qt::Checked, Qt::CheckStateRole); }
    static bool isChecked(const QModelIndex& index) { return index.data(Qt::CheckStateRole).toInt() == Qt::Checked; }
    static QString tag(const QModelIndex& index) { return index.data(SearchResultsModel::Tag).toString(); }
    /// Keys of the files, and behind each of them the tags of its matches.
    QString all() const {
        QStringList files;
        for (int row = 0; row < m_model.rowCount(); ++row) {
            QStringList parts(file(row).data(SearchResultsModel::Key).toString());
            for (int below = 0; below < m_model.rowCount(file(row)); ++below)
                parts.append(tag(match(row, below)));
            files.append(parts.join(u' '));
        }
        return files.join(u';');
    }
    QString mark(const QModelIndex& index) const {
        return index.data().toString().mid(index.data(SearchResultsModel::MarkStart).toInt(),
                                           index.data(SearchResultsModel::MarkLength).toInt());
    }
    /// Three files with three matches each.
    void addThreeFiles() {
        for (const char* name : {"/a", "/b", "/c"})
            m_model.addMatches(QLatin1String(name), manyMatches(3));
    }

    SearchResultsModel m_model;
    QAbstractItemModelTester m_tester{&m_model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(SearchResultsModelTest, AFileHasKeyTextImageAndBoldLetters) {
    m_model.addMatches(u"/src/a.c"_qs, oneMatch(1, u"x"_qs));
    EXPECT_EQ(file(0).data().toString(), u"/src/a.c"_qs);
    EXPECT_EQ(file(0).data(Qt::UserRole).toString(), u"/src/a.c"_qs);
    EXPECT_EQ(file(0).data(Qt::ToolTipRole).toString(), u"/src/a.c"_qs);
    EXPECT_FALSE(file(0).data(Qt::UserRole + 1).isValid());
    EXPECT_EQ(file(0).data(SearchResultsModel::Image).toInt(), 1);
    EXPECT_TRUE(file(0).data(Qt::FontRole).value<QFont>().bold());
    EXPECT_FALSE(file(0).data(Qt::DecorationRole).value<QIcon>().isNull());
    EXPECT_TRUE(SearchResultsModel::isFile(file(0)));
    EXPECT_FALSE(SearchResultsModel::isMatch(file(0)));
    EXPECT_TRUE(m_model.hasChildren(file(0)));
}

TEST_F(SearchResultsModelTest, AMatchHasTagTextAndImageAndNoKey) {
    m_model.addMatches(u"/src/a.c"_qs, oneMatch(12, u"\tint x;"_qs, {345, 6, 0, 5, 1}));
    const QModelIndex found = match(0, 0);
    EXPECT_EQ(found.data().toString(), u"  12 : \tint x;"_qs);
    EXPECT_EQ(found.data(Qt::UserRole + 1).toString(), u"12,345,6"_qs);
    EXPECT_FALSE(found.data(Qt::UserRole).isValid());
    EXPECT_FALSE(found.data(Qt::FontRole).isValid());
    EXPECT_EQ(found.data(SearchResultsModel::Image).toInt(), 2);
    EXPECT_FALSE(found.data(Qt::DecorationRole).value<QIcon>().isNull());
    EXPECT_TRUE(SearchResultsModel::isMatch(found));
    EXPECT_FALSE(SearchResultsModel::isFile(found));
    EXPECT_FALSE(m_model.hasChildren(found));
    EXPECT_EQ(found.parent(), file(0));
}

TEST_F(SearchResultsModelTest, ALineNumberIsCutToFourColumnsAndTheTagKeepsIt) {
    for (const qint64 line : {7, 1234, 12345, 2000000000})
        m_model.addMatches(u"/a"_qs, oneMatch(line, u"x"_qs));
    EXPECT_EQ(match(0, 0).data().toString(), u"   7 : x"_qs);
    EXPECT_EQ(match(0, 1).data().toString(), u"1234 : x"_qs);
    EXPECT_EQ(match(0, 2).data().toString(), u"2345 : x"_qs);
    EXPECT_EQ(match(0, 3).data().toString(), u"0000 : x"_qs);
    EXPECT_EQ(tag(match(0, 2)), u"12345,0,0"_qs);
    EXPECT_EQ(tag(match(0, 3)), u"2000000000,0,0"_qs);
}

TEST_F(SearchResultsModelTest, TwoPassesAddToOneFileAndTheLastTextStays) {
    m_model.addMatches(u"/a"_qs, oneMatch(1, u"x"_qs, {1, 1, 0, 0, 1}));
    m_model.setText(u"/a"_qs, u"first"_qs);
    m_model.addMatches(u"/b"_qs, oneMatch(1, u"x"_qs, {2, 1, 0, 0, 1}));
    m_model.addMatches(u"/a"_qs, oneMatch(1, u"x"_qs, {3, 1, 0, 0, 1}));
    m_model.setText(u"/a"_qs, u"second"_qs);
    EXPECT_EQ(all(), u"/a 1,1,1 1,3,1;/b 1,2,1"_qs);
    EXPECT_EQ(file(0).data().toString(), u"second"_qs);
    EXPECT_EQ(file(0).data(SearchResultsModel::Key).toString(), u"/a"_qs);
}

TEST_F(SearchResultsModelTest, TwoMatchesOfALineHaveOneTextAndTwoTags) {
    FileMatches matches;
    matches.addLine(3, u"a a"_qs);
    matches.addMatch({20, 1, 0, 0, 1});
    matches.addMatch({22, 1, 0, 2, 1});
    m_model.addMatches(u"/a"_qs, matches);
    EXPECT_EQ(match(0, 0).data().toString(), match(0, 1).data().toString());
    EXPECT_EQ(all(), u"/a 3,20,1 3,22,1"_qs);
}

TEST_F(SearchResultsModelTest, WithoutAFileNameOrAMatchNothingIsAdded) {
    m_model.addMatches({}, oneMatch(1, u"x"_qs));
    m_model.addMatches(u"/a"_qs, {});
    EXPECT_EQ(m_model.rowCount(), 0);
    EXPECT_FALSE(m_model.find({}).isValid());
}

TEST_F(SearchResultsModelTest, AFileIsOneInsertionHoweverManyMatchesItHas) {
    const QSignalSpy inserted(&m_model, &QAbstractItemModel::rowsInserted);
    m_model.addMatches(u"/a"_qs, manyMatches(100));
    EXPECT_EQ(inserted.size(), 1);
    m_model.addMatches(u"/a"_qs, manyMatches(50));
    EXPECT_EQ(inserted.size(), 2);
    EXPECT_EQ(m_model.rowCount(file(0)), 150);
}

TEST_F(SearchResultsModelTest, AFileIsFoundByItsKey) {
    addThreeFiles();
    EXPECT_EQ(m_model.find(u"/b"_qs), file(1));
    EXPECT_FALSE(m_model.find(u"/B"_qs).isValid());
    EXPECT_FALSE(m_model.find(u"b"_qs).isValid());
    m_model.clear();
    EXPECT_FALSE(m_model.find(u"/b"_qs).isValid());
}

TEST_F(SearchResultsModelTest, ATextForAKeyThatIsNotThereIsPassedOver) {
    addThreeFiles();
    const QSignalSpy changed(&m_model, &QAbstractItemModel::dataChanged);
    m_model.setText(u"/z"_qs, u"text"_qs);
    m_model.setText({}, u"text"_qs);
    EXPECT_EQ(changed.size(), 0);
    m_model.setText(u"/c"_qs, u"text"_qs);
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(m_model.find(u"/c"_qs).data().toString(), u"text"_qs);
}

TEST_F(SearchResultsModelTest, AFileIsFoundByTheBeginningOfItsName) {
    for (const char* path : {"/x/main.c", "/main/other.c", "/y/Maple.c"})
        m_model.addMatches(QLatin1String(path), oneMatch(1, u"x"_qs));
    EXPECT_EQ(m_model.findName(u"ma"_qs, 0).row(), 0);
    EXPECT_EQ(m_model.findName(u"ma"_qs, 1).row(), 2);
    EXPECT_EQ(m_model.findName(u"MAIN"_qs, 1).row(), 0);
    EXPECT_EQ(m_model.findName(u"o"_qs, -1).row(), 1);
    EXPECT_EQ(m_model.findName(u"o"_qs, 3).row(), 1);
    EXPECT_FALSE(m_model.findName(u"x"_qs, 0).isValid());
    m_model.clear();
    EXPECT_FALSE(m_model.findName(u"m"_qs, 0).isValid());
}

TEST_F(SearchResultsModelTest, TheMatchIsMarkedInTheTextOfItsRow) {
    m_model.addMatches(u"/a"_qs, oneMatch(1, u"int found;"_qs, {0, 5, 0, 4, 5}));
    m_model.addMatches(u"/a"_qs, oneMatch(123456, u"found"_qs, {0, 99, 0, 0, 5}));  // the text counts, not the length
    EXPECT_EQ(mark(match(0, 0)), u"found"_qs);
    EXPECT_EQ(mark(match(0, 1)), u"found"_qs);
}

TEST_F(SearchResultsModelTest, OfAMatchThatReachesBeyondTheKeptTextTheBeginningIsMarked) {
    const QString text = QString(998, u'-') + u"found"_qs;
    m_model.addMatches(u"/a"_qs, oneMatch(1, text, {0, 5, 0, 998, 5}));
    EXPECT_EQ(mark(match(0, 0)), u"fo"_qs);
}

TEST_F(SearchResultsModelTest, APlaceThatIsNotKnownOrNotKeptIsNotMarked) {
    for (const qint32 column : {-1, 4, 5, 5000})
        m_model.addMatches(u"/a"_qs, oneMatch(1, u"line"_qs, {0, 4, 0, column, 4}));
    m_model.addMatches(u"/a"_qs, oneMatch(2, u"line"_qs, {0, 0, 0, 2, 0}));
    for (int row = 0; row < m_model.rowCount(file(0)); ++row) {
        EXPECT_EQ(match(0, row).data(SearchResultsModel::MarkLength).toInt(), 0) << row;
    }
    EXPECT_EQ(file(0).data(SearchResultsModel::MarkLength).toInt(), 0);
}

TEST_F(SearchResultsModelTest, EachNodeIsCheckedForItself) {
    addThreeFiles();
    check(file(0));
    check(match(1, 2));
    EXPECT_TRUE(isChecked(file(0)));
    EXPECT_FALSE(isChecked(match(0, 0)));
    EXPECT_FALSE(isChecked(file(1)));
    EXPECT_TRUE(isChecked(match(1, 2)));
    EXPECT_FALSE(isChecked(match(1, 1)));
    m_model.setData(match(1, 2), Qt::Unchecked, Qt::CheckStateRole);
    EXPECT_FALSE(isChecked(match(1, 2)));
}

TEST_F(SearchResultsModelTest, OnlyTheCheckStateCanBeSet) {
    addThreeFiles();
    EXPECT_FALSE(m_model.setData(file(0), u"text"_qs, Qt::EditRole));
    EXPECT_FALSE(m_model.setData({}, Qt::Checked, Qt::CheckStateRole));
    EXPECT_EQ(m_model.flags(file(0)), Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    EXPECT_EQ(m_model.flags({}), Qt::NoItemFlags);
}

TEST_F(SearchResultsModelTest, AMatchThatIsAddedBehindCheckedOnesIsNotChecked) {
    addThreeFiles();
    m_model.checkAll(true);
    m_model.addMatches(u"/a"_qs, oneMatch(9, u"x"_qs));
    EXPECT_TRUE(isChecked(match(0, 2)));
    EXPECT_FALSE(isChecked(match(0, 3)));
}

TEST_F(SearchResultsModelTest, AllNodesAreCheckedAndUncheckedAndTheViewsNotified) {
    m_model.checkAll(true);
    addThreeFiles();
    const QSignalSpy changed(&m_model, &QAbstractItemModel::dataChanged);
    for (const bool on : {true, false}) {
        m_model.checkAll(on);
        for (int row = 0; row < 3; ++row) {
            EXPECT_EQ(isChecked(file(row)), on);
            for (int below = 0; below < 3; ++below) {
                EXPECT_EQ(isChecked(match(row, below)), on);
            }
        }
    }
    EXPECT_EQ(changed.size(), 2 * (3 + 1));
}

TEST_F(SearchResultsModelTest, CheckedMatchesAreRemovedAndTheirFileStays) {
    addThreeFiles();
    for (int row = 0; row < 3; ++row)
        check(match(1, row));
    check(match(2, 1));
    m_model.removeChecked();
    EXPECT_EQ(all(), u"/a 1,10,1 2,20,1 3,30,1;/b;/c 1,10,1 3,30,1"_qs);
    EXPECT_FALSE(m_model.hasChildren(file(1)));
    EXPECT_FALSE(isChecked(match(2, 0)));
    EXPECT_FALSE(isChecked(match(2, 1)));
    m_model.addMatches(u"/b"_qs, oneMatch(4, u"x"_qs));
    EXPECT_EQ(m_model.rowCount(file(1)), 1);
}

TEST_F(SearchResultsModelTest, ACheckedFileIsRemovedWithItsMatches) {
    addThreeFiles();
    check(file(1));
    check(match(0, 0));
    m_model.removeChecked();
    EXPECT_EQ(all(), u"/a 2,20,1 3,30,1;/c 1,10,1 2,20,1 3,30,1"_qs);
    EXPECT_FALSE(m_model.find(u"/b"_qs).isValid());
    EXPECT_EQ(m_model.find(u"/c"_qs), file(1));
    m_model.addMatches(u"/b"_qs, oneMatch(1, u"x"_qs));
    EXPECT_EQ(m_model.find(u"/b"_qs), file(2));
}

TEST_F(SearchResultsModelTest, WithoutACheckedNodeNothingIsRemoved) {
    addThreeFiles();
    check(match(0, 0));
    m_model.setData(match(0, 0), Qt::Unchecked, Qt::CheckStateRole);
    const QSignalSpy changed(&m_model, &QAbstractItemModel::layoutChanged);
    m_model.removeChecked();
    EXPECT_EQ(changed.size(), 0);
    EXPECT_EQ(m_model.rowCount(), 3);
}

TEST_F(SearchResultsModelTest, AllNodesCanBeRemoved) {
    addThreeFiles();
    m_model.checkAll(true);
    m_model.removeChecked();
    EXPECT_EQ(m_model.rowCount(), 0);
    m_model.removeChecked();
    addThreeFiles();
    EXPECT_EQ(m_model.rowCount(), 3);
}

TEST_F(SearchResultsModelTest, AnIndexThatIsKeptFollowsItsNode) {
    addThreeFiles();
    const QPersistentModelIndex b(file(1));
    const QPersistentModelIndex c(file(2));
    const QPersistentModelIndex firstOfA(match(0, 0));
    const QPersistentModelIndex lastOfA(match(0, 2));
    const QPersistentModelIndex inB(match(1, 0));
    const QPersistentModelIndex lastOfC(match(2, 2));
    check(file(1));
    check(match(0, 0));
    check(match(0, 1));
    m_model.removeChecked();
    EXPECT_FALSE(b.isValid());
    EXPECT_FALSE(inB.isValid());
    EXPECT_FALSE(firstOfA.isValid());
    EXPECT_EQ(c, file(1));
    EXPECT_EQ(lastOfA, match(0, 0));
    EXPECT_EQ(lastOfC, match(1, 2));
    EXPECT_EQ(lastOfC.parent(), file(1));
}

TEST_F(SearchResultsModelTest, TheNeighbourThatRemainsIsBelowOrAboveOrTheFile) {
    addThreeFiles();
    EXPECT_EQ(m_model.neighbourToRemain(match(0, 1)), match(0, 1));
    check(match(0, 1));
    EXPECT_EQ(m_model.neighbourToRemain(match(0, 1)), match(0, 2));
    check(match(0, 2));
    EXPECT_EQ(m_model.neighbourToRemain(match(0, 2)), match(0, 0));
    check(match(0, 0));
    EXPECT_EQ(m_model.neighbourToRemain(match(0, 1)), file(0));
    check(file(0));
    EXPECT_EQ(m_model.neighbourToRemain(match(0, 1)), file(1));
    check(file(2));
    EXPECT_EQ(m_model.neighbourToRemain(file(2)), file(1));
    check(file(1));
    EXPECT_FALSE(m_model.neighbourToRemain(file(2)).isValid());
    EXPECT_FALSE(m_model.neighbourToRemain({}).isValid());
}

TEST_F(SearchResultsModelTest, AClearedTreeIsEmptyAndTakesTheSameFilesAgain) {
    const QSignalSpy reset(&m_model, &QAbstractItemModel::modelReset);
    m_model.clear();
    EXPECT_EQ(reset.size(), 0);
    addThreeFiles();
    const QPersistentModelIndex kept(match(0, 0));
    m_model.clear();
    EXPECT_EQ(reset.size(), 1);
    EXPECT_EQ(m_model.rowCount(), 0);
    EXPECT_FALSE(kept.isValid());
    addThreeFiles();
    EXPECT_EQ(m_model.rowCount(), 3);
}

TEST_F(SearchResultsModelTest, ThereIsNoIndexBeyondTheRows) {
    addThreeFiles();
    EXPECT_FALSE(m_model.index(3, 0).isValid());
    EXPECT_FALSE(m_model.index(-1, 0).isValid());
    EXPECT_FALSE(m_model.index(0, 1).isValid());
    EXPECT_FALSE(m_model.index(3, 0, file(0)).isValid());
    EXPECT_FALSE(m_model.index(0, 0, match(0, 0)).isValid());
    EXPECT_FALSE(m_model.data({}, Qt::DisplayRole).isValid());
}

TEST(SearchResultsModelSizeTest, AMillionMatchesAreCheckedAndHalfOfThemRemoved) {
    constexpr int Files = 100'000;
    SearchResultsModel model;
    for (int n = 0; n < Files; ++n)
        model.addMatches(u"/f%1"_qs.arg(n), manyMatches(10));
    ASSERT_EQ(model.rowCount(), Files);
    model.checkAll(true);
    model.checkAll(false);
    std::vector<QPersistentModelIndex> kept;
    for (int row = 0; row < Files; ++row) {
        const QModelIndex file = model.index(row, 0);
        kept.emplace_back(file);
        if (row % 2 == 0)
            model.setData(file, Qt::Checked, Qt::CheckStateRole);
        else
            model.setData(model.index(9, 0, file), Qt::Checked, Qt::CheckStateRole);
    }
    model.removeChecked();
    ASSERT_EQ(model.rowCount(), Files / 2);
    for (int row = 0; row < Files / 2; ++row) {
        ASSERT_FALSE(kept[static_cast<size_t>(2 * row)].isValid());
        ASSERT_EQ(kept[static_cast<size_t>(2 * row + 1)], model.index(row, 0));
        ASSERT_EQ(model.rowCount(model.index(row, 0)), 9);
    }
    EXPECT_EQ(model.find(u"/f99999"_qs).row(), Files / 2 - 1);
}

}  // namespace
