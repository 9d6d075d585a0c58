// Files that never answer, as on a network that is gone: the journals of all documents are written all the same.

#include "recovery/journals/JournalFixture.h"
#include "support/FailingFileSystem.h"

#include <QThread>

#include <fcntl.h>
#include <unistd.h>

#include <semaphore>

namespace {

using namespace std::chrono_literals;

/// A file system in which one file does not answer until it is let.
class SilentFile : public FileSystemCalls {
 public:
    explicit SilentFile(const QString& path) : m_path(QFile::encodeName(path)) {}

    int stat(const char* path, struct stat* status) override {
        if (m_path == path)
            stop();
        return FileSystemCalls::stat(path, status);
    }
    /// Of bytes that are open already.
    int cloneFile(int to, int from) override {
        if (stopsClones)
            stop();
        return FileSystemCalls::cloneFile(to, from);
    }
    void waitUntilReached() { m_reached.acquire(); }
    void letGo() { m_gate.release(); }

    std::atomic<bool> stopsClones{false};

 private:
    void stop() {
        m_reached.release();
        m_gate.acquire();
        m_gate.release();
    }

    const QByteArray m_path;
    std::counting_semaphore<> m_reached{0};
    std::counting_semaphore<> m_gate{0};
};

class JournalBases : public JournalFixture {
 protected:
    static Journals::Limits quick() {
        Journals::Limits limits = patient();
        limits.afterLast = 1ms;
        limits.atEnd = 1ms;
        return limits;
    }
    /// The texts that the next start would bring back if the process were killed now; "lost" for one that it would set
    /// aside.
    std::vector<std::string> textsAfterKill() {
        const QString copy = at(u"copy%1"_qs.arg(++m_copies));
        QDir().mkpath(copy);
        for (const QString& name : names()) {
            const QString from = folder() + u'/' + name;
            // It may be renamed at this very moment.
            EXPECT_TRUE(QFile::copy(from, copy + u'/' + name) || !QFile::exists(from));
        }
        std::vector<std::string> texts;
        Journals journals(copy, FileSystemCalls::system(), patient());
        for (const auto& found : journals.takeAbandoned()) {
            const Outcome outcome = found->restore();
            EXPECT_TRUE(outcome == Outcome::Restored || outcome == Outcome::Lost);
            texts.push_back(outcome == Outcome::Restored ? bytesOf(found->textPath()).toStdString() : "lost");
        }
        return texts;
    }
    void waitForTexts(const std::vector<std::string>& expected) {
        while (textsAfterKill() != expected)
            QThread::msleep(5);
    }
    qint64 journalSize() const { return QFileInfo(journalPath()).size(); }

 private:
    int m_copies = 0;
};

TEST_F(JournalBases, AFileThatDoesNotAnswerStopsNoJournal) {
    const QString silent = file("one", u"silent"_qs);
    const QString other = file("two", u"other"_qs);
    SilentFile calls(silent);
    const auto journals = makeJournals(calls, quick());
    const auto first = journals->begin(baseOf(silent));
    first->insert(0, "a");
    calls.waitUntilReached();
    const auto second = journals->begin(baseOf(other));
    const auto third = journals->begin(JournalBase());
    std::string text;
    for (int batch = 0; batch < 3; ++batch) {
        second->insert(0, "b");
        waitForTexts({"a" + text + "one", "b" + text + "two"});
        first->insert(1, "x");
        second->insert(1, "x");
        second->remove(0, 1);
        waitForTexts({"ax" + text + "one", "x" + text + "two"});
        text.insert(0, "x");
    }
    third->insert(0, "no file");
    waitForTexts({"a" + text + "one", text + "two", "no file"});
    calls.letGo();
}

TEST_F(JournalBases, BytesThatAreCopiedForLongStopNoJournal) {
    const QString path = file("0123");
    const JournalBase base = baseOf(path, JournalBase::View::Hex);
    const int handle = ::open(QFile::encodeName(file("01x3", u"working copy"_qs)).constData(), O_RDONLY | O_CLOEXEC);
    SilentFile calls{QString()};
    calls.stopsClones = true;
    const auto journals = makeJournals(calls, quick());
    const auto bytes = journals->begin(base);
    bytes->setWhole(handle);
    ::close(handle);
    calls.waitUntilReached();
    const auto text = journals->begin(JournalBase());
    for (const char* expected : {"a", "ba", "cba"}) {
        text->insert(0, {expected, 1});
        waitForTexts({expected});
    }
    calls.letGo();
    EXPECT_TRUE(journals->flush(Long));
    EXPECT_EQ(bytesOf(folder() + u'/' + names(u"*.base"_qs).value(0)), "01x3");
}

TEST_F(JournalBases, WithoutACopyYetTheFileIsTheBaseAsLongAsItIsAsItWas) {
    const QString path = file("one");
    SilentFile calls(path);
    const auto journals = makeJournals(calls, quick());
    const auto journal = journals->begin(baseOf(path));
    journal->insert(0, "x");
    calls.waitUntilReached();
    EXPECT_EQ(names(u"*.base"_qs), QStringList());
    EXPECT_EQ(textsAfterKill(), std::vector<std::string>{"xone"});
    put(path, "One");
    EXPECT_EQ(textsAfterKill(), std::vector<std::string>{"lost"});
    EXPECT_TRUE(QFile::remove(path));
    EXPECT_EQ(textsAfterKill(), std::vector<std::string>{"lost"});
    calls.letGo();
    // The document is still there to be asked.
    EXPECT_TRUE(journals->flush(Long));
    EXPECT_TRUE(journal->needsWhole());
    journal->setWhole({"xone"});
    EXPECT_TRUE(journals->flush(Long));
    EXPECT_EQ(textsAfterKill(), std::vector<std::string>{"xone"});
}

TEST_F(JournalBases, ADiscardedJournalDoesNotWaitForItsFile) {
    const QString path = file("one");
    SilentFile calls(path);
    const auto journals = makeJournals(calls, quick());
    const auto journal = journals->begin(baseOf(path));
    journal->insert(0, "x");
    calls.waitUntilReached();
    EXPECT_EQ(names().size(), 1);
    journal->discard();
    EXPECT_TRUE(journals->flush(Long));
    EXPECT_EQ(names(), QStringList());
    calls.letGo();
}

TEST_F(JournalBases, AFlushThatTheFileDoesNotAnswerIsGivenUpWithTheEditsOnTheDisk) {
    const QString path = file("one");
    SilentFile calls(path);
    const auto journals = makeJournals(calls);
    const auto journal = journals->begin(baseOf(path));
    journal->insert(0, "x");
    EXPECT_FALSE(journals->flush(20ms));
    calls.waitUntilReached();
    EXPECT_EQ(textsAfterKill(), std::vector<std::string>{"xone"});
    // It is over: what follows waits for the usual delay.
    const qint64 size = journalSize();
    for (int i = 0; i < 5; ++i) {
        journal->insert(0, "y");
        QThread::msleep(20);
    }
    EXPECT_EQ(journalSize(), size);
    calls.letGo();
    EXPECT_TRUE(journals->flush(Long));
    put(path, "another");
    EXPECT_EQ(textsAfterKill(), std::vector<std::string>{"yyyyyxone"});
}

TEST_F(JournalBases, TheEndDoesNotWaitForAFileThatDoesNotAnswer) {
    const QString path = file("one");
    // A thread may still use it after the test.
    static SilentFile calls(path);
    {
        const auto journals = makeJournals(calls, quick());
        const auto journal = journals->begin(baseOf(path));
        journal->insert(0, "x");
        calls.waitUntilReached();
        journal->insert(0, "y");
    }
    EXPECT_EQ(recovered(), "yxone");
    calls.letGo();
    EXPECT_EQ(names(u"*.base"_qs), QStringList());
}

TEST_F(JournalBases, AJournalThatOutgrowsATextWithoutACopyAsksForTheWhole) {
    const QString path = file("one two three");
    JournalLimits limits = patient();
    limits.copied = 4;
    limits.compacted = 400;
    FailingFileSystem calls;
    calls.fail(SystemCall::Clone, 0, EOPNOTSUPP);
    const auto journals = makeJournals(calls, limits);
    const auto journal = journals->begin(baseOf(path));
    journal->insert(0, "x");
    EXPECT_TRUE(journals->flush(Long));
    EXPECT_FALSE(journal->needsWhole());
    const std::string added(400, 'a');
    journal->insert(0, added);
    EXPECT_TRUE(journals->flush(Long));
    ASSERT_TRUE(journal->needsWhole());
    const std::string whole = added + "xone two three";
    journal->setWhole({whole});
    EXPECT_TRUE(journals->flush(Long));
    EXPECT_FALSE(journal->needsWhole());
    put(path, "another");
    EXPECT_EQ(textsAfterKill(), std::vector<std::string>{whole});
    // From now on it is made shorter without the file.
    for (int i = 0; i < 20; ++i) {
        journal->insert(0, added);
        journal->remove(0, 400);
        journal->insert(0, added);
        journal->remove(0, 400);
        EXPECT_TRUE(journals->flush(Long));
    }
    EXPECT_LE(journalSize(), 3'000);
    EXPECT_EQ(textsAfterKill(), std::vector<std::string>{whole});
}

}  // namespace
