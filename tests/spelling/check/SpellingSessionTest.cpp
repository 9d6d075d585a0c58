#include "spelling/check/SessionFixture.h"
#include "spelling/check/SpellingSession.h"

#include <unistd.h>

#include <csignal>

using SpellingSessionTest = SessionFixture;

TEST_F(SpellingSessionTest, ATextWithoutMistakesIsFinishedAtOnce) {
    EXPECT_EQ(begin(u"The cat sat on the mat."_qs), State::Finished);
    EXPECT_EQ(m_session->corrections().count(), 0U);
    EXPECT_EQ(m_session->percent(), 100);
    EXPECT_EQ(begin(QString()), State::Finished);
    EXPECT_EQ(begin(u" \r\n\t 12 \n"_qs), State::Finished);
}

TEST_F(SpellingSessionTest, WithoutADictionaryItHasFailed) {
    SpellingSession session(u"one"_qs, m_own);
    EXPECT_EQ(session.state(), State::Failed);
    EXPECT_FALSE(session.hasWork());
}

TEST_F(SpellingSessionTest, MistakesAreFoundInTheirOrderWithTheirPlaces) {
    ASSERT_EQ(begin(u"the kat sat\r\non teh mat"_qs), State::AtMistake);
    EXPECT_EQ(m_session->word(), u"kat"_qs);
    EXPECT_EQ(m_session->place(), (WordSpan{4, 3}));
    EXPECT_EQ(m_session->suggestions().value(0), u"cat"_qs);
    m_session->ignore();
    ASSERT_EQ(runOn(), State::AtMistake);
    EXPECT_EQ(m_session->word(), u"teh"_qs);
    EXPECT_EQ(m_session->place(), (WordSpan{16, 3}));
    m_session->ignore();
    EXPECT_EQ(runOn(), State::Finished);
    EXPECT_EQ(m_session->corrections().count(), 0U);
}

TEST_F(SpellingSessionTest, AChangeConcernsOneWordAlone) {
    begin(u"teh cat, teh mat\r\n"_qs);
    m_session->change(u"the"_qs);
    ASSERT_EQ(runOn(), State::AtMistake);
    EXPECT_EQ(m_session->place(), (WordSpan{9, 3}));
    m_session->change(u"this very"_qs);
    EXPECT_EQ(runOn(), State::Finished);
    EXPECT_EQ(m_session->result(), u"the cat, this very mat\r\n"_qs);
}

TEST_F(SpellingSessionTest, ChangeAllConcernsTheSameWordBehind) {
    begin(u"teh cat\nTeh teh mat\rteh."_qs);
    m_session->changeAll(u"the"_qs);
    ASSERT_EQ(runOn(), State::AtMistake);
    EXPECT_EQ(m_session->word(), u"Teh"_qs);
    m_session->ignore();
    EXPECT_EQ(runOn(), State::Finished);
    EXPECT_EQ(m_session->result(), u"the cat\nTeh the mat\rthe."_qs);
}

TEST_F(SpellingSessionTest, IgnoreConcernsOneWordAndIgnoreAllTheRest) {
    begin(u"foo foo foo bar foo"_qs);
    m_session->ignore();
    ASSERT_EQ(runOn(), State::AtMistake);
    EXPECT_EQ(m_session->place(), (WordSpan{4, 3}));
    m_session->ignoreAll();
    EXPECT_EQ(mistakes(), QStringList(u"bar"_qs));
}

TEST_F(SpellingSessionTest, AnAddedWordIsKnownFromThenOn) {
    begin(u"quux Quux"_qs);
    EXPECT_FALSE(m_session->add());
    EXPECT_EQ(runOn(), State::Finished);
    EXPECT_EQ(begin(u"the quux"_qs), State::Finished);
    const OwnWords again(m_folder.path(u"words.txt"_qs));
    EXPECT_TRUE(again.contains(u"quux"_qs));
}

TEST_F(SpellingSessionTest, AWordThatCannotBeAddedStaysAMistake) {
    begin(u"quux"_qs);
    ASSERT_TRUE(QDir().mkpath(m_folder.path(u"words.txt"_qs)));
    EXPECT_TRUE(m_session->add());
    EXPECT_EQ(m_session->state(), State::AtMistake);
    EXPECT_FALSE(m_session->canUndo());
}

TEST_F(SpellingSessionTest, EachDecisionCanBeTakenBack) {
    begin(u"aaa bbb ccc ddd eee aaa bbb"_qs);
    EXPECT_FALSE(m_session->canUndo());
    m_session->change(u"the"_qs);
    runOn();
    m_session->changeAll(u"cat"_qs);
    runOn();
    m_session->ignore();
    runOn();
    m_session->ignoreAll();
    runOn();
    EXPECT_FALSE(m_session->add());
    ASSERT_EQ(runOn(), State::AtMistake);
    EXPECT_EQ(m_session->place(), (WordSpan{20, 3}));
    for (const char* word : {"eee", "ddd", "ccc", "bbb", "aaa"}) {
        ASSERT_TRUE(m_session->canUndo());
        EXPECT_FALSE(m_session->undo());
        ASSERT_EQ(runOn(), State::AtMistake);
        EXPECT_EQ(m_session->word(), QString::fromLatin1(word));
    }
    EXPECT_FALSE(m_session->canUndo());
    EXPECT_FALSE(OwnWords(m_folder.path(u"words.txt"_qs)).contains(u"eee"_qs));
    EXPECT_EQ(mistakes(), QStringList({u"aaa"_qs, u"bbb"_qs, u"ccc"_qs, u"ddd"_qs, u"eee"_qs, u"aaa"_qs, u"bbb"_qs}));
    EXPECT_EQ(m_session->corrections().count(), 0U);
}

TEST_F(SpellingSessionTest, TakingBackLosesWhatFollowedByItself) {
    begin(u"aaa aaa bbb"_qs);
    m_session->changeAll(u"the"_qs);
    ASSERT_EQ(runOn(), State::AtMistake);
    EXPECT_EQ(m_session->corrections().count(), 2U);
    EXPECT_FALSE(m_session->undo());
    EXPECT_EQ(m_session->corrections().count(), 0U);
    EXPECT_EQ(mistakes(), QStringList({u"aaa"_qs, u"aaa"_qs, u"bbb"_qs}));
}

TEST_F(SpellingSessionTest, ADecisionNeedNotWaitForTheSuggestions) {
    m_session = std::make_unique<SpellingSession>(u"aaa bbb ccc"_qs, m_own);
    m_session->setDictionary(m_dictionary);
    QStringList found;
    while (m_session->hasWork()) {
        if (m_session->step(std::chrono::milliseconds(0)) == State::AtMistake) {
            found << m_session->word();
            m_session->ignore();
        }
    }
    EXPECT_EQ(found, QStringList({u"aaa"_qs, u"bbb"_qs, u"ccc"_qs}));
}

TEST_F(SpellingSessionTest, AnotherDictionaryGoesOnAtTheSameWord) {
    const Dictionary german = m_folder.make(u"de"_qs, "und\ndie\nkatze");
    begin(u"die cat die katze the"_qs);
    m_session->ignore();
    ASSERT_EQ(runOn(), State::AtMistake);
    EXPECT_EQ(m_session->place(), (WordSpan{8, 3}));
    m_session->setDictionary(german);
    ASSERT_EQ(runOn(), State::AtMistake);
    EXPECT_EQ(m_session->word(), u"the"_qs);
    m_session->setDictionary(m_dictionary);
    EXPECT_EQ(runOn(), State::Finished);
}

TEST_F(SpellingSessionTest, ADamagedDictionaryFailsAndAnotherGoesOn) {
    m_folder.write(u"bad.aff"_qs, "");
    m_folder.write(u"bad.dic"_qs, "nonsense");
    begin(u"the kat"_qs);
    m_session->setDictionary(m_folder.at(u"bad"_qs));
    EXPECT_EQ(runOn(), State::Failed);
    EXPECT_FALSE(m_session->isDictionaryLoaded());
    EXPECT_TRUE(m_session->error().contains(u"bad.dic"_qs));
    m_session->setDictionary(m_dictionary);
    ASSERT_EQ(runOn(), State::AtMistake);
    EXPECT_EQ(m_session->word(), u"kat"_qs);
}

TEST_F(SpellingSessionTest, ACrashWhileWordsAreLookedUpIsAFailure) {
    const auto crash = [](ParentLink& link) {
        link.send("L");
        link.receive();
        std::raise(SIGKILL);
    };
    m_session = std::make_unique<SpellingSession>(u"one two"_qs, m_own);
    m_session->setDictionary(std::make_unique<DictionaryProcess>(u"Test"_qs, crash, DictionaryProcess::Limits{}));
    EXPECT_EQ(runOn(), State::Failed);
    EXPECT_TRUE(m_session->isDictionaryLoaded());
    EXPECT_TRUE(m_session->error().contains(u"crashed"_qs));
    m_session->setDictionary(m_dictionary);
    EXPECT_EQ(mistakes(), QStringList({u"one"_qs, u"two"_qs}));
}

TEST_F(SpellingSessionTest, AbbreviationsAndBothApostrophesAreKnown) {
    m_dictionary = m_folder.make(u"abbr"_qs, "etc.\ndon't\nand");
    begin(u"and etc. don't don\u2019t etc"_qs);
    EXPECT_EQ(mistakes(), QStringList(u"etc"_qs));
}

TEST_F(SpellingSessionTest, WordsOfEveryPlaneAreCheckedAndCorrected) {
    begin(u"na\u00efve smile\U0001F600 \u043a\u043e\u0442 the"_qs);
    EXPECT_EQ(m_session->word(), u"na\u00efve"_qs);
    m_session->change(u"naive"_qs);
    runOn();
    EXPECT_EQ(m_session->word(), u"smile"_qs);
    m_session->change(u"cat"_qs);
    runOn();
    EXPECT_EQ(m_session->word(), u"\u043a\u043e\u0442"_qs);
    m_session->change(u"\u732b"_qs);
    EXPECT_EQ(runOn(), State::Finished);
    EXPECT_EQ(m_session->result(), u"naive cat\U0001F600 \u732b the"_qs);
}

TEST_F(SpellingSessionTest, ALargeTextIsCheckedInStepsToItsEnd) {
    QString text = u"the cat sat on the mat and "_qs.repeated(40'000) + u"kat "_qs;
    text += QString(5'000'000, u'x') + u" teh"_qs;
    begin(text);
    EXPECT_EQ(mistakes(), QStringList({u"kat"_qs, u"teh"_qs}));
}

TEST_F(SpellingSessionTest, ManyDifferentWordsAreAskedInParts) {
    QString text;
    for (int i = 0; i < 30'000; ++i) {
        QString word;
        for (int rest = i; word.size() < 40; rest /= 3)
            word += QChar(u'a' + rest % 3);
        text += word + u' ';
    }
    begin(text);
    m_session->changeAll(u"cat"_qs);
    int found = 1;
    while (found < 1000 && runOn() == State::AtMistake) {
        ++found;
        m_session->ignore();
    }
    EXPECT_EQ(found, 1000);
    EXPECT_TRUE(m_session->result().startsWith(u"cat baaaa"_qs));
}
