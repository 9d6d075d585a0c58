#include "platform/Folders.h"
#include "spelling/words/OwnWords.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

class OwnWordsFile : public testing::Test {
 protected:
    QByteArray bytes() const {
        QFile file(m_path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    void write(const QByteArray& bytes) const {
        QFile file(m_path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(u"program/words.txt"_qs);
};

}  // namespace

TEST_F(OwnWordsFile, StandsInTheProgramFolder) {
    EXPECT_EQ(OwnWords::standardPath(), ProgramFolder() + u"/words.txt"_qs);
}

TEST_F(OwnWordsFile, AWordThatIsAddedIsKnownFromThenOn) {
    OwnWords words(m_path);
    EXPECT_FALSE(words.contains(u"qubit"_qs));
    EXPECT_FALSE(words.add(u"qubit"_qs));
    EXPECT_TRUE(words.contains(u"qubit"_qs));
    EXPECT_TRUE(OwnWords(m_path).contains(u"qubit"_qs));
    EXPECT_EQ(bytes(), QByteArray("qubit\r\n"));
}

TEST_F(OwnWordsFile, AWordIsAcceptedAtTheBeginningOfASentence) {
    OwnWords words(m_path);
    words.add(u"qubit"_qs);
    words.add(u"Ziggy"_qs);
    EXPECT_TRUE(words.contains(u"Qubit"_qs));
    EXPECT_FALSE(words.contains(u"ziggy"_qs));
}

TEST_F(OwnWordsFile, FormsOfOneWordAreTheSame) {
    OwnWords words(m_path);
    words.add(u"cafe\u0301"_qs);
    EXPECT_TRUE(words.contains(u"caf\u00e9"_qs));
    words.add(u"y\u2019all"_qs);
    EXPECT_TRUE(words.contains(u"y'all"_qs));
    EXPECT_TRUE(words.contains(u"y\u2019\u00adall"_qs));
}

TEST_F(OwnWordsFile, NoWordStandsThereTwice) {
    OwnWords words(m_path);
    words.add(u"qubit"_qs);
    words.add(u"qubit"_qs);
    EXPECT_EQ(bytes(), QByteArray("qubit\r\n"));
}

TEST_F(OwnWordsFile, WhatWasWrittenByHandMeanwhileStays) {
    OwnWords words(m_path);
    words.add(u"one"_qs);
    write("one\ntwo\n\n  three  \n");
    EXPECT_FALSE(words.add(u"four"_qs));
    EXPECT_EQ(bytes(), QByteArray("one\r\ntwo\r\n\r\n  three  \r\nfour\r\n"));
    EXPECT_TRUE(words.contains(u"three"_qs));
    EXPECT_FALSE(words.contains(QString()));
}

TEST_F(OwnWordsFile, AWordCanBeTakenOutAgain) {
    OwnWords words(m_path);
    words.add(u"one"_qs);
    words.add(u"two"_qs);
    EXPECT_FALSE(words.remove(u"one"_qs));
    EXPECT_FALSE(words.contains(u"one"_qs));
    EXPECT_EQ(bytes(), QByteArray("two\r\n"));
    EXPECT_FALSE(words.remove(u"never"_qs));
}

TEST_F(OwnWordsFile, AFileThatCannotBeReadIsNotWrittenOver) {
    OwnWords words(m_path);
    ASSERT_TRUE(QDir().mkpath(m_path));
    const SystemError error = words.add(u"one"_qs);
    EXPECT_TRUE(error);
    EXPECT_TRUE(error.description.contains(m_path));
    EXPECT_FALSE(words.contains(u"one"_qs));
}

TEST_F(OwnWordsFile, AFolderThatCannotBeMadeIsAnError) {
    OwnWords words(u"/proc/no/words.txt"_qs);
    EXPECT_TRUE(words.add(u"one"_qs));
    EXPECT_FALSE(words.contains(u"one"_qs));
}

TEST(LookedUpForm, IsComposedAndWithoutSoftHyphens) {
    EXPECT_EQ(lookedUpForm(u"plain"), u"plain"_qs);
    EXPECT_EQ(lookedUpForm(u"cafe\u0301"), u"caf\u00e9"_qs);
    EXPECT_EQ(lookedUpForm(u"co\u00adop"), u"coop"_qs);
}
