#include "document/frmDocument.h"
#include "shell/FrameFixture.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Saves of a document whose file somebody else has written to.
class ChangedOnDisk : public FrameFixture {
 protected:
    void SetUp() override {
        start();
        m_file = fileOf("one\n");
        open(m_file);
        type(u"mine "_qs);
    }

    QString question() const { return u"'%1' has been changed on disk. Overwrite it ?"_qs.arg(m_file); }

    /// Writes other bytes of the same length, and gives the file the times that it had.
    void changeUnseenByTheSecond() const {
        struct stat before {};
        ASSERT_EQ(::stat(m_file.toUtf8().constData(), &before), 0);
        fileOf("two\n");
        const timespec times[] = {before.st_atim,
                                  {before.st_mtim.tv_sec, (before.st_mtim.tv_nsec + 1) % 1'000'000'000}};
        ASSERT_EQ(::utimensat(AT_FDCWD, m_file.toUtf8().constData(), times, 0), 0);
    }

    QString m_file;
};

}  // namespace

TEST_F(ChangedOnDisk, AnUnchangedFileIsWrittenWithoutAQuestion) {
    run("mnuFileSave");
    type(u"and more "_qs);
    run("mnuFileSave");
    EXPECT_TRUE(m_prompts.questions.isEmpty());
    EXPECT_EQ(bytesOf(m_file), "mine and more one\n");
}

TEST_F(ChangedOnDisk, NoLeavesTheFileAndTheChanges) {
    fileOf("somebody else's\n");
    m_prompts.answerNo();
    run("mnuFileSave");
    EXPECT_EQ(m_prompts.questions, QStringList(question()));
    EXPECT_EQ(m_prompts.presets, QList<Prompts::Answer>{Prompts::Answer::No});
    EXPECT_EQ(bytesOf(m_file), "somebody else's\n");
    EXPECT_TRUE(active()->isChange);
    EXPECT_EQ(text(), u"mine one\n"_qs);
}

TEST_F(ChangedOnDisk, YesOverwritesAndTheNextSaveAsksNothing) {
    fileOf("somebody else's\n");
    m_prompts.answerYes();
    run("mnuFileSave");
    EXPECT_EQ(bytesOf(m_file), "mine one\n");
    type(u"x"_qs);
    run("mnuFileSave");
    EXPECT_EQ(m_prompts.questions.size(), 1);
}

TEST_F(ChangedOnDisk, AChangeWithinTheSameSecondAndOfTheSameSizeIsSeen) {
    changeUnseenByTheSecond();
    m_prompts.answerNo();
    run("mnuFileSave");
    EXPECT_EQ(m_prompts.questions, QStringList(question()));
    EXPECT_EQ(bytesOf(m_file), "two\n");
}

TEST_F(ChangedOnDisk, AnotherFileOfTheSameNameIsAChange) {
    ASSERT_EQ(::rename(fileOf("one\n", u"other"_qs).toUtf8().constData(), m_file.toUtf8().constData()), 0);
    m_prompts.answerNo();
    run("mnuFileSave");
    EXPECT_EQ(m_prompts.questions, QStringList(question()));
}

TEST_F(ChangedOnDisk, AnotherModeOrLinkIsNoChange) {
    ASSERT_EQ(::chmod(m_file.toUtf8().constData(), 0600), 0);
    ASSERT_EQ(::link(m_file.toUtf8().constData(), path(u"link"_qs).toUtf8().constData()), 0);
    run("mnuFileSave");
    EXPECT_TRUE(m_prompts.questions.isEmpty());
    EXPECT_EQ(bytesOf(m_file), "mine one\n");
}

TEST_F(ChangedOnDisk, AMissingFileIsWrittenWithoutAQuestion) {
    ASSERT_TRUE(QFile::remove(m_file));
    run("mnuFileSave");
    EXPECT_TRUE(m_prompts.questions.isEmpty());
    EXPECT_EQ(bytesOf(m_file), "mine one\n");
}

TEST_F(ChangedOnDisk, AStateForWhichReloadingWasRefusedIsNotAskedAboutAgain) {
    fileOf("somebody else's\n");
    const timespec times[] = {{1'000, 0}, {1'000, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, m_file.toUtf8().constData(), times, 0), 0);
    m_prompts.answerNo();
    m_frame->CheckFileUpdate();
    ASSERT_EQ(m_prompts.questions.size(), 1);
    run("mnuFileSave");
    EXPECT_EQ(m_prompts.questions.size(), 1);
    EXPECT_EQ(bytesOf(m_file), "mine one\n");
}

TEST_F(ChangedOnDisk, AStateAfterTheRefusedOneIsAskedAbout) {
    fileOf("somebody else's\n");
    const timespec times[] = {{1'000, 0}, {1'000, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, m_file.toUtf8().constData(), times, 0), 0);
    m_prompts.answerNo();
    m_frame->CheckFileUpdate();
    fileOf("and once more\n");
    m_prompts.answerNo();
    run("mnuFileSave");
    EXPECT_EQ(m_prompts.questions.back(), question());
    EXPECT_EQ(bytesOf(m_file), "and once more\n");
}

TEST_F(ChangedOnDisk, AReloadedFileIsWrittenWithoutAQuestion) {
    fileOf("somebody else's\n");
    active()->ReloadFile();
    type(u"x"_qs);
    run("mnuFileSave");
    EXPECT_TRUE(m_prompts.questions.isEmpty());
    EXPECT_EQ(bytesOf(m_file), "xsomebody else's\n");
}

TEST_F(ChangedOnDisk, ASaveUnderItsOwnNameThatWasJustAllowedAsksOnce) {
    fileOf("somebody else's\n");
    m_prompts.answerSavePath(m_file);
    m_prompts.answerYes();
    run("mnuFileSaveAs");
    EXPECT_EQ(m_prompts.questions, QStringList(m_file + QLatin1String(" already exist !\nOverwrite it ?")));
    EXPECT_EQ(bytesOf(m_file), "mine one\n");
}

TEST_F(ChangedOnDisk, ASaveInAnEncodingAsksToo) {
    fileOf("somebody else's\n");
    m_prompts.answerNo();
    run("mnuUTF8");
    EXPECT_EQ(m_prompts.questions, QStringList(question()));
    EXPECT_EQ(bytesOf(m_file), "somebody else's\n");
}

TEST_F(ChangedOnDisk, ClosingAsksWhatToDoUntilTheChangesAreSettled) {
    fileOf("somebody else's\n");
    m_prompts.answerYes();  // save
    m_prompts.answerNo();   // overwrite
    m_prompts.answerNo();   // save
    run("mnuFileClose");
    EXPECT_EQ(m_prompts.questions.size(), 3);
    EXPECT_EQ(m_prompts.questions.at(1), question());
    EXPECT_EQ(bytesOf(m_file), "somebody else's\n");
}

TEST_F(ChangedOnDisk, BytesAreAskedAboutLikeText) {
    run("mnuFileSave");
    active()->setTextEdit(false);
    fileOf("two\n");
    m_prompts.answerNo();
    run("mnuFileSave");
    EXPECT_EQ(m_prompts.questions.back(), question());
    EXPECT_EQ(bytesOf(m_file), "two\n");
}
