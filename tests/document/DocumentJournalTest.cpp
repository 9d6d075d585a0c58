#include "document/RecoveryFixture.h"
#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlFile.h"
#include "support/FailingFileSystem.h"

#include <QDir>
#include <QTest>

#include <cstdio>
#include <random>

/// When the journal of a document's text begins and ends, and what is in it.
class TextJournal : public RecoveryFixture {};

TEST_F(TextJournal, DoesNotBeginBeforeTheFirstEdit) {
    ASSERT_TRUE(open(fileOf("one")));
    control().setSelection(0, 2);
    document->Copy();
    EXPECT_TRUE(flush());
    EXPECT_FALSE(QDir(folder()).exists());
}

TEST_F(TextJournal, BringsBackWhatWasTyped) {
    ASSERT_TRUE(open(fileOf("one\r\ntwo\r\n")));
    type(u"x"_qs);
    type(u"yz"_qs);
    EXPECT_EQ(journalNames().size(), 1);
    EXPECT_EQ(recoveredText(), QByteArray("xyzone\r\ntwo\r\n"));
}

TEST_F(TextJournal, NamesTheDocumentAndItsState) {
    const QString file = fileOf(QByteArray("\xff\xfe"
                                           "a\0b\0",
                                           6),
                                u"a.cpp"_qs);
    ASSERT_TRUE(open(file));
    document->setCaption(u"a.cpp"_qs);
    const QString language = document->GetLang();
    type(u"x"_qs);
    endProcess();
    const auto all = found();
    ASSERT_EQ(all.size(), 1U);
    const JournalBase& base = all.front()->base();
    EXPECT_EQ(base.path, file);
    EXPECT_EQ(base.caption, u"a.cpp"_qs);
    EXPECT_EQ(base.format, (TextFormat{TextEncoding::Utf16LittleEndian, true}));
    EXPECT_EQ(base.language, language);
    EXPECT_TRUE(base.state && base.state->hasSameBytesAs(*FileState::of(file)));
    EXPECT_EQ(all.front()->file(), FoundJournal::File::AsItWas);
}

TEST_F(TextJournal, KeepsADocumentWithoutAFile) {
    type(u"never saved\nsecond"_qs);
    EXPECT_EQ(recoveredText(), QByteArray("never saved\nsecond"));
}

TEST_F(TextJournal, EndsWithASave) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    type(u"x"_qs);
    ASSERT_TRUE(document->SaveFile(file));
    EXPECT_TRUE(journalNames().isEmpty());
    EXPECT_FALSE(isAnyLeft());
}

TEST_F(TextJournal, StartsFromTheSavedFileAfterASaveUnderAnotherName) {
    ASSERT_TRUE(open(fileOf("one")));
    type(u"x"_qs);
    ASSERT_TRUE(document->SaveFile(path(u"b.txt"_qs)));
    type(u"y"_qs);
    endProcess();
    const auto all = found();
    ASSERT_EQ(all.size(), 1U);
    EXPECT_EQ(all.front()->base().path, path(u"b.txt"_qs));
    EXPECT_EQ(documenttest::readFile(all.front()->textPath()), QByteArray("xyone"));
}

TEST_F(TextJournal, SurvivesASaveThatFails) {
    ASSERT_TRUE(open(fileOf("one")));
    type(u"x"_qs);
    EXPECT_FALSE(document->SaveFile(path(u"no/such/folder/a.txt"_qs)));
    EXPECT_EQ(m_prompts.messages.size(), 1);
    EXPECT_EQ(recoveredText(), QByteArray("xone"));
}

TEST_F(TextJournal, SurvivesASaveThatTheEncodingRefuses) {
    ASSERT_TRUE(open(fileOf("caf\xe9")));
    type(QString::fromUtf8("漢"));
    EXPECT_FALSE(document->SaveFile(document->filename));
    EXPECT_EQ(m_prompts.messages.size(), 1);
    EXPECT_EQ(recoveredText(), QByteArray("漢café"));
}

TEST_F(TextJournal, FollowsASaveInAnotherEncoding) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    type(u"x"_qs);
    ASSERT_TRUE(document->SaveFile(file, SaveFormats::Unicode));
    document->ReloadTextFile(file, SaveFormats::Unicode);
    EXPECT_TRUE(journalNames().isEmpty());
    type(QString::fromUtf8("é"));
    EXPECT_EQ(recoveredText(), QByteArray("éxone"));
}

TEST_F(TextJournal, EndsWhenTheFileIsLoadedAgain) {
    openAndType();
    document->ReloadFile();
    EXPECT_FALSE(isAnyLeft());
}

TEST_F(TextJournal, SurvivesALoadThatFails) {
    openAndType();
    EXPECT_FALSE(open(path(u"missing"_qs)));
    EXPECT_EQ(recoveredText(), QByteArray("xone"));
}

TEST_F(TextJournal, EndsWhenTheChangesAreForgotten) {
    openAndType();
    document->forgetChanges();
    EXPECT_FALSE(isAnyLeft());
}

TEST_F(TextJournal, HoldsTheWholeTextOfADocumentThatIsEditedAfterItsChangesWereForgotten) {
    openAndType();
    document->forgetChanges();
    type(u"y"_qs);
    EXPECT_EQ(recoveredText(), QByteArray("xyone"));
}

TEST_F(TextJournal, EndsWhenASwitchOfTheModeGivesTheChangesUp) {
    ASSERT_TRUE(open(fileOf("one")));
    type(u"x"_qs);
    discardAtSwitch();
    document->setTextEdit(false);
    ASSERT_FALSE(document->TextEdit());
    EXPECT_FALSE(document->isChange);
    EXPECT_TRUE(journalNames().isEmpty());
}

/// The text is still in its view, and can be saved or given up from there.
TEST_F(TextJournal, IsNotLeftByASwitchThatLoadsNothing) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    type(u"x"_qs);
    saveAtSwitch();
    ASSERT_TRUE(QFile::remove(file));
    document->setTextEdit(false);
    document->setTextEdit(true);
    ASSERT_EQ(view().Text(), u"xone"_qs);
    EXPECT_EQ(journalNames().size(), 1);
    ASSERT_TRUE(document->SaveFile(path(u"b.txt"_qs)));
    EXPECT_TRUE(journalNames().isEmpty());
    EXPECT_FALSE(isAnyLeft());
}

TEST_F(TextJournal, DoesNotBeginForATextBehindBytes) {
    ASSERT_TRUE(open(fileOf("one")));
    document->setTextEdit(false);
    document->SelectAll();
    document->ToUppercase();
    EXPECT_TRUE(journalNames().isEmpty());
}

TEST_F(TextJournal, StaysWithATextThatWaitsBehindAnEmptyByteView) {
    type(u"x"_qs);
    discardAtSwitch();
    document->setTextEdit(false);
    ASSERT_FALSE(document->TextEdit());
    EXPECT_EQ(recoveredText(), QByteArray("x"));
}

TEST_F(TextJournal, IsWholeWhenTheFileWasChangedBeforeTheFirstEdit) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    documenttest::writeFile(file, "somebody else's");
    type(u"x"_qs);
    EXPECT_TRUE(flush());
    type(u"y"_qs);
    endProcess();
    const auto journal = foundOne();
    ASSERT_NE(journal, nullptr);
    EXPECT_EQ(documenttest::readFile(journal->textPath()), QByteArray("xyone"));
    EXPECT_EQ(journal->file(), FoundJournal::File::Changed);
}

TEST_F(TextJournal, IsWholeEvenWhenNoFurtherEditFollows) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    documenttest::writeFile(file, "somebody else's");
    type(u"x"_qs);
    EXPECT_TRUE(flush());
    // The document asks its journal some time after the last edit.
    QTest::qWait(6'000);
    EXPECT_EQ(recoveredText(), QByteArray("xone"));
}

TEST_F(TextJournal, IsWholeWhenTheFileWasReplacedAfterTheFirstEdit) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    type(u"x"_qs);
    EXPECT_TRUE(flush());
    documenttest::writeFile(path(u"new"_qs), "somebody else's");
    ASSERT_EQ(rename(qPrintable(path(u"new"_qs)), qPrintable(file)), 0);
    type(u"y"_qs);
    EXPECT_EQ(recoveredText(), QByteArray("xyone"));
}

struct JournalOfLongLines : TextJournal, testing::WithParamInterface<const char*> {};

TEST_P(JournalOfLongLines, BringsBackTheTextWithoutItsJoints) {
    const QByteArray end = GetParam();
    QByteArray words;
    while (words.size() < 150'000)
        words += "word" + QByteArray::number(words.size() * 7919) + ' ';
    ASSERT_TRUE(open(fileOf("first" + end + words + end + "last" + end)));
    std::mt19937 random(static_cast<unsigned>(end.size()) + static_cast<unsigned char>(end[0]));
    for (int step = 0; step < 400; ++step) {
        const auto length = control().map().positionOf(control().heldText().length());
        const qint64 at = static_cast<qint64>(random() % static_cast<unsigned>(length + 1));
        control().setSelection(at, std::max<qint64>(0, at - static_cast<qint64>(random() % 50)));
        switch (random() % 6) {
            case 0:
                document->Undo();
                break;
            case 1:
                control().ExecuteCmd(TextControl::SCI_NEWLINE);
                break;
            case 2:
                view().setSelText(QString::fromLatin1(words.left(static_cast<int>(random() % 9'000))));
                break;
            case 3:
                control().ExecuteCmd(TextControl::SCI_CLEAR);
                break;
            case 4:
                document->Redo();
                break;
            default:
                type(QString::fromUtf8("é"));
        }
        EXPECT_TRUE(step != 200 || flush());
    }
    const QByteArray text = view().Text().toUtf8();
    EXPECT_TRUE(recoveredText() == text);
}

INSTANTIATE_TEST_SUITE_P(OfEachLineEnd, JournalOfLongLines, testing::Values("\n", "\r\n", "\r"));

/// Journals without a copy of the file, as that of one which is too large to be copied where it cannot be cloned.
class JournalWithoutCopy : public RecoveryFixture {
 protected:
    JournalWithoutCopy() {
        m_calls.fail(SystemCall::Clone, 0, EOPNOTSUPP);
        Journals::Limits limits = patient();
        limits.copied = 2;
        m_journals = std::make_unique<Journals>(folder(), m_calls, limits);
        m_given.all.journals = m_journals.get();
        newDocument();
    }
    ~JournalWithoutCopy() override { document.reset(); }

    /// An edited document whose edits are on the disk, and its file, which somebody changed afterwards.
    void changeFileAfterTheLastEdit() {
        m_file = fileOf("one");
        documenttest::setTime(m_file, 1'000'000'000);
        ASSERT_TRUE(open(m_file));
        type(u"x"_qs);
        EXPECT_TRUE(flush());
        EXPECT_TRUE(QDir(folder()).entryList({u"*.base"_qs}, QDir::Files).isEmpty());
        documenttest::writeFile(m_file, "somebody else's");
    }
    /// What a start would bring back if the process were killed now, with what is in memory on the disk.
    QByteArray textAfterKill() {
        EXPECT_TRUE(flush());
        const QString copy = path(u"copy%1"_qs.arg(++m_copies));
        QDir().mkpath(copy);
        for (const QString& name : QDir(folder()).entryList(QDir::Files)) {
            EXPECT_TRUE(QFile::copy(folder() + u'/' + name, copy + u'/' + name));
        }
        Journals journals(copy, FileSystemCalls::system(), patient());
        const auto all = journals.takeAbandoned();
        if (all.size() != 1 || all.front()->restore() != FoundJournal::Outcome::Restored)
            return "nothing";
        return documenttest::readFile(all.front()->textPath());
    }

    QString m_file;

 private:
    FailingFileSystem m_calls;
    int m_copies = 0;
};

TEST_F(JournalWithoutCopy, IsOfNoUseWhenItsFileIsChangedAndNobodyNotices) {
    changeFileAfterTheLastEdit();
    EXPECT_EQ(textAfterKill(), QByteArray("nothing"));
}

TEST_F(JournalWithoutCopy, IsWholeWhenTheUserKeepsTheTextOfAChangedFile) {
    changeFileAfterTheLastEdit();
    m_prompts.answerNo();
    EXPECT_FALSE(document->FileNeedToReload());
    EXPECT_EQ(m_prompts.questions.size(), 1);
    EXPECT_EQ(textAfterKill(), QByteArray("xone"));
    type(u"y"_qs);
    EXPECT_EQ(textAfterKill(), QByteArray("xyone"));
}

TEST_F(JournalWithoutCopy, IsWholeWhileTheUserIsAskedAboutTheChangedFile) {
    changeFileAfterTheLastEdit();
    m_prompts.answerYes();
    QByteArray text;
    m_prompts.whileShown([&] { text = textAfterKill(); });
    EXPECT_TRUE(document->FileNeedToReload());
    EXPECT_EQ(text, QByteArray("xone"));
    document->ReloadFile();
    EXPECT_TRUE(journalNames().isEmpty());
}

TEST_F(JournalWithoutCopy, IsWholeWhenTheFileWasDeleted) {
    changeFileAfterTheLastEdit();
    ASSERT_TRUE(QFile::remove(m_file));
    EXPECT_FALSE(document->FileNeedToReload());
    EXPECT_EQ(m_prompts.messages.size(), 1);
    EXPECT_EQ(textAfterKill(), QByteArray("xone"));
}

TEST_F(JournalWithoutCopy, IsWholeWhenTheProcessEnds) {
    changeFileAfterTheLastEdit();
    document->completeJournals();
    EXPECT_EQ(textAfterKill(), QByteArray("xone"));
}

TEST_F(JournalWithoutCopy, IsWholeWhenTheDocumentIsDestroyed) {
    changeFileAfterTheLastEdit();
    document.reset();
    EXPECT_EQ(textAfterKill(), QByteArray("xone"));
}

TEST_F(JournalWithoutCopy, StaysShortWhenItsFileIsAsItWas) {
    const std::string text(100'000, 'x');
    ASSERT_TRUE(open(fileOf(QByteArray::fromStdString(text))));
    type(u"y"_qs);
    document->completeJournals();
    document->noteFileChange();
    document.reset();
    EXPECT_EQ(textAfterKill(), QByteArray::fromStdString('y' + text));
    EXPECT_LE(QFileInfo(folder() + u'/' + journalNames().value(0)).size(), 1'000);
}

/// Texts that are passed on in several parts.
class JournalOfLargeTexts : public RecoveryFixture {
 protected:
    static QByteArray words(int length) {
        QByteArray words;
        while (words.size() < length)
            words += "word" + QByteArray::number(words.size()) + (words.size() % 1'000'000 < 300'000 ? " " : "\n");
        return words;
    }
    /// The journal needs the whole text, and does not have it before the event loop runs.
    void beginCopy(const QByteArray& text) {
        ASSERT_TRUE(open(fileOf(text)));
        type(u"x"_qs);
        document->forgetChanges();
        type(u"y"_qs);
        ASSERT_TRUE(journalNames().isEmpty());
    }
};

TEST_F(JournalOfLargeTexts, BringsBackWhatIsEditedWhileTheTextIsCopied) {
    beginCopy(words(30'000'000));
    std::mt19937 random(1);
    int parts = 0;
    for (; journalNames().isEmpty(); ++parts) {
        for (int i = 0; i < 5; ++i) {
            const qint64 at = static_cast<qint64>(random() % 30'000'000);
            control().setSelection(at, at + static_cast<qint64>(random() % 20'000));
            if (random() % 3 == 0)
                document->Undo();
            else
                view().setSelText(u"(edited)"_qs.repeated(static_cast<int>(random() % 3)));
        }
        QCoreApplication::processEvents();
    }
    EXPECT_GE(parts, 5);
    type(u"z"_qs);
    const QByteArray text = view().Text().toUtf8();
    EXPECT_TRUE(recoveredText() == text);
}

TEST_F(JournalOfLargeTexts, IsWholeWhenTheDocumentIsDestroyedWhileTheTextIsCopied) {
    const QByteArray text = words(20'000'000);
    beginCopy(text);
    EXPECT_TRUE(recoveredText() == "xy" + text);
}

TEST_F(JournalOfLargeTexts, IsWholeWhenTheProcessEndsWhileTheTextIsCopied) {
    beginCopy(words(20'000'000));
    document->completeJournals();
    EXPECT_EQ(journalNames().size(), 1);
}

TEST_F(JournalOfLargeTexts, EndsWithASaveWhileTheTextIsCopied) {
    beginCopy(words(20'000'000));
    ASSERT_TRUE(document->SaveFile(document->filename));
    QTest::qWait(100);
    EXPECT_TRUE(journalNames().isEmpty());
    EXPECT_FALSE(isAnyLeft());
}

TEST_F(JournalOfLargeTexts, EndsWithALoadWhileTheTextIsCopied) {
    beginCopy(words(20'000'000));
    document->ReloadFile();
    QTest::qWait(100);
    EXPECT_FALSE(isAnyLeft());
}
