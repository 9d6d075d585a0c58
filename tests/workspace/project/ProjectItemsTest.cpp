#include "workspace/project/ProjectItems.h"

#include <QSemaphore>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <random>
#include <vector>

namespace {

/// A disk that does not answer before it may; shared with the threads that ask it.
struct GatedDisk {
    QSemaphore answers;
    std::atomic<int> asked = 0;
    std::atomic<bool> isThere = false;
};

class RowsOfAProject : public testing::Test {
 protected:
    RowsOfAProject() {
        m_items = std::make_unique<ProjectItems>([disk = m_disk](const QString&) {
            ++disk->asked;
            disk->answers.acquire();
            return disk->isThere.load();
        });
    }
    // A thread may still wait for its answer.
    ~RowsOfAProject() override { m_disk->answers.release(1000); }

    bool isDimmed(int row) const { return m_items->index(row).data(Qt::ForegroundRole).isValid(); }
    bool waitUntilAsked(int count) const {
        return QTest::qWaitFor([this, count] { return m_disk->asked == count; });
    }

    std::shared_ptr<GatedDisk> m_disk = std::make_shared<GatedDisk>();
    std::unique_ptr<ProjectItems> m_items;
};

}  // namespace

TEST_F(RowsOfAProject, StandAtOnceWhileTheDiskDoesNotAnswerAndAreDimmedByItsAnswer) {
    EXPECT_EQ(m_items->add(u"/far/a"_qs, u"FILE"_qs), ProjectItems::Added::Yes);
    EXPECT_EQ(m_items->add(u"FOLDER/far/b"_qs, u"FOLDER"_qs), ProjectItems::Added::Yes);
    EXPECT_EQ(m_items->rowCount(), 2);
    ASSERT_TRUE(waitUntilAsked(1));
    EXPECT_FALSE(isDimmed(0));
    EXPECT_FALSE(isDimmed(1));
    m_disk->answers.release(2);
    EXPECT_TRUE(QTest::qWaitFor([this] { return isDimmed(0) && isDimmed(1); }));
}

TEST_F(RowsOfAProject, AreAskedForInOneThread) {
    for (int i = 0; i < 50; ++i)
        m_items->add(u"/far/%1"_qs.arg(i), u"FILE"_qs);
    ASSERT_TRUE(waitUntilAsked(1));
    m_items->add(u"/far/later"_qs, u"FILE"_qs);
    QTest::qWait(20);
    EXPECT_EQ(m_disk->asked, 1);
    m_disk->answers.release(51);
    EXPECT_TRUE(QTest::qWaitFor([this] {
        for (int row = 0; row < m_items->rowCount(); ++row) {
            if (!isDimmed(row))
                return false;
        }
        return true;
    }));
    EXPECT_EQ(m_disk->asked, 51);
}

TEST_F(RowsOfAProject, IgnoreTheAnswerForARemovedRow) {
    m_items->add(u"/far/a"_qs, u"FILE"_qs);
    m_items->add(u"/far/b"_qs, u"FILE"_qs);
    ASSERT_TRUE(waitUntilAsked(1));
    m_items->removeAt(0);
    m_disk->answers.release(2);
    EXPECT_TRUE(QTest::qWaitFor([this] { return isDimmed(0); }));
    EXPECT_EQ(m_items->rowCount(), 1);
    EXPECT_EQ(m_items->text(0), u"b"_qs);
}

TEST_F(RowsOfAProject, OfTheNextProjectDoNotWaitForTheLast) {
    m_items->add(u"/dead/a"_qs, u"FILE"_qs);
    m_items->add(u"/dead/b"_qs, u"FILE"_qs);
    ASSERT_TRUE(waitUntilAsked(1));
    m_items->clear();
    m_items->add(u"/dead/a"_qs, u"FILE"_qs);
    ASSERT_TRUE(waitUntilAsked(2));
    m_disk->answers.release(2);
    EXPECT_TRUE(QTest::qWaitFor([this] { return isDimmed(0); }));
    EXPECT_EQ(m_disk->asked, 2);
}

TEST_F(RowsOfAProject, CanBeDestroyedWhileTheDiskDoesNotAnswer) {
    m_items->add(u"/dead/a"_qs, u"FILE"_qs);
    m_items->add(u"/dead/b"_qs, u"FILE"_qs);
    ASSERT_TRUE(waitUntilAsked(1));
    m_items.reset();
    m_disk->answers.release(1);
    QTest::qWait(20);
    EXPECT_EQ(m_disk->asked, 1);
}

TEST_F(RowsOfAProject, AreNotDimmedWhenTheDiskHasThem) {
    m_disk->isThere = true;
    m_items->add(u"/near/a"_qs, u"FILE"_qs);
    int changes = 0;
    QObject::connect(m_items.get(), &ProjectItems::dataChanged, m_items.get(), [&changes] { ++changes; });
    m_disk->answers.release(1);
    ASSERT_TRUE(QTest::qWaitFor([&changes] { return changes > 0; }));
    EXPECT_FALSE(isDimmed(0));
}

TEST_F(RowsOfAProject, MayBeAddedAgainAfterTheyWereRemoved) {
    m_items->add(u"/a"_qs, u"FILE"_qs);
    EXPECT_EQ(m_items->add(u"/a"_qs, u"FILE"_qs), ProjectItems::Added::KnownKey);
    m_items->removeAt(0);
    EXPECT_EQ(m_items->add(u"/a"_qs, u"FILE"_qs), ProjectItems::Added::Yes);
    m_items->clear();
    EXPECT_EQ(m_items->add(u"/a"_qs, u"FILE"_qs), ProjectItems::Added::Yes);
}

TEST(ManyRowsOfAProject, StandInTheOrderOfTheirTextHoweverTheyCome) {
    constexpr int Count = 20'000;
    std::vector<int> numbers(Count);
    for (int i = 0; i < Count; ++i)
        numbers[static_cast<std::size_t>(i)] = i;
    std::ranges::shuffle(numbers, std::mt19937(4711));
    ProjectItems items([](const QString&) { return true; });
    for (const int number : numbers)
        items.add(u"/p/%1.txt"_qs.arg(number, 6, 10, QLatin1Char('0')), u"FILE"_qs);
    ASSERT_EQ(items.rowCount(), Count);
    for (int row = 0; row < Count; ++row) {
        ASSERT_EQ(items.text(row), u"%1.txt"_qs.arg(row, 6, 10, QLatin1Char('0')));
    }
}

TEST(ManyRowsOfAProject, AreOrderedByCodePoints) {
    ProjectItems items([](const QString&) { return true; });
    const QString last = u"\U0001F600"_qs;
    const QString beforeLast = u"\uFF5E"_qs;
    items.add(u"/p/"_qs + last, u"FILE"_qs);
    items.add(u"/p/"_qs + beforeLast, u"FILE"_qs);
    EXPECT_EQ(items.text(0), beforeLast);
    EXPECT_EQ(items.text(1), last);
}
