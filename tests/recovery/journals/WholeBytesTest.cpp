// A journal that needs the bytes of a hex document as a whole, which may be many, on a disk that is full.

#include "recovery/journals/JournalFixture.h"
#include "recovery/journals/RetryDelay.h"
#include "support/FailingFileSystem.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

namespace {

/// A hex document whose bytes the journal needs as a whole, on a disk that is full.
class JournalOfManyBytes : public JournalFixture {
 protected:
    void SetUp() override {
        m_calls.fail(SystemCall::Clone, 0, EOPNOTSUPP);
        const QString path = file(QByteArray(1'000, 'o'));
        m_handle = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC);
        m_base.view = JournalBase::View::Hex;
        m_base.path = path;
    }
    void TearDown() override { ::close(m_handle); }
    void overwrite(Journal& journal, qint64 at) const {
        EXPECT_EQ(::pwrite(m_handle, "n", 1, at), 1);
        journal.overwrite(at, "n");
    }

    FailingFileSystem m_calls;
    JournalBase m_base;
    int m_handle = -1;
};

}  // namespace

TEST_F(JournalOfManyBytes, FindsOutBeforeItWritesThatTheDiskIsFull) {
    m_calls.fail(SystemCall::Reserve, 0, ENOSPC);
    const auto journals = makeJournals(m_calls);
    const auto journal = journals->begin(m_base);
    journal->setWhole(m_handle);
    EXPECT_FALSE(journals->flush(Long));
    const int reads = m_calls.count(SystemCall::ReadAt);
    EXPECT_FALSE(journals->flush(Long));
    EXPECT_EQ(m_calls.count(SystemCall::Reserve), 2);
    EXPECT_EQ(m_calls.count(SystemCall::ReadAt), reads);
    EXPECT_EQ(names(u"*.base"_qs), QStringList());
    m_calls.recover(SystemCall::Reserve, 0);
    overwrite(*journal, 7);
    EXPECT_TRUE(journals->flush(Long));
    EXPECT_EQ(names(u"*.base"_qs).size(), 1);
}

/// Where space cannot be reserved, the bytes are copied all the same.
TEST_F(JournalOfManyBytes, IsCopiedWhereNothingCanBeReserved) {
    m_calls.fail(SystemCall::Reserve, 0, EOPNOTSUPP);
    const auto journals = makeJournals(m_calls);
    const auto journal = journals->begin(m_base);
    journal->setWhole(m_handle);
    EXPECT_TRUE(journals->flush(Long));
    EXPECT_EQ(bytesOf(folder() + u'/' + names(u"*.base"_qs).value(0)), QByteArray(1'000, 'o'));
}

/// The delay before the next attempt is an hour here.
TEST_F(JournalOfManyBytes, IsNotCopiedAgainWithEachEdit) {
    m_calls.fail(SystemCall::Reserve, 0, ENOSPC);
    Journals::Limits limits = patient();
    limits.afterLast = std::chrono::milliseconds(1);
    limits.longestRetry = limits.whileEditing;
    const auto journals = makeJournals(m_calls, limits);
    const auto journal = journals->begin(m_base);
    journal->setWhole(m_handle);
    for (int i = 0; i < 40; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        overwrite(*journal, i);
    }
    EXPECT_FALSE(journals->flush(Long));  // tries at once
    EXPECT_EQ(m_calls.count(SystemCall::Reserve), 2);
    m_calls.recover(SystemCall::Reserve, 0);
    EXPECT_TRUE(journals->flush(Long));
    EXPECT_EQ(bytesOf(folder() + u'/' + names(u"*.base"_qs).value(0)), QByteArray(40, 'n') + QByteArray(960, 'o'));
}

/// With edits in the middle of it.
TEST_F(JournalOfManyBytes, ThatCouldNotBeCopiedAtFirstIsWholeInTheEnd) {
    {
        const auto journals = makeJournals(m_calls);
        const auto journal = journals->begin(m_base);
        journal->setWhole(m_handle);
        for (const SystemCall call : {SystemCall::Reserve, SystemCall::Open, SystemCall::Write, SystemCall::Flush}) {
            m_calls.fail(call, 0, ENOSPC);
            overwrite(*journal, int(call));
            EXPECT_FALSE(journals->flush(Long)) << int(call);
            m_calls.recover(call, 0);
        }
        EXPECT_TRUE(journals->flush(Long));
    }
    const auto journals = makeJournals();
    const auto found = only(journals->takeAbandoned());
    ASSERT_NE(found, nullptr);
    ASSERT_EQ(found->restore(), Outcome::Restored);
    QByteArray expected(1'000, 'o');
    for (const SystemCall call : {SystemCall::Reserve, SystemCall::Open, SystemCall::Write, SystemCall::Flush})
        expected[int(call)] = 'n';
    EXPECT_EQ(bytesOf(found->basePath()), expected);
}

TEST(RetryDelay, DoublesUpToItsLimit) {
    using std::chrono::milliseconds;
    RetryDelay delay(milliseconds(5), milliseconds(15));
    for (const int expected : {5, 10, 15, 15}) {
        EXPECT_EQ(delay.next(), milliseconds(expected));
    }
    delay.reset();
    EXPECT_EQ(delay.next(), milliseconds(5));
}
