#include "spelling/dictionary/DictionaryProcess.h"
#include "spelling/dictionary/DictionaryWork.h"
#include "support/DictionaryFolder.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>

using State = DictionaryProcess::State;
using std::chrono::milliseconds;

namespace {

constexpr milliseconds Patience{30'000};

class DictionaryProcessFixture : public testing::Test {
 protected:
    /// Why the dictionary cannot be used; empty: it is loaded.
    static QString failureOf(const Dictionary& dictionary) {
        DictionaryProcess process(dictionary);
        process.wait(Patience);
        EXPECT_EQ(process.isLoaded(), process.error().isEmpty());
        return process.error();
    }
    static std::vector<bool> check(DictionaryProcess& process, const QStringList& words) {
        EXPECT_EQ(process.wait(Patience), State::Ready) << process.error().toStdString();
        process.check(words);
        EXPECT_EQ(process.wait(Patience), State::Ready) << process.error().toStdString();
        return process.verdicts();
    }
    static QStringList suggestions(DictionaryProcess& process, const QString& word) {
        EXPECT_EQ(process.wait(Patience), State::Ready) << process.error().toStdString();
        process.suggest(word);
        EXPECT_EQ(process.wait(Patience), State::Ready) << process.error().toStdString();
        return process.suggestions();
    }
    QString failureOfWork(const ChildProcess::Work& work) {
        DictionaryProcess process(u"Test"_qs, work, {milliseconds(200), milliseconds(200), milliseconds(200)});
        if (process.wait(Patience) == State::Ready) {
            process.check({u"one"_qs});
            process.wait(milliseconds(300));
            process.wait(milliseconds(300));
        }
        EXPECT_EQ(process.wait(milliseconds(300)), State::Failed);
        return process.error();
    }

    DictionaryFolder m_folder;
};

}  // namespace

TEST_F(DictionaryProcessFixture, WordsAreCheckedInTheirOrder) {
    DictionaryProcess process(m_folder.make(u"t"_qs, "one\ntwo\nthree"));
    EXPECT_EQ(check(process, {u"two"_qs, u"four"_qs, u"one"_qs, u"One"_qs, u"oen"_qs}),
              (std::vector<bool>{true, false, true, true, false}));
    EXPECT_EQ(check(process, {}), std::vector<bool>());
}

TEST_F(DictionaryProcessFixture, SuggestionsAreOfferedForAWord) {
    DictionaryProcess process(m_folder.make(u"t"_qs, "hello\nyellow\nworld"));
    EXPECT_EQ(suggestions(process, u"helo"_qs).value(0), u"hello"_qs);
    EXPECT_EQ(suggestions(process, u"xqzxqzxqz"_qs), QStringList());
}

TEST_F(DictionaryProcessFixture, TheDictionaryHasItsOwnEncoding) {
    DictionaryProcess process(m_folder.make(u"t"_qs,
                                            "na\xEFve\nstra\xDF"
                                            "e",
                                            "SET ISO8859-1\nTRY aeiouvn\xEF\n"));
    EXPECT_EQ(check(process, {u"na\u00efve"_qs, u"stra\u00dfe"_qs, u"naive"_qs, u"\u043f\u0440"_qs}),
              (std::vector<bool>{true, true, false, false}));
    EXPECT_EQ(suggestions(process, u"naive"_qs).value(0), u"na\u00efve"_qs);
    EXPECT_EQ(suggestions(process, u"\u043f\u0440"_qs), QStringList());
}

TEST_F(DictionaryProcessFixture, BothFormsOfTheApostropheAreKnown) {
    DictionaryProcess process(m_folder.make(u"t"_qs, "don't"));
    EXPECT_EQ(check(process, {u"don't"_qs, u"don\u2019t"_qs, u"dont"_qs}), (std::vector<bool>{true, true, false}));
    EXPECT_EQ(suggestions(process, u"dno\u2019t"_qs).value(0), u"don\u2019t"_qs);
}

TEST_F(DictionaryProcessFixture, AbbreviationsAreKnownWithTheirStop) {
    DictionaryProcess process(m_folder.make(u"t"_qs, "etc.\none"));
    EXPECT_EQ(check(process, {u"etc."_qs, u"etc"_qs, u"one."_qs}), (std::vector<bool>{true, false, true}));
}

TEST_F(DictionaryProcessFixture, MissingFilesAreNamed) {
    const Dictionary dictionary = m_folder.at(u"gone"_qs);
    EXPECT_TRUE(failureOf(dictionary).contains(dictionary.affixPath));
    m_folder.write(u"gone.aff"_qs, "SET UTF-8\n");
    EXPECT_TRUE(failureOf(dictionary).contains(dictionary.wordsPath));
}

TEST_F(DictionaryProcessFixture, DamagedFilesAreNamedWithTheFault) {
    const Dictionary dictionary = m_folder.make(u"t"_qs, "one");
    const auto fault = [](const QString& path, const QString& what) {
        return u"The dictionary '%1' is damaged: %2."_qs.arg(path, what);
    };
    m_folder.write(u"t.dic"_qs, "");
    EXPECT_EQ(failureOf(dictionary), fault(dictionary.wordsPath, u"it is empty"_qs));
    m_folder.write(u"t.dic"_qs, "no number\n");
    EXPECT_EQ(failureOf(dictionary), fault(dictionary.wordsPath, u"it does not begin with the number of its words"_qs));
    m_folder.write(u"t.dic"_qs, "200000000\none\n");
    EXPECT_EQ(failureOf(dictionary), fault(dictionary.wordsPath, u"it announces more words than it can have"_qs));
    m_folder.write(u"t.dic"_qs, QByteArray("\x7f"
                                           "ELF\0\0\0",
                                           7));
    EXPECT_EQ(failureOf(dictionary), fault(dictionary.wordsPath, u"it is not a text"_qs));
    m_folder.make(u"t"_qs, "one", "SET NONSENSE-7\n");
    EXPECT_EQ(failureOf(dictionary), fault(dictionary.affixPath, u"its encoding NONSENSE-7 is not known"_qs));
    m_folder.make(u"t"_qs, "one/Z", "SET UTF-8\nNEEDAFFIX Z\n");
    EXPECT_EQ(failureOf(dictionary), fault(dictionary.wordsPath, u"none of its first words is known by it"_qs));
}

TEST_F(DictionaryProcessFixture, WhateverTheFilesHoldTheProgramGoesOn) {
    const Dictionary dictionary = m_folder.make(u"t"_qs, "one");
    quint32 state = 12345;
    for (int i = 0; i < 30; ++i) {
        QByteArray affix("SET UTF-8\n");
        QByteArray words("100\n");
        for (int k = 0; k < 2000; ++k) {
            state = state * 1664525 + 1013904223;
            const char each = static_cast<char>(state >> 24);
            (k % 2 == 0 ? affix : words).append(each == 0 ? '\n' : each);
        }
        m_folder.write(u"t.aff"_qs, i % 3 == 0 ? QByteArray() : affix);
        m_folder.write(u"t.dic"_qs, words);
        DictionaryProcess process(dictionary);
        if (process.wait(Patience) == State::Ready) {
            process.check({u"one"_qs, u"word"_qs});
            process.wait(Patience);
        }
        EXPECT_NE(process.state(), State::Busy);
    }
}

TEST_F(DictionaryProcessFixture, ALinkThatLeadsToAPipeIsNotOpened) {
    const Dictionary dictionary = m_folder.make(u"t"_qs, "one");
    ASSERT_TRUE(QFile::remove(dictionary.wordsPath));
    ASSERT_TRUE(QFile::link(u"/dev/zero"_qs, dictionary.wordsPath));
    EXPECT_TRUE(failureOf(dictionary).contains(dictionary.wordsPath));
}

TEST_F(DictionaryProcessFixture, ACrashIsReportedWhereverItHappens) {
    const QString crashed = u"The dictionary Test can't be used: the spell checker crashed with it."_qs;
    EXPECT_EQ(failureOfWork([](ParentLink&) { std::raise(SIGKILL); }), crashed);
    EXPECT_EQ(failureOfWork([](ParentLink& link) { link.send("L"); }), crashed);
    EXPECT_EQ(failureOfWork([](ParentLink& link) {
                  link.send("L");
                  link.receive();
                  link.send("wrong number of answers");
                  pause();
              }),
              crashed);
}

TEST_F(DictionaryProcessFixture, WhatDoesNotAnswerIsGivenUp) {
    const QString silent = u"The dictionary Test can't be used: the spell checker doesn't answer."_qs;
    const auto isSilent = [](ParentLink&) {
        for (;;)
            pause();
    };
    DictionaryProcess process(u"Test"_qs, isSilent, {milliseconds(1), milliseconds(1), milliseconds(1)});
    EXPECT_EQ(process.wait(milliseconds(50)), State::Failed);
    EXPECT_EQ(process.error(), silent);
    EXPECT_FALSE(process.isLoaded());
}

TEST_F(DictionaryProcessFixture, TheDictionaryOfTheSystemKnowsItsLanguage) {
    DictionaryProcess process(Dictionary{
        u"en_US"_qs, u"English"_qs, u"/usr/share/hunspell/en_US.aff"_qs, u"/usr/share/hunspell/en_US.dic"_qs, {}});
    EXPECT_EQ(check(process, {u"spelling"_qs, u"speling"_qs, u"doesn\u2019t"_qs}),
              (std::vector<bool>{true, false, true}));
    EXPECT_TRUE(suggestions(process, u"speling"_qs).contains(u"spelling"_qs));
}
