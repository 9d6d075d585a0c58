#include "workspace/panel/BandPlaces.h"

#include <QList>
#include <QRandomGenerator>

#include <gtest/gtest.h>

class PlacesOfBands : public testing::Test {
 protected:
    static constexpr int Height = 9000;
    static constexpr int Title = 300;
    static constexpr int Gap = BandPlaces::Gap;

    PlacesOfBands() { m_places.setRoom(Height, Title); }

    QList<int> tops() const { return {m_places.top(0), m_places.top(1), m_places.top(2)}; }
    QList<bool> open() const { return {m_places.isOpen(0), m_places.isOpen(1), m_places.isOpen(2)}; }

    BandPlaces m_places;
};

TEST_F(PlacesOfBands, AllTabsAreClosedAtFirst) {
    EXPECT_EQ(open(), QList<bool>({false, false, false}));
    EXPECT_EQ(m_places.height(0), 0);
}

TEST_F(PlacesOfBands, ASingleTabHasTheWholeHeight) {
    m_places.OpenTab(2);
    EXPECT_EQ(open(), QList<bool>({false, false, true}));
    EXPECT_EQ(m_places.top(2), 0);
    EXPECT_EQ(m_places.height(2), Height);
}

TEST_F(PlacesOfBands, NeighboursAreTheNearestOpenTabs) {
    m_places.OpenTab(0);
    m_places.OpenTab(2);
    EXPECT_EQ(m_places.previousOpen(2), 0);
    EXPECT_EQ(m_places.previousOpen(1), 0);
    EXPECT_EQ(m_places.previousOpen(0), -1);
    EXPECT_EQ(m_places.nextOpen(0), 2);
    EXPECT_EQ(m_places.nextOpen(1), 2);
    EXPECT_EQ(m_places.nextOpen(2), -1);
}

TEST_F(PlacesOfBands, AnOpenedTabGetsAnEqualShareAndStandsBelowTheOneBefore) {
    m_places.OpenTab(2);
    m_places.OpenTab(0);
    EXPECT_EQ(m_places.top(0), 0);
    EXPECT_EQ(m_places.height(0), (Height - Gap) / 2);
    EXPECT_EQ(m_places.top(2), Height - m_places.height(2));
    EXPECT_EQ(m_places.top(2), m_places.top(0) + m_places.height(0) + Gap);

    m_places.OpenTab(1);
    const int share = (Height - 2 * Gap) / 3;
    EXPECT_NEAR(m_places.height(1), share, 2);
    EXPECT_EQ(m_places.top(1), m_places.top(0) + m_places.height(0) + Gap);
    EXPECT_EQ(m_places.top(2), m_places.top(1) + m_places.height(1) + Gap);
    EXPECT_NEAR(m_places.height(0), share, 2);
}

TEST_F(PlacesOfBands, TheOthersKeepTheirProportionsWhenATabOpens) {
    m_places.RestoreItem(u"True\t0\tFalse\t0\tTrue\t6000\t"_qs);
    m_places.OpenTab(1);
    EXPECT_NEAR(m_places.height(0), 2 * m_places.height(2), 60);
}

TEST_F(PlacesOfBands, AnOpenTabThatIsOpenedAgainLeavesAllBandsWhereTheyAre) {
    m_places.RestoreItem(u"True\t0\tTrue\t3000\tTrue\t8000\t"_qs);
    for (int tab = 0; tab < BandPlaces::TabCount; ++tab) {
        m_places.OpenTab(tab);
        EXPECT_EQ(open(), QList<bool>({true, true, true}));
        EXPECT_EQ(tops(), QList<int>({0, 3000, 8000}));
    }
    m_places.setRoom(2000, Title);
    m_places.OpenTab(1);
    EXPECT_EQ(m_places.positionLine(), u"True\t0\tTrue\t3000\tTrue\t8000\t"_qs);
}

TEST_F(PlacesOfBands, AClosedTabIsNotEnlarged) {
    m_places.OpenTab(0);
    m_places.enlarge(1);
    EXPECT_EQ(open(), QList<bool>({true, false, false}));
    EXPECT_EQ(m_places.height(0), Height);
}

TEST_F(PlacesOfBands, AnEnlargedTabGetsAllButTheTitles) {
    m_places.OpenAllTabs();
    m_places.enlarge(1);
    EXPECT_EQ(open(), QList<bool>({true, true, true}));
    EXPECT_EQ(tops(), QList<int>({0, Title + Gap, Height - Title}));
    EXPECT_EQ(m_places.height(0), Title);
    EXPECT_EQ(m_places.height(2), Title);
    m_places.enlarge(0);
    EXPECT_EQ(tops(), QList<int>({0, Height - 2 * Title - Gap, Height - Title}));
}

TEST_F(PlacesOfBands, TheNextTabTakesOverTheTopOfAClosedOne) {
    m_places.OpenAllTabs();
    m_places.CloseTab(1);
    EXPECT_EQ(open(), QList<bool>({true, false, true}));
    EXPECT_EQ(m_places.top(2), Height / 3);
    m_places.CloseTab(0);
    EXPECT_EQ(m_places.top(2), 0);
    EXPECT_EQ(m_places.height(2), Height);
}

TEST_F(PlacesOfBands, TheTabBeforeAClosedLastOneGrowsToTheBottom) {
    m_places.OpenAllTabs();
    m_places.CloseTab(2);
    EXPECT_EQ(m_places.top(1), Height / 3);
    EXPECT_EQ(m_places.height(1), Height - Height / 3);
}

TEST_F(PlacesOfBands, ClosingAClosedTabMovesNothing) {
    m_places.OpenAllTabs();
    m_places.CloseTab(1);
    const QList<int> before = tops();
    m_places.CloseTab(1);
    EXPECT_EQ(tops(), before);
}

TEST_F(PlacesOfBands, AllTabsShareTheHeightInThirds) {
    m_places.OpenTab(1);
    m_places.OpenAllTabs();
    EXPECT_EQ(open(), QList<bool>({true, true, true}));
    EXPECT_EQ(tops(), QList<int>({0, Height / 3, 2 * Height / 3}));
}

TEST_F(PlacesOfBands, ThirdsOfAnAssumedHeightBecomeThoseOfTheFirstRealOne) {
    BandPlaces places;
    places.setRoom(450, Title, BandPlaces::Room::Assumed);
    places.OpenAllTabs();
    places.setRoom(600, Title, BandPlaces::Room::Assumed);
    places.setRoom(Height, Title);
    EXPECT_EQ(places.positionLine(), u"True\t0\tTrue\t3000\tTrue\t6000\t"_qs);
    places.setRoom(2 * Height, Title);
    EXPECT_EQ(places.positionLine(), u"True\t0\tTrue\t3000\tTrue\t6000\t"_qs);
}

TEST_F(PlacesOfBands, TopsThatWereSetAfterTheThirdsStay) {
    BandPlaces places;
    places.setRoom(450, Title, BandPlaces::Room::Assumed);
    places.OpenAllTabs();
    places.RestoreItem(u"True\t0\tTrue\t2000\tTrue\t8000\t"_qs);
    places.setRoom(Height, Title);
    EXPECT_EQ(places.positionLine(), u"True\t0\tTrue\t2000\tTrue\t8000\t"_qs);
}

TEST_F(PlacesOfBands, ABarIsDraggedBetweenTheTitlesOfItsNeighbours) {
    m_places.OpenAllTabs();
    m_places.dragTo(1, 4000);
    EXPECT_EQ(tops(), QList<int>({0, 4000, 6000}));
    EXPECT_EQ(m_places.height(0), 4000 - Gap);
    m_places.dragTo(1, -500);
    EXPECT_EQ(m_places.top(1), Title + Gap);
    m_places.dragTo(1, 100'000);
    EXPECT_EQ(m_places.top(1), 6000 - Gap - Title);
    m_places.dragTo(2, 100'000);
    EXPECT_EQ(m_places.top(2), Height - Title);
}

TEST_F(PlacesOfBands, TheFirstBarAndClosedOnesAreNotDragged) {
    m_places.OpenAllTabs();
    m_places.CloseTab(0);
    m_places.dragTo(1, 1000);
    m_places.dragTo(0, 1000);
    EXPECT_EQ(m_places.top(1), 0);
    EXPECT_FALSE(m_places.isOpen(0));
}

TEST_F(PlacesOfBands, InALowerPanelTheTitlesStayVisibleAndTheTopsAreKept) {
    m_places.RestoreItem(u"True\t0\tTrue\t3000\tTrue\t8000\t"_qs);
    m_places.setRoom(2000, Title);
    EXPECT_EQ(tops(), QList<int>({0, 2000 - 2 * Title - Gap, 2000 - Title}));
    EXPECT_EQ(m_places.positionLine(), u"True\t0\tTrue\t3000\tTrue\t8000\t"_qs);
    m_places.setRoom(Height, Title);
    EXPECT_EQ(tops(), QList<int>({0, 3000, 8000}));
}

TEST_F(PlacesOfBands, InAPanelWithoutRoomTheTitlesFollowEachOther) {
    m_places.OpenAllTabs();
    m_places.setRoom(100, Title);
    EXPECT_EQ(tops(), QList<int>({0, Title + Gap, 2 * (Title + Gap)}));
    EXPECT_EQ(m_places.height(2), Title);
    m_places.dragTo(1, 5);
    EXPECT_EQ(m_places.top(1), Title + Gap);
}

TEST_F(PlacesOfBands, ATabIsSetFromALine) {
    m_places.OpenTab(0);
    m_places.SetTab(u"1\tTrue\t2500"_qs);
    EXPECT_EQ(open(), QList<bool>({true, true, false}));
    EXPECT_EQ(m_places.top(1), 2500);
    m_places.SetTab(u"1\tFalse\t2500"_qs);
    EXPECT_FALSE(m_places.isOpen(1));
}

TEST_F(PlacesOfBands, AnUnreadableLineChangesNothing) {
    m_places.OpenAllTabs();
    const QString before = m_places.positionLine();
    for (const char* line : {"", "\t", "x\tTrue\t5", "3\tFalse\t5", "-1\tFalse\t5", "1", "1\tmaybe\tmany", "1\tTru\t",
                             "99999999999\tFalse\t1"}) {
        m_places.SetTab(QString::fromLatin1(line));
        EXPECT_EQ(m_places.positionLine(), before) << line;
    }
    for (const char* line : {"", "\t\t\t\t\t", "maybe\tnan\t?\tinf\t\t1e300"}) {
        m_places.RestoreItem(QString::fromLatin1(line));
        EXPECT_EQ(m_places.positionLine(), before) << line;
    }
}

TEST_F(PlacesOfBands, ALineOfThreeFalseClosesAllTabs) {
    m_places.OpenAllTabs();
    m_places.RestoreItem(u"False\t0\tFalse\t3000\tFalse\t6000\t"_qs);
    EXPECT_EQ(open(), QList<bool>({false, false, false}));
}

TEST_F(PlacesOfBands, AShortLineSetsTheTabsThatItHas) {
    m_places.RestoreItem(u"True\t0\tTrue\t4000.4"_qs);
    EXPECT_EQ(open(), QList<bool>({true, true, false}));
    EXPECT_EQ(m_places.top(1), 4000);
}

TEST_F(PlacesOfBands, TabsThatDoNotExistAreIgnored) {
    m_places.OpenAllTabs();
    const QString before = m_places.positionLine();
    for (const int tab : {-1, 3, 1000}) {
        m_places.OpenTab(tab);
        m_places.enlarge(tab);
        m_places.CloseTab(tab);
        m_places.setTop(tab, 77);
        m_places.dragTo(tab, 77);
        EXPECT_FALSE(m_places.isOpen(tab));
        EXPECT_EQ(m_places.top(tab), 0);
        EXPECT_EQ(m_places.height(tab), 0);
    }
    EXPECT_EQ(m_places.positionLine(), before);
}

TEST_F(PlacesOfBands, WhatWasSavedIsRestored) {
    QRandomGenerator random(4711);
    for (int round = 0; round < 500; ++round) {
        BandPlaces saved;
        saved.setRoom(Height, Title);
        for (int step = 0; step < 8; ++step) {
            const int tab = random.bounded(BandPlaces::TabCount);
            switch (random.bounded(5)) {
                case 0:
                    saved.OpenTab(tab);
                    break;
                case 1:
                    saved.CloseTab(tab);
                    break;
                case 2:
                    saved.OpenAllTabs();
                    break;
                case 3:
                    saved.enlarge(tab);
                    break;
                default:
                    saved.dragTo(tab, random.bounded(Height));
            }
        }
        m_places.RestoreItem(saved.positionLine());
        for (int tab = 0; tab < BandPlaces::TabCount; ++tab) {
            ASSERT_EQ(m_places.isOpen(tab), saved.isOpen(tab)) << saved.positionLine().toStdString();
            ASSERT_EQ(m_places.height(tab), saved.height(tab)) << saved.positionLine().toStdString();
            if (saved.isOpen(tab)) {
                ASSERT_EQ(m_places.top(tab), saved.top(tab)) << saved.positionLine().toStdString();
            }
        }
    }
}
