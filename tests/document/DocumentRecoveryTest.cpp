#include "document/RecoveredBar.h"
#include "document/RecoveryFixture.h"
#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlFile.h"
#include "support/FailingFileSystem.h"

#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QSet>
#include <QSignalSpy>
#include <QTest>

/// A document into which unsaved changes are brought back, and its bar.
class BroughtBack : public RecoveryFixture {
 protected:
    QString said() const { return document->recoveredBar()->findChild<QLabel*>()->text(); }
    bool isBarShown() const { return document->recoveredBar() != nullptr && document->recoveredBar()->isVisible(); }
};

TEST_F(BroughtBack, IsTheChangedDocumentThatItWas) {
    const QString file = fileOf("one\r\n", u"a.cpp"_qs);
    ASSERT_TRUE(open(file));
    document->setCaption(u"a.cpp"_qs);
    type(u"x"_qs);
    comeBack();
    EXPECT_EQ(view().Text(), u"xone\r\n"_qs);
    EXPECT_EQ(document->filename, file);
    EXPECT_EQ(document->Caption(), u"a.cpp"_qs);
    EXPECT_TRUE(document->isChange);
    EXPECT_FALSE(document->isNew);
    EXPECT_TRUE(view().isModified());
    EXPECT_EQ(document->DocIcon(), 1);
    EXPECT_TRUE(document->holdsFile());
    EXPECT_FALSE(document->IsChangedOnDisk());
    EXPECT_FALSE(document->FileNeedToReload());
    EXPECT_FALSE(control().file().canReopen());
    EXPECT_FALSE(control().CanUndo());
    EXPECT_EQ(control().file().lineEndMode(), TextControl::SC_EOL_CRLF);
    EXPECT_TRUE(document->isUntouchedRecovery());
    EXPECT_EQ(documenttest::readFile(file), QByteArray("one\r\n"));
}

TEST_F(BroughtBack, IsSavedInTheEncodingOfItsFile) {
    const QString file = fileOf("caf\xe9");
    ASSERT_TRUE(open(file));
    type(QString::fromUtf8("Ü"));
    comeBack();
    ASSERT_TRUE(document->SaveFile(file));
    EXPECT_EQ(documenttest::readFile(file), QByteArray("\xdc"
                                                       "caf\xe9"));
    EXPECT_FALSE(document->isChange);
    EXPECT_FALSE(isBarShown());
    EXPECT_FALSE(isAnyLeft());
}

TEST_F(BroughtBack, IsNotSavedInAnEncodingThatCannotHoldIt) {
    const QString file = fileOf("caf\xe9");
    ASSERT_TRUE(open(file));
    type(QString::fromUtf8("漢"));
    comeBack();
    EXPECT_FALSE(document->SaveFile(file));
    EXPECT_EQ(m_prompts.messages.size(), 1);
    EXPECT_EQ(documenttest::readFile(file), QByteArray("caf\xe9"));
    EXPECT_TRUE(document->isChange);
    EXPECT_EQ(recoveredText(), QByteArray("漢café"));
}

TEST_F(BroughtBack, KeepsAByteOrderMarkThatIsPartOfItsText) {
    const QString file = fileOf(
        "\xef\xbb\xbf\xef\xbb\xbf"
        "one");
    ASSERT_TRUE(open(file));
    control().setSelection(4, 4);
    type(u"x"_qs);
    const QString text = view().Text();
    comeBack();
    EXPECT_EQ(view().Text(), text);
    ASSERT_TRUE(document->SaveFile(file));
    EXPECT_EQ(documenttest::readFile(file), QByteArray("\xef\xbb\xbf\xef\xbb\xbf"
                                                       "onex"));
}

TEST_F(BroughtBack, WithoutAFileIsStillWithoutOne) {
    document->setCaption(u"Document7"_qs);
    type(u"never saved"_qs);
    comeBack();
    EXPECT_EQ(view().Text(), u"never saved"_qs);
    EXPECT_EQ(document->Caption(), u"Document1"_qs);
    EXPECT_TRUE(document->filename.isEmpty());
    EXPECT_FALSE(document->holdsFile());
    EXPECT_TRUE(document->isChange);
}

TEST_F(BroughtBack, TypesTheLineEndThatWasChosen) {
    type(u"one line"_qs);
    control().file().convertLineEnds(TextControl::SC_EOL_CRLF);
    document->forgetChanges();
    type(u"!"_qs);
    comeBack();
    EXPECT_EQ(control().file().lineEndMode(), TextControl::SC_EOL_CRLF);
}

TEST_F(BroughtBack, GoesOnInItsJournal) {
    openAndType();
    comeBack();
    control().setSelection(4, 4);
    type(u"y"_qs);
    document->Undo();
    type(u"z"_qs);
    EXPECT_EQ(recoveredText(), QByteArray("xonez"));
}

TEST_F(BroughtBack, GoesOnInItsJournalWithLongLines) {
    ASSERT_TRUE(open(fileOf(QByteArray(200'000, 'a') + "\r\nlast")));
    type(u"x y"_qs);
    comeBack();
    ASSERT_FALSE(control().map().joints().empty());
    control().setSelection(100'000, 50'000);
    document->Cut();
    type(QString(90'000, u'b').left(3));
    const QByteArray text = view().Text().toUtf8();
    EXPECT_TRUE(recoveredText() == text);
}

TEST_F(BroughtBack, ComesBackAgainUntouched) {
    openAndType();
    comeBack();
    comeBack();
    EXPECT_EQ(view().Text(), u"xone"_qs);
    EXPECT_TRUE(isBarShown());
}

TEST_F(BroughtBack, ReplacesAnUnchangedDocumentOfTheSameFile) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    type(u"x"_qs);
    endProcess();
    ASSERT_TRUE(open(file));
    bringBackOne();
    EXPECT_EQ(view().Text(), u"xone"_qs);
    EXPECT_EQ(recoveredText(), QByteArray("xone"));
}

TEST_F(BroughtBack, StaysReadOnlyWhereItsDocumentIs) {
    const QString file = fileOf("one\n");
    ASSERT_TRUE(open(file));
    type(u"x"_qs);
    endProcess();
    document->setLocked(true);
    ASSERT_TRUE(document->OpenFile(file, true, false, true));
    auto all = found();
    ASSERT_EQ(all.size(), 1U);
    ASSERT_EQ(document->bringBack(std::move(all.front())), RecoveryOutcome::Shown);
    EXPECT_TRUE(document->Locked());
    EXPECT_TRUE(document->isReadOnly);
    document->ChangeToReadOnly();
    EXPECT_FALSE(document->Locked());
    EXPECT_FALSE(document->isReadOnly);
    EXPECT_TRUE(document->isChange);
}

/// As after a restart of the machine, when the disk may have got another number.
TEST_F(BroughtBack, IsNotAskedAboutWhenItsFileIsOnADiskWithAnotherNumber) {
    const QString file = fileOf("one\n");
    ASSERT_TRUE(open(file));
    type(u"x"_qs);
    comeBack();
    EXPECT_FALSE(document->IsChangedOnDisk());
    FileState state = *FileState::of(file);
    ++state.device;
    EXPECT_TRUE(state.hasSameBytesAs(*FileState::of(file)));
}

/// As after a remount of a file system that numbers its files anew.
TEST_F(BroughtBack, IsNotAskedAboutWhenItsFileHasTheSameBytesUnderAnotherNumber) {
    const QString file = fileOf("one\n");
    ASSERT_TRUE(open(file));
    type(u"x"_qs);
    EXPECT_TRUE(flush());
    ASSERT_TRUE(QFile::rename(file, path(u"before.txt"_qs)));
    fileOf("one\n");
    comeBack();
    EXPECT_FALSE(document->IsChangedOnDisk());
}

TEST_F(BroughtBack, IsShownAsTextWhereBytesWereShown) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    type(u"x"_qs);
    endProcess();
    ASSERT_TRUE(document->OpenFile(file, false, false, false));
    bringBackOne();
    EXPECT_TRUE(document->TextEdit());
    EXPECT_EQ(view().Text(), u"xone"_qs);
}

TEST_F(BroughtBack, LeavesADocumentAsItIsWhenItCannotBeLoaded) {
    openAndType();
    endProcess();
    ASSERT_TRUE(open(fileOf("two", u"b.txt"_qs)));
    auto journal = foundOne();
    ASSERT_NE(journal, nullptr);
    documenttest::writeFile(journal->textPath(), "not \xff UTF-8");
    EXPECT_EQ(document->bringBack(std::move(journal)), RecoveryOutcome::Failed);
    EXPECT_EQ(view().Text(), u"two"_qs);
    EXPECT_FALSE(document->isChange);
    EXPECT_EQ(document->recoveredBar(), nullptr);
    EXPECT_EQ(recoveredText(), QByteArray("xone"));
}

TEST_F(BroughtBack, AsksBeforeItOverwritesAFileThatWasChangedSince) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    type(u"x"_qs);
    EXPECT_TRUE(flush());
    endProcess();
    documenttest::writeFile(file, "somebody else's");
    bringBackOne();
    EXPECT_EQ(view().Text(), u"xone"_qs);
    EXPECT_TRUE(document->IsChangedOnDisk());
    EXPECT_FALSE(document->FileNeedToReload());
    EXPECT_TRUE(said().endsWith(u" The file has been changed since."_qs)) << said().toStdString();
}

TEST_F(BroughtBack, SaysThatItsFileIsGone) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    type(u"x"_qs);
    EXPECT_TRUE(flush());
    endProcess();
    ASSERT_TRUE(QFile::remove(file));
    bringBackOne();
    EXPECT_TRUE(said().endsWith(u" The file is gone."_qs)) << said().toStdString();
    ASSERT_TRUE(document->SaveFile(file));
    EXPECT_EQ(documenttest::readFile(file), QByteArray("xone"));
}

TEST_F(BroughtBack, LeavesTheFocusWhereItIs) {
    QWidget window;
    auto* other = new QPushButton(&window);
    document->setParent(&window);
    window.show();
    document->show();
    QApplication::setActiveWindow(&window);
    other->setFocus();
    type(u"x"_qs);
    auto old = std::move(document);
    newDocument();
    document->setParent(&window);
    document->show();
    old.reset();
    EXPECT_TRUE(flush());
    m_journals = std::make_unique<Journals>(folder(), FileSystemCalls::system(), patient());
    bringBackOne();
    EXPECT_TRUE(isBarShown());
    EXPECT_EQ(QApplication::focusWidget(), other);
    document.reset();
}

// Another version of a file

TEST_F(BroughtBack, AsAVersionIsUntitled) {
    const QString file = fileOf("caf\xe9", u"a.cpp"_qs);
    ASSERT_TRUE(open(file));
    type(u"x"_qs);
    endProcess();
    bringBackOne(RecoveredAs::Version);
    EXPECT_EQ(view().Text(), u"xcafé"_qs);
    EXPECT_EQ(document->Caption(), u"Document1"_qs);
    EXPECT_EQ(document->filename, QString());
    EXPECT_EQ(document->recoveredPath(), file);
    EXPECT_FALSE(document->holdsFile());
    EXPECT_FALSE(document->isNew);
    EXPECT_TRUE(document->isChange);
    EXPECT_TRUE(document->isUntouchedRecovery());
    EXPECT_FALSE(document->IsChangedOnDisk());
    EXPECT_TRUE(said().endsWith(u" They are another version of 'a.cpp'."_qs)) << said().toStdString();
    EXPECT_EQ(document->recoveredBar()->accessibleDescription(), file);
    EXPECT_EQ(document->recoveredBar()->findChild<QLabel*>()->toolTip(), u"<p>%1</p>"_qs.arg(file));
    documenttest::writeFile(file, "by now another");
    EXPECT_FALSE(document->IsChangedOnDisk());
    EXPECT_FALSE(document->FileNeedToReload());
    ASSERT_TRUE(document->SaveFile(path(u"b.cpp"_qs)));
    EXPECT_EQ(documenttest::readFile(path(u"b.cpp"_qs)), QByteArray("xcaf\xe9"));
    EXPECT_EQ(documenttest::readFile(file), QByteArray("by now another"));
    EXPECT_FALSE(isAnyLeft());
}

TEST_F(BroughtBack, AsAVersionGoesOnInItsJournal) {
    openAndType();
    endProcess();
    bringBackOne(RecoveredAs::Version);
    control().setSelection(4, 4);
    type(u"y"_qs);
    EXPECT_EQ(recoveredText(), QByteArray("xoney"));
}

TEST_F(BroughtBack, AsAVersionIsAsOldAsItsLastEdit) {
    Journals::Limits limits = patient();
    limits.copied = 1;
    FailingFileSystem calls;
    calls.fail(SystemCall::Clone, 0, EOPNOTSUPP);
    document.reset();
    m_journals = std::make_unique<Journals>(folder(), calls, limits);
    m_given.all.journals = m_journals.get();
    newDocument();
    openAndType();
    endProcess();
    auto journal = foundOne();
    ASSERT_NE(journal, nullptr);
    const QDateTime edited = journal->time();
    QTest::qWait(20);
    ASSERT_EQ(document->bringBack(std::move(journal), RecoveredAs::Version), RecoveryOutcome::Shown);
    documenttest::writeFile(path(u"a.txt"_qs), "somebody else's");
    endProcess();
    journal = foundOne();
    ASSERT_NE(journal, nullptr);
    EXPECT_EQ(journal->time(), edited);
    EXPECT_EQ(documenttest::readFile(journal->textPath()), QByteArray("xone"));
}

// The bar

TEST_F(BroughtBack, StaysChangedWhenItIsKept) {
    openAndType();
    comeBack();
    ASSERT_TRUE(isBarShown());
    press("cmdKeep");
    EXPECT_EQ(document->recoveredBar(), nullptr);
    EXPECT_TRUE(document->isChange);
    EXPECT_FALSE(document->isUntouchedRecovery());
    EXPECT_EQ(view().Text(), u"xone"_qs);
    EXPECT_EQ(recoveredText(), QByteArray("xone"));
}

TEST_F(BroughtBack, BecomesAsItsFileIsWhenItIsDiscarded) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    type(u"x"_qs);
    comeBack();
    documenttest::writeFile(file, "by now another");
    const QSignalSpy changes(document.get(), &frmDocument::FileChange);
    press("cmdDiscard");
    EXPECT_EQ(document->recoveredBar(), nullptr);
    EXPECT_EQ(view().Text(), u"by now another"_qs);
    EXPECT_FALSE(document->isChange);
    EXPECT_EQ(document->DocIcon(), 0);
    EXPECT_GE(changes.size(), 1);
    EXPECT_FALSE(isAnyLeft());
}

TEST_F(BroughtBack, ClosesWithoutAQuestionWhenItHasNoFileAndIsDiscarded) {
    type(u"never saved"_qs);
    endProcess();
    auto journal = foundOne();
    ASSERT_NE(journal, nullptr);
    QMdiArea area;
    auto* owned = document.release();
    QMdiSubWindow* child = area.addSubWindow(owned);
    child->setAttribute(Qt::WA_DeleteOnClose);
    area.show();
    const QPointer<frmDocument> alive(owned);
    ASSERT_EQ(owned->bringBack(std::move(journal)), RecoveryOutcome::Shown);
    bool wasChanged = true;
    m_host.during[u"DocClose"_qs] = [&] { wasChanged = owned->isChange; };
    owned->findChild<QAbstractButton*>(u"cmdDiscard"_qs)->click();
    QTest::qWait(0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(wasChanged);
    EXPECT_TRUE(m_host.calls.contains(u"DelTab"_qs));
    EXPECT_TRUE(alive.isNull());
    EXPECT_FALSE(isAnyLeft());
}

TEST_F(BroughtBack, RequestsItsDifferences) {
    openAndType();
    comeBack();
    const QSignalSpy requests(document.get(), &frmDocument::DifferencesRequest);
    press("cmdDifferences");
    EXPECT_EQ(requests.size(), 1);
    EXPECT_TRUE(isBarShown());
    EXPECT_TRUE(document->isUntouchedRecovery());
}

TEST_F(BroughtBack, IsTouchedByAnEdit) {
    openAndType();
    comeBack();
    type(u"y"_qs);
    EXPECT_FALSE(document->isUntouchedRecovery());
    EXPECT_TRUE(isBarShown());
}

TEST_F(BroughtBack, BarIsUsedByTheKeyboardAlone) {
    openAndType();
    comeBack();
    QApplication::setActiveWindow(document.get());
    QWidget* bar = document->recoveredBar();
    bar->setFocus();
    QStringList order;
    for (int i = 0; i < 3; ++i) {
        order << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(order, (QStringList{u"cmdKeep"_qs, u"cmdDiscard"_qs, u"cmdDifferences"_qs}));
    bar->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(QApplication::focusWidget(), view().focusProxy());
    bar->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(document->recoveredBar(), nullptr);
    EXPECT_EQ(QApplication::focusWidget(), view().focusProxy());
}

TEST_F(BroughtBack, BarNamesItsPartsForAScreenReader) {
    type(u"x"_qs);
    comeBack();
    EXPECT_EQ(document->recoveredBar()->objectName(), u"recoveredBar"_qs);
    EXPECT_EQ(document->recoveredBar()->accessibleName(), said());
    QSet<QKeySequence> mnemonics;
    for (const auto* button : document->recoveredBar()->findChildren<QPushButton*>()) {
        EXPECT_FALSE(button->accessibleName().isEmpty());
        mnemonics.insert(QKeySequence::mnemonic(button->text()));
    }
    EXPECT_EQ(mnemonics.size(), 3);
    EXPECT_FALSE(mnemonics.contains(QKeySequence()));
}

TEST_F(BroughtBack, BarLeavesItsButtonsWholeInANarrowWindow) {
    type(u"x"_qs);
    comeBack();
    QWidget* bar = document->recoveredBar();
    document->resize(900, 300);
    QTest::qWait(0);
    const int height = bar->height();
    document->resize(330, 300);
    QTest::qWait(0);
    EXPECT_GT(bar->height(), height);
    for (const auto* button : bar->findChildren<QPushButton*>()) {
        EXPECT_GE(button->width(), button->minimumSizeHint().width());
        EXPECT_TRUE(bar->rect().contains(button->geometry())) << button->text().toStdString();
    }
}

TEST_F(BroughtBack, BarShowsItsWholeSentenceInLessWidth) {
    type(u"x"_qs);
    comeBack();
    QWidget* bar = document->recoveredBar();
    const auto* label = bar->findChild<QLabel*>();
    for (const int width : {900, 600, 400, 330}) {
        document->resize(width, 300);
        QTest::qWait(0);
        EXPECT_GE(label->height(), label->heightForWidth(label->width())) << width;
        EXPECT_TRUE(bar->rect().contains(label->geometry())) << width;
        EXPECT_LT(bar->height(), 100) << width;
    }
}

TEST(RecoveredBarSentence, SaysTheTimeAndTheDayOnlyWhenItIsAnother) {
    const QDateTime edited(QDate(2024, 5, 6), QTime(14, 30));
    const QLocale locale;
    using FileNow = JournalFileNow;
    EXPECT_EQ(RecoveredBar::sentence(edited, edited.addSecs(60), FileNow::AsItWas),
              u"Unsaved changes of %1 were recovered."_qs.arg(locale.toString(edited.time(), QLocale::ShortFormat)));
    EXPECT_EQ(RecoveredBar::sentence(edited, edited.addDays(1), FileNow::Changed),
              u"Unsaved changes of %1 were recovered. The file has been changed since."_qs.arg(
                  locale.toString(edited, QLocale::ShortFormat)));
    EXPECT_TRUE(
        RecoveredBar::sentence(edited, edited, FileNow::Missing).endsWith(u" were recovered. The file is gone."_qs));
}

TEST(RecoveredBarSentence, SaysThatTheFileIsNotReached) {
    const QDateTime edited(QDate(2024, 5, 6), QTime(14, 30));
    EXPECT_TRUE(RecoveredBar::sentence(edited, edited, JournalFileNow::Unreachable)
                    .endsWith(u" were recovered. The file can't be reached now."_qs));
    EXPECT_TRUE(RecoveredBar::sentence(edited, edited, JournalFileNow::None).endsWith(u" were recovered."_qs));
}

TEST(RecoveredBarSentence, NamesTheFileOfAnotherVersion) {
    const QDateTime edited(QDate(2024, 5, 6), QTime(14, 30));
    EXPECT_TRUE(RecoveredBar::versionSentence(edited, edited, u"100%1.txt"_qs)
                    .endsWith(u" were recovered. They are another version of '100%1.txt'."_qs));
}
