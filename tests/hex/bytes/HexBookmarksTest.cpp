#include "hex/bytes/HexBookmarks.h"

#include <QAbstractItemModelTester>
#include <QStringList>

#include <gtest/gtest.h>

namespace {

QStringList textsOf(const HexBookmarks& bookmarks) {
    QStringList texts;
    for (int i = 0; i < bookmarks.rowCount(); ++i)
        texts += bookmarks.index(i).data().toString();
    return texts;
}

class Bookmarks : public testing::Test {
 protected:
    void add(qint64 offset) {
        EXPECT_TRUE(m_bookmarks.add(QString::number(offset, 16).toUpper(), QString::number(offset)));
    }

    HexBookmarks m_bookmarks;
    QAbstractItemModelTester m_tester{&m_bookmarks};
};

}  // namespace

TEST_F(Bookmarks, ShowTheirNumberAndOffsetInTheOrderOfAdding) {
    add(31);
    add(0);
    EXPECT_EQ(textsOf(m_bookmarks), QStringList({u"1 - (1F,31)"_qs, u"2 - (0,0)"_qs}));
    EXPECT_EQ(m_bookmarks.index(0).data(Qt::UserRole + 1).toString(), u"31"_qs);
    EXPECT_EQ(m_bookmarks.offsetAt(1), 0);
    EXPECT_EQ(m_bookmarks.headerData(0, Qt::Horizontal).toString(), u"Bookmarks"_qs);
}

TEST_F(Bookmarks, AreNotAddedTwice) {
    add(31);
    EXPECT_FALSE(m_bookmarks.add(u"1F"_qs, u"31"_qs));
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
    EXPECT_EQ(m_bookmarks.offsetAt(3), 1);
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
