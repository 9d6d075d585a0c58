#include "hex/bytes/HexBookmarks.h"

#include <QAbstractItemModelTester>
#include <QStringList>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

QStringList textsOf(const HexBookmarks& bookmarks) {
    QStringList texts;
    for (int i = 0; i < bookmarks.rowCount(); ++i)
        texts += bookmarks.index(i).data().toString();
    return texts;
}

class Bookmarks : public testing::Test {
 protected:
    void add(qint64 offset) { EXPECT_TRUE(m_bookmarks.add(Offset(offset))); }

    HexBookmarks m_bookmarks;
    QAbstractItemModelTester m_tester{&m_bookmarks};
};

}  // namespace

TEST_F(Bookmarks, ShowTheirNumberAndOffsetInTheOrderOfAdding) {
    add(31);
    add(0);
    EXPECT_EQ(textsOf(m_bookmarks), QStringList({u"1 - (1F,31)"_qs, u"2 - (0,0)"_qs}));
    EXPECT_EQ(m_bookmarks.index(0).data(Qt::UserRole + 1).toString(), u"31"_qs);
    EXPECT_EQ(m_bookmarks.offsetAt(1), Offset(0));
    EXPECT_EQ(m_bookmarks.headerData(0, Qt::Horizontal).toString(), u"Bookmarks"_qs);
}

TEST_F(Bookmarks, AreNotAddedTwice) {
    add(31);
    EXPECT_FALSE(m_bookmarks.add(Offset(31)));
    EXPECT_EQ(m_bookmarks.count(), 1);
}

TEST_F(Bookmarks, AreNotNumberedAnewAfterARemoval) {
    add(1);
    add(2);
    add(3);
    m_bookmarks.remove(0);
    add(4);
    EXPECT_EQ(textsOf(m_bookmarks), QStringList({u"2 - (2,2)"_qs, u"3 - (3,3)"_qs, u"3 - (4,4)"_qs}));
    add(1);
    EXPECT_EQ(m_bookmarks.offsetAt(3), Offset(1));
}

TEST_F(Bookmarks, ARemovalOutsideTheListDoesNothing) {
    add(1);
    m_bookmarks.remove(-1);
    m_bookmarks.remove(1);
    EXPECT_EQ(m_bookmarks.count(), 1);
}

TEST_F(Bookmarks, AreForgottenTogether) {
    add(1);
    m_bookmarks.clear();
    EXPECT_EQ(m_bookmarks.count(), 0);
    add(1);
    EXPECT_EQ(textsOf(m_bookmarks), QStringList({u"1 - (1,1)"_qs}));
}

TEST_F(Bookmarks, OfManyOffsetsAreAddedAtTheEndWhereThereIsNoneYet) {
    add(7);
    add(3);
    m_bookmarks.addAll({1, 3, 3, 5, 5, 7, 2147483646});
    EXPECT_EQ(textsOf(m_bookmarks), QStringList({u"1 - (7,7)"_qs, u"2 - (3,3)"_qs, u"3 - (1,1)"_qs, u"4 - (5,5)"_qs,
                                                 u"5 - (7FFFFFFE,2147483646)"_qs}));
    m_bookmarks.addAll({1, 5});
    m_bookmarks.addAll({});
    EXPECT_EQ(m_bookmarks.count(), 5);
    m_bookmarks.remove(2);
    m_bookmarks.addAll({0, 1, 3});
    EXPECT_EQ(textsOf(m_bookmarks).mid(4), QStringList({u"5 - (0,0)"_qs, u"6 - (1,1)"_qs}));
    EXPECT_FALSE(m_bookmarks.add(Offset(5)));
}

TEST_F(Bookmarks, AgreeWithAPlainListHoweverTheyAreAdded) {
    std::mt19937 random(3);
    std::vector<qint64> expected;
    const auto addExpected = [&](qint64 offset) {
        const bool isNew = std::find(expected.begin(), expected.end(), offset) == expected.end();
        if (isNew)
            expected.push_back(offset);
        return isNew;
    };
    for (int step = 0; step < 300; ++step) {
        const auto offset = static_cast<qint32>(random() % 500);
        if (step % 3 == 0) {
            EXPECT_EQ(m_bookmarks.add(Offset(offset)), addExpected(offset));
        } else if (step % 3 == 1) {
            std::vector<qint32> many;
            for (qint32 each = offset; each < offset + 40; each += static_cast<qint32>(random() % 3))
                many.push_back(each);
            for (const qint32 each : many)
                addExpected(each);
            m_bookmarks.addAll(many);
        } else {
            const auto index = static_cast<std::ptrdiff_t>(random() % expected.size());
            m_bookmarks.remove(static_cast<int>(index));
            expected.erase(expected.begin() + index);
        }
        ASSERT_EQ(m_bookmarks.count(), static_cast<int>(expected.size()));
        for (int i = 0; i < m_bookmarks.count(); ++i) {
            ASSERT_EQ(m_bookmarks.offsetAt(i), Offset(expected[static_cast<std::size_t>(i)]));
        }
    }
}
