#include "document/DocumentFixture.h"

using documenttest::setTime;
using documenttest::SomeTime;
using documenttest::writeFile;

/// The check whether another program changed the file of a document.
class FileCheck : public DocumentFixture {
 protected:
    void SetUp() override {
        m_file = fileOf("one");
        ASSERT_TRUE(open(m_file));
    }

    QString changedQuestion() const {
        return QLatin1Char('\'') + m_file + u"' has been changed, do you want to reload it."_qs;
    }
    QString deletedMessage() const { return QLatin1Char('\'') + m_file + u"' has been deleted!"_qs; }

    void expectNothingTold() {
        EXPECT_TRUE(m_prompts.questions.isEmpty());
        EXPECT_TRUE(m_prompts.messages.isEmpty());
    }

    QString m_file;
};

TEST_F(FileCheck, AnUnchangedFileAsksNothing) {
    EXPECT_FALSE(m_document.FileNeedToReload());
    expectNothingTold();
}

TEST_F(FileCheck, AnUntitledDocumentAsksNothing) {
    frmDocument untitled(&m_host, m_services);
    EXPECT_FALSE(untitled.FileNeedToReload());
    EXPECT_EQ(untitled.KnownUpdate, QString());
    expectNothingTold();
}

TEST_F(FileCheck, AChangedFileAsksWhetherToReload) {
    writeFile(m_file, "two");
    setTime(m_file, SomeTime + 1);
    m_prompts.answerYes();
    EXPECT_TRUE(m_document.FileNeedToReload());
    EXPECT_EQ(m_prompts.questions, QStringList(changedQuestion()));
    EXPECT_EQ(view().Text(), u"one"_qs);
    m_document.ReloadFile();
    EXPECT_EQ(view().Text(), u"two"_qs);
    EXPECT_FALSE(m_document.FileNeedToReload());
}

TEST_F(FileCheck, TheQuestionSaysThatUnsavedChangesWillBeLostWhenThereAreAny) {
    setTime(m_file, SomeTime + 1);
    m_prompts.answerNo();
    EXPECT_FALSE(m_document.FileNeedToReload());
    type(u"x"_qs);
    setTime(m_file, SomeTime + 2);
    m_prompts.answerNo();
    EXPECT_FALSE(m_document.FileNeedToReload());
    EXPECT_EQ(m_prompts.questions, QStringList({changedQuestion(), changedQuestion()}));
    EXPECT_EQ(m_prompts.informativeTexts, QStringList({QString(), u"Unsaved changes will be lost."_qs}));
}

TEST_F(FileCheck, NoKeepsTheTextAndTheQuestionReturnsOnlyWithAnotherTime) {
    setTime(m_file, SomeTime + 1);
    m_prompts.answerNo();
    EXPECT_FALSE(m_document.FileNeedToReload());
    EXPECT_FALSE(m_document.FileNeedToReload());
    EXPECT_EQ(m_prompts.questions.size(), 1);
    setTime(m_file, SomeTime + 2);
    m_prompts.answerNo();
    EXPECT_FALSE(m_document.FileNeedToReload());
    EXPECT_EQ(m_prompts.questions, QStringList({changedQuestion(), changedQuestion()}));
    EXPECT_EQ(view().Text(), u"one"_qs);
}

TEST_F(FileCheck, AnOlderTimeIsAChangeToo) {
    setTime(m_file, SomeTime - 1);
    m_prompts.answerNo();
    EXPECT_FALSE(m_document.FileNeedToReload());
    EXPECT_EQ(m_prompts.questions.size(), 1);
}

TEST_F(FileCheck, ARewriteWithinTheSameSecondIsNotNoticed) {
    writeFile(m_file, "something longer");
    setTime(m_file, SomeTime);
    EXPECT_FALSE(m_document.FileNeedToReload());
    expectNothingTold();
}

TEST_F(FileCheck, AFileBackAtTheLoadedTimeAsksNothing) {
    setTime(m_file, SomeTime + 1);
    m_prompts.answerNo();
    EXPECT_FALSE(m_document.FileNeedToReload());
    setTime(m_file, SomeTime);
    EXPECT_FALSE(m_document.FileNeedToReload());
    EXPECT_EQ(m_prompts.questions.size(), 1);
    EXPECT_EQ(m_document.KnownUpdate, m_document.LastUpdate);
}

TEST_F(FileCheck, ADeletedFileIsToldOnceAndTheDocumentStays) {
    type(u"x"_qs);
    ASSERT_TRUE(QFile::remove(m_file));
    EXPECT_FALSE(m_document.FileNeedToReload());
    EXPECT_EQ(m_prompts.messages, QStringList(deletedMessage()));
    EXPECT_FALSE(m_document.FileNeedToReload());
    EXPECT_FALSE(m_document.FileNeedToReload());
    EXPECT_EQ(m_prompts.messages.size(), 1);
    EXPECT_TRUE(m_document.isChange);
    EXPECT_EQ(m_document.filename, m_file);
    EXPECT_EQ(view().Text(), u"xone"_qs);
    EXPECT_TRUE(m_prompts.questions.isEmpty());
}

TEST_F(FileCheck, ADeletedFileLeavesAnUnchangedDocumentUnchanged) {
    ASSERT_TRUE(QFile::remove(m_file));
    EXPECT_FALSE(m_document.FileNeedToReload());
    EXPECT_FALSE(m_document.isChange);
}

TEST_F(FileCheck, AFileThatComesBackWithTheSavedTimeAsksNothing) {
    ASSERT_TRUE(QFile::remove(m_file));
    EXPECT_FALSE(m_document.FileNeedToReload());
    fileOf("one");
    EXPECT_FALSE(m_document.FileNeedToReload());
    EXPECT_TRUE(m_prompts.questions.isEmpty());
    ASSERT_TRUE(QFile::remove(m_file));
    EXPECT_FALSE(m_document.FileNeedToReload());
    EXPECT_EQ(m_prompts.messages, QStringList({deletedMessage(), deletedMessage()}));
}

TEST_F(FileCheck, AFileThatComesBackWithAnotherTimeAsks) {
    ASSERT_TRUE(QFile::remove(m_file));
    EXPECT_FALSE(m_document.FileNeedToReload());
    fileOf("two");
    setTime(m_file, SomeTime + 1);
    m_prompts.answerYes();
    EXPECT_TRUE(m_document.FileNeedToReload());
    EXPECT_EQ(m_prompts.questions, QStringList(changedQuestion()));
}

TEST_F(FileCheck, ASaveMakesTheFileTheKnownOne) {
    setTime(m_file, SomeTime + 1);
    ASSERT_TRUE(m_document.SaveFile(m_file, 1, false));
    EXPECT_FALSE(m_document.FileNeedToReload());
    expectNothingTold();
}

TEST_F(FileCheck, AFileNameWithPercentSignsIsShownAsItIs) {
    m_file = fileOf("one", u"100%1 %2.txt"_qs);
    ASSERT_TRUE(open(m_file));
    setTime(m_file, SomeTime + 1);
    m_prompts.answerNo();
    EXPECT_FALSE(m_document.FileNeedToReload());
    EXPECT_EQ(m_prompts.questions, QStringList(changedQuestion()));
}

TEST_F(FileCheck, TimeAndSizeAreGivenAsTexts) {
    QString time;
    QString size;
    m_document.LastUpdateTime(time, size);
    EXPECT_EQ(time, m_document.LastUpdate);
    EXPECT_EQ(time.size(), u"2023/11/14 22:13:20"_qs.size());
    EXPECT_EQ(size, u"3"_qs);
}

TEST_F(FileCheck, AnUntitledDocumentHasNeitherTimeNorSize) {
    const frmDocument untitled(&m_host, m_services);
    QString time = u"before"_qs;
    QString size = u"before"_qs;
    untitled.LastUpdateTime(time, size);
    EXPECT_EQ(time, QString());
    EXPECT_EQ(size, QString());
}
