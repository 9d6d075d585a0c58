#include "shell/session/RecentList.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

constexpr RecentList::Rule Ten{.capacity = 10};

QStringList numbers(int from, int to) {
    QStringList all;
    for (int i = from; i <= to; ++i)
        all << QString::number(i);
    return all;
}

RecentList listOf(const QStringList& added, const RecentList::Rule& rule = Ten) {
    RecentList list(rule);
    for (const QString& entry : added)
        list.add(entry);
    return list;
}

QStringList reversed(QStringList list) {
    std::reverse(list.begin(), list.end());
    return list;
}

/// The same as a fixed row of places that are in use or not, numbered from 1.
class Places {
 public:
    explicit Places(int count) : m_places(static_cast<size_t>(count) + 1) {}

    void add(const QString& text) {
        size_t place = m_places.size() - 1;
        for (size_t i = 1; i < m_places.size(); ++i) {
            if (m_places[i].used && m_places[i].text == text) {
                place = i;
                break;
            }
        }
        for (size_t i = place; i > 1; --i)
            m_places[i] = m_places[i - 1];
        m_places[1] = {text, true};
    }

    void remove(const QString& text) {
        for (size_t i = 1; i < m_places.size(); ++i) {
            if (!m_places[i].used || m_places[i].text != text)
                continue;
            for (; i + 1 < m_places.size(); ++i)
                m_places[i] = m_places[i + 1];
            return;
        }
    }

    QStringList inUse() const {
        QStringList texts;
        for (const Place& place : m_places) {
            if (place.used)
                texts << place.text;
        }
        return texts;
    }

 private:
    struct Place {
        QString text;
        bool used = false;
    };
    std::vector<Place> m_places;
};

}  // namespace

TEST(RecentList, TheNewestStandsOnTop) {
    EXPECT_EQ(listOf({u"a"_qs, u"b"_qs, u"c"_qs}).entries(), QStringList({u"c"_qs, u"b"_qs, u"a"_qs}));
    EXPECT_EQ(listOf({u"a"_qs, u"b"_qs}).oldestFirst(), QStringList({u"a"_qs, u"b"_qs}));
    EXPECT_TRUE(listOf({}).entries().isEmpty());
    EXPECT_TRUE(listOf({}).oldestFirst().isEmpty());
}

TEST(RecentList, AddingAKnownTextMovesItToTheTop) {
    EXPECT_EQ(listOf({u"a"_qs, u"b"_qs, u"c"_qs, u"b"_qs}).entries(), QStringList({u"b"_qs, u"c"_qs, u"a"_qs}));
}

TEST(RecentList, AddingTheTopLeavesTheListUnchanged) {
    const QStringList full = numbers(1, 10);
    EXPECT_EQ(listOf(full + QStringList(u"10"_qs)).entries(), reversed(full));
}

TEST(RecentList, OneBeyondTheCapacityDropsTheOldest) {
    EXPECT_EQ(listOf(numbers(1, 11)).entries(), reversed(numbers(2, 11)));
    EXPECT_EQ(listOf(numbers(1, 10) + QStringList(u"1"_qs)).entries(), QStringList(u"1"_qs) + reversed(numbers(2, 10)));
}

TEST(RecentList, TheComparisonIsPartOfTheRule) {
    EXPECT_EQ(listOf({u"/a"_qs, u"/A"_qs}).entries(), QStringList({u"/A"_qs, u"/a"_qs}));
    const RecentList::Rule anyCase{.capacity = 10, .comparison = Qt::CaseInsensitive};
    EXPECT_EQ(listOf({u"/a"_qs, u"/A"_qs}, anyCase).entries(), QStringList(u"/A"_qs));
    EXPECT_TRUE(listOf({u"/a"_qs}, anyCase).contains(u"/A"_qs));
    EXPECT_FALSE(listOf({u"/a"_qs}).contains(u"/A"_qs));
}

TEST(RecentList, TheOthersCloseUpWhenOneIsRemoved) {
    RecentList list = listOf({u"a"_qs, u"b"_qs, u"c"_qs});
    list.remove(u"b"_qs);
    EXPECT_EQ(list.entries(), QStringList({u"c"_qs, u"a"_qs}));
    list.remove(u"x"_qs);
    EXPECT_EQ(list.entries(), QStringList({u"c"_qs, u"a"_qs}));
    list.remove(u"a"_qs);
    list.remove(u"c"_qs);
    EXPECT_TRUE(list.entries().isEmpty());
}

TEST(RecentList, TheLastOfAFullListStandsTwiceAfterARemoval) {
    RecentList list = listOf(numbers(1, 10));
    list.remove(u"7"_qs);
    EXPECT_EQ(list.entries(),
              QStringList({u"10"_qs, u"9"_qs, u"8"_qs, u"6"_qs, u"5"_qs, u"4"_qs, u"3"_qs, u"2"_qs, u"1"_qs, u"1"_qs}));
}

TEST(RecentList, TheLastPlaceOfAFullListIsNotCleared) {
    RecentList list = listOf(numbers(1, 10));
    list.remove(u"1"_qs);
    EXPECT_EQ(list.entries(), reversed(numbers(1, 10)));
}

TEST(RecentList, DoesWhatARowOfPlacesWouldDo) {
    std::mt19937 random(20'261'122);
    for (const int capacity : {1, 2, 10, 30}) {
        RecentList list({.capacity = capacity});
        Places places(capacity);
        for (int step = 0; step < 3000; ++step) {
            const QString text = QString::number(random() % (static_cast<unsigned>(capacity) + 5));
            if (random() % 4 == 0) {
                list.remove(text);
                places.remove(text);
            } else {
                list.add(text);
                places.add(text);
            }
            ASSERT_EQ(list.entries(), places.inUse()) << capacity << ' ' << step;
        }
    }
}
