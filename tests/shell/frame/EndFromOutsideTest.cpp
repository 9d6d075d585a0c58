#include "recovery/journals/FoundJournal.h"
#include "recovery/journals/Journals.h"
#include "shell/FrameFixture.h"
#include "support/FailingFileSystem.h"

#include <QDir>
#include <QFileInfo>

#include <chrono>

namespace {

class EndFromOutside : public FrameFixture {
 protected:
    void end() {
        m_frame->endFromOutside([this] { ++m_ends; });
    }
    bool endsSoon() {
        return QTest::qWaitFor([this] { return m_ends > 0; }, 30'000);
    }
    QByteArray session() { return QFileInfo::exists(sessionFile()) ? bytesOf(sessionFile()) : QByteArray(); }
    QString sessionFile() const { return ownFile("lastopen.idx"); }

    int m_ends = 0;
};

}  // namespace

TEST_F(EndFromOutside, WritesSessionAndListsWithoutAQuestion) {
    const QString file = fileOf("a\n");
    start();
    open(file);
    type(u"changed "_qs);
    end();
    EXPECT_EQ(m_ends, 1);
    EXPECT_TRUE(session().contains(file.toUtf8()));
    EXPECT_TRUE(bytesOf(ownFile("lastfiles.idx")).contains(file.toUtf8()));
    EXPECT_TRUE(m_prompts.questions.isEmpty());
    EXPECT_EQ(documents().size(), 1);
    EXPECT_TRUE(active()->isChange);
    EXPECT_EQ(bytesOf(file), "a\n");
}

TEST_F(EndFromOutside, WritesNothingWhileTheFrameIsLoading) {
    QFile list(ownFile("lastfiles.idx"));
    ASSERT_TRUE(list.open(QIODevice::WriteOnly));
    list.write("/kept.txt\r\n");
    list.close();
    m_makePanel = [this](const WorkspaceServices&) -> PanelLink& {
        QTimer::singleShot(0, qApp, [this] { end(); });  // runs where a step of the load yields
        return m_explorer;
    };
    load();
    ASSERT_EQ(m_ends, 1);
    EXPECT_FALSE(m_steps.isEmpty());
    EXPECT_FALSE(QFileInfo::exists(sessionFile()));
    EXPECT_EQ(bytesOf(ownFile("lastfiles.idx")), "/kept.txt\r\n");
}

TEST_F(EndFromOutside, WaitsForWhatDisablesClose) {
    start();
    house().systemClose.enable(false);
    end();
    EXPECT_EQ(m_ends, 0);
    house().systemClose.enable(true);
    EXPECT_TRUE(endsSoon());
    EXPECT_FALSE(session().isEmpty());
}

TEST_F(EndFromOutside, DoesNotWaitForEver) {
    start();
    house().systemClose.enable(false);
    end();
    EXPECT_TRUE(endsSoon());
    EXPECT_FALSE(session().isEmpty());
    house().systemClose.enable(true);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_ends, 1);
}

TEST_F(EndFromOutside, KeepsTheSessionOfACloseThatIsUnderWay) {
    const QString file = fileOf("a\n");
    const QString other = fileOf("b\n", u"b.txt"_qs);
    start();
    open(file);
    open(other);
    type(u"changed "_qs);
    QByteArray inTheQuestion;
    m_prompts.answerNo();
    m_prompts.whileShown([&] {
        end();
        inTheQuestion = session();
    });
    m_frame->close();
    EXPECT_EQ(m_ends, 1);
    EXPECT_TRUE(inTheQuestion.contains(file.toUtf8()));
    EXPECT_TRUE(inTheQuestion.contains(other.toUtf8()));
}

TEST_F(EndFromOutside, MayOnlyHaveToWrite) {
    const QString file = fileOf("a\n");
    start();
    open(file);
    m_frame->writeKept();
    EXPECT_TRUE(session().contains(file.toUtf8()));
    EXPECT_FALSE(m_frame->hasEnded());
    m_frame->close();
    EXPECT_TRUE(m_frame->hasEnded());
}

TEST_F(EndFromOutside, CompletesTheJournalOfAFileThatWasChangedAfterTheLastEdit) {
    constexpr std::chrono::minutes Long(1);
    FailingFileSystem calls;
    calls.fail(SystemCall::Clone, 0, EOPNOTSUPP);
    JournalLimits limits;
    limits.copied = 1;
    const QTemporaryDir folder;
    Journals journals(folder.filePath(u"recovery"_qs), calls, limits);
    m_journals = &journals;
    const QString file = fileOf("one");
    start();
    open(file);
    type(u"x"_qs);
    EXPECT_TRUE(journals.flush(Long));
    ASSERT_EQ(fileOf("another"), file);
    end();
    EXPECT_EQ(m_ends, 1);
    EXPECT_TRUE(journals.flush(Long));

    // As the next start finds it.
    ASSERT_TRUE(QDir().mkpath(folder.filePath(u"copy"_qs)));
    for (const QString& name : QDir(folder.filePath(u"recovery"_qs)).entryList(QDir::Files)) {
        EXPECT_TRUE(QFile::copy(folder.filePath(u"recovery/"_qs + name), folder.filePath(u"copy/"_qs + name)));
    }
    Journals later(folder.filePath(u"copy"_qs));
    const auto found = later.takeAbandoned();
    ASSERT_EQ(found.size(), 1U);
    ASSERT_EQ(found.front()->restore(), FoundJournal::Outcome::Restored);
    EXPECT_EQ(bytesOf(found.front()->textPath()), "xone");
    m_frame.reset();
}
