// A journal that another one replaces: the work is in one of them at any moment.

#include "recovery/journals/JournalFixture.h"
#include "support/FailingFileSystem.h"

#include <cerrno>
#include <thread>

namespace {

class JournalReplacement : public JournalFixture {
 protected:
    void SetUp() override {
        m_document = file("text");
        m_old = m_journals->begin(baseOf(m_document));
        m_old->insert(0, "old ");
        ASSERT_TRUE(m_journals->flush(Long));
        m_next = m_journals->begin(baseOf(m_document));
        m_next->insert(0, "next ");
    }
    QStringList journalNames() const { return names(u"*.journal"_qs); }

    QString m_document;
    FailingFileSystem m_calls;
    std::unique_ptr<Journals> m_journals = makeJournals(m_calls);
    std::unique_ptr<Journal> m_old;
    std::unique_ptr<Journal> m_next;
};

}  // namespace

TEST_F(JournalReplacement, TakesPlaceAtOnce) {
    const QStringList before = journalNames();
    m_old->replaceBy(*m_next);
    m_old.reset();
    // Without a flush.
    const auto end = std::chrono::steady_clock::now() + Long;
    while ((journalNames().size() != 1 || journalNames() == before) && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    m_next.reset();
    m_journals.reset();
    EXPECT_EQ(recovered(), "next text");
}

TEST_F(JournalReplacement, WaitsForAFullDisk) {
    const QStringList before = journalNames();
    m_calls.fail(SystemCall::Write, 0, ENOSPC);
    m_old->replaceBy(*m_next);
    m_old.reset();
    EXPECT_FALSE(m_journals->flush(Long));
    EXPECT_EQ(journalNames(), before);
    m_calls.recover(SystemCall::Write, 0);
    ASSERT_TRUE(m_journals->flush(Long));
    EXPECT_EQ(journalNames().size(), 1);
    EXPECT_NE(journalNames(), before);
    m_next.reset();
    m_journals.reset();
    EXPECT_EQ(recovered(), "next text");
}

TEST_F(JournalReplacement, DoesNotTakePlaceOnADiskThatStaysFull) {
    m_calls.fail(SystemCall::Write, 0, ENOSPC);
    m_old->replaceBy(*m_next);
    m_old.reset();
    m_next.reset();
    m_journals.reset();
    EXPECT_EQ(recovered(), "old text");
}

TEST_F(JournalReplacement, ByOneThatIsDiscardedLeavesNothing) {
    m_old->replaceBy(*m_next);
    m_old.reset();
    m_next->discard();
    ASSERT_TRUE(m_journals->flush(Long));
    EXPECT_EQ(names(), QStringList());
}

TEST_F(JournalReplacement, ByOneThatIsReplacedItselfLeavesTheLast) {
    const auto last = m_journals->begin(baseOf(m_document));
    m_old->replaceBy(*m_next);
    m_next->replaceBy(*last);
    m_old.reset();
    m_next.reset();
    last->insert(0, "last ");
    ASSERT_TRUE(m_journals->flush(Long));
    EXPECT_EQ(journalNames().size(), 1);
    ASSERT_TRUE(m_journals->flush(Long));
    m_journals.reset();
    EXPECT_EQ(recovered(), "last text");
}
