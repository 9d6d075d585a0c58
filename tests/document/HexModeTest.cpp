#include "document/HexDocumentFixture.h"
#include "editor/held/TextLoader.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>

using documenttest::readFile;
using documenttest::setTime;
using documenttest::writeFile;

/// A document in hex mode: loading, editing, saving, and its reports to the frame.
class HexMode : public HexDocumentFixture {
 protected:
    QMenu& menu(const char* key) { return *m_document.findChild<QMenu*>(QLatin1String(key)); }
    void choose(const char* key, const char* name) { menu(key).findChild<QAction*>(QLatin1String(name))->trigger(); }
    int bookmarkCount() { return bookmarks().model()->rowCount(); }
};

TEST_F(HexMode, OpeningTakesTheFile) {
    const QString file = fileOf("one");
    ASSERT_TRUE(openHex(file));
    EXPECT_FALSE(m_document.TextEdit());
    EXPECT_EQ(shown(), QByteArray("6F6E65"));
    EXPECT_EQ(m_document.filename, file);
    EXPECT_FALSE(m_document.isNew);
    EXPECT_FALSE(m_document.isChange);
    EXPECT_EQ(m_document.DocIcon(), 0);
    EXPECT_FALSE(m_document.LastUpdate.isEmpty());
    EXPECT_EQ(m_document.LastUpdate, m_document.KnownUpdate);
    EXPECT_EQ(m_host.take(), QStringList({u"SetTabCaption 1"_qs, u"SetEditModeIcon"_qs}));
    EXPECT_EQ(focused(), &pane(1));
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(HexMode, AWiderWindowShowsTheLeftEndAgain) {
    ASSERT_TRUE(openHexOf(QByteArray(64, 'x')));
    const QScrollBar& bar = *m_document.findChild<QScrollArea*>()->horizontalScrollBar();
    m_document.resize(300, 400);
    pressKey(Qt::Key_End);
    QApplication::processEvents();
    EXPECT_GT(bar.value(), 0);
    m_document.resize(900, 400);
    QApplication::processEvents();
    EXPECT_EQ(bar.value(), 0);
}

TEST_F(HexMode, OpeningReadOnlyShowsItsIcon) {
    ASSERT_TRUE(openHex(fileOf("one"), true));
    EXPECT_TRUE(m_document.isReadOnly);
    EXPECT_EQ(m_document.DocIcon(), 2);
}

TEST_F(HexMode, TheFirstByteMarksItChangedAndEveryOneIsTold) {
    QSignalSpy fileChanges(&m_document, &frmDocument::FileChange);
    QSignalSpy docChanges(&m_document, &frmDocument::DocChange);
    ASSERT_TRUE(openHexOf("one"));
    press(u"4"_qs);
    EXPECT_FALSE(m_document.isChange);
    press(u"1"_qs);
    EXPECT_TRUE(m_document.isChange);
    EXPECT_EQ(m_document.DocIcon(), 1);
    pressKey(Qt::Key_Tab);
    press(u"Z"_qs);
    EXPECT_EQ(shown(), QByteArray("5A6E65"));
    EXPECT_EQ(fileChanges.count(), 1);
    EXPECT_EQ(docChanges.count(), 2);
}

TEST_F(HexMode, TakingAByteBackLeavesItMarked) {
    ASSERT_TRUE(openHexOf("one"));
    press(u"41"_qs);
    m_document.Undo();
    EXPECT_EQ(shown(), QByteArray("6F6E65"));
    EXPECT_TRUE(m_document.isChange);
}

TEST_F(HexMode, MovesOfTheCursorAreTold) {
    ASSERT_TRUE(openHexOf("one"));
    QSignalSpy moves(&m_document, &frmDocument::SelChange);
    pressKey(Qt::Key_Right);
    EXPECT_GE(moves.count(), 1);
    EXPECT_EQ(m_document.GetCursorPos(), u"Pg 1/1, Pos 1/2"_qs);
}

TEST_F(HexMode, WithoutAFileThereIsNoPlaceToTell) {
    m_document.setTextEdit(false);
    EXPECT_EQ(m_document.GetCursorPos(), QString());
}

TEST_F(HexMode, SavingWritesTheBytesAndMarksItSaved) {
    ASSERT_TRUE(openHexOf("one"));
    press(u"41"_qs);
    m_host.take();
    EXPECT_TRUE(m_document.SaveFile(m_document.filename));
    EXPECT_EQ(readFile(m_document.filename), QByteArray("Ane"));
    EXPECT_FALSE(m_document.isChange);
    EXPECT_EQ(m_document.DocIcon(), 0);
    EXPECT_EQ(m_host.take(), QStringList(u"SetTabCaption 1"_qs));
}

TEST_F(HexMode, AByteOfOneDigitIsSavedToo) {
    ASSERT_TRUE(openHexOf("one"));
    press(u"7"_qs);
    EXPECT_TRUE(m_document.SaveFile(m_document.filename));
    EXPECT_EQ(readFile(m_document.filename), QByteArray("\x07ne"));
    EXPECT_FALSE(m_document.isChange);
}

TEST_F(HexMode, AnUnchangedDocumentIsWrittenOnlyWhenForced) {
    ASSERT_TRUE(openHexOf("one"));
    writeFile(m_document.filename, "two");
    EXPECT_TRUE(m_document.SaveFile(m_document.filename));
    EXPECT_EQ(readFile(m_document.filename), QByteArray("two"));
    EXPECT_TRUE(m_document.SaveFile(m_document.filename, SaveFormats::AsLoaded, true));
    EXPECT_EQ(readFile(m_document.filename), QByteArray("one"));
}

TEST_F(HexMode, AnUnchangedDocumentIsWrittenWhenItsFileIsGone) {
    ASSERT_TRUE(openHexOf("one"));
    ASSERT_TRUE(QFile::remove(m_document.filename));
    EXPECT_TRUE(m_document.SaveFile(m_document.filename));
    EXPECT_EQ(readFile(m_document.filename), QByteArray("one"));
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(HexMode, AnUnchangedDocumentIsNotCalledSavedWhenSomethingElseHasItsName) {
    ASSERT_TRUE(openHexOf("one"));
    const QString file = m_document.filename;
    ASSERT_TRUE(QFile::remove(file));
    ASSERT_TRUE(QDir(m_folder.path()).mkdir(file));
    EXPECT_FALSE(m_document.SaveFile(file));
    ASSERT_TRUE(QDir(m_folder.path()).rmdir(file));
    ASSERT_EQ(mkfifo(QFile::encodeName(file).constData(), 0600), 0);
    EXPECT_FALSE(m_document.SaveFile(file));
    ASSERT_TRUE(QFile::remove(file));
    ASSERT_TRUE(QFile::link(path(u"missing/target"_qs), file));
    EXPECT_FALSE(m_document.SaveFile(file));
    EXPECT_EQ(m_prompts.messages.size(), 3);
    ASSERT_TRUE(QFile::remove(file));
    EXPECT_TRUE(m_document.SaveFile(file));
    EXPECT_EQ(readFile(file), QByteArray("one"));
}

TEST_F(HexMode, TheFormatOfASaveConcernsNoBytes) {
    ASSERT_TRUE(openHexOf("\xE4\x01"));
    press(u"FF"_qs);
    EXPECT_TRUE(m_document.SaveFile(m_document.filename, SaveFormats::Unicode));
    EXPECT_EQ(readFile(m_document.filename), QByteArray("\xFF\x01"));
}

TEST_F(HexMode, SavingUnderAnotherNameGoesOnUnderIt) {
    ASSERT_TRUE(openHexOf("one"));
    const QString first = m_document.filename;
    const QString second = fileOf("0123456789", u"b.bin"_qs);
    EXPECT_TRUE(m_document.SaveFile(second, SaveFormats::AsLoaded, true));
    EXPECT_EQ(m_document.filename, second);
    EXPECT_EQ(readFile(second), QByteArray("one3456789"));
    EXPECT_EQ(readFile(first), QByteArray("one"));
}

TEST_F(HexMode, TheUndoGoesOnAfterASave) {
    ASSERT_TRUE(openHexOf("one"));
    press(u"41"_qs);
    ASSERT_TRUE(m_document.SaveFile(m_document.filename));
    m_document.Undo();
    EXPECT_EQ(shown(), QByteArray("6F6E65"));
    EXPECT_FALSE(m_document.isChange);
}

TEST_F(HexMode, AFailedSaveLeavesTheDocumentChanged) {
    ASSERT_TRUE(openHexOf("one"));
    const QString file = m_document.filename;
    press(u"41"_qs);
    documenttest::setMode(file, 0444);
    EXPECT_FALSE(m_document.SaveFile(file));
    EXPECT_EQ(m_prompts.messages.size(), 1);
    EXPECT_TRUE(m_prompts.messages.first().startsWith(u"13\n"_qs));
    EXPECT_TRUE(m_document.isChange);
    EXPECT_EQ(m_document.DocIcon(), 1);
    EXPECT_EQ(readFile(file), QByteArray("one"));
    documenttest::setMode(file, 0644);
    EXPECT_TRUE(m_document.SaveFile(file));
    EXPECT_EQ(readFile(file), QByteArray("Ane"));
}

TEST_F(HexMode, ReloadingEndsInTextModeWithoutAQuestion) {
    const QString file = fileOf(QByteArray("a\1b", 3));
    ASSERT_TRUE(m_document.OpenFile(file, true, true, true));
    ASSERT_FALSE(m_document.TextEdit());
    press(u"41"_qs);
    m_document.ReloadFile();
    EXPECT_EQ(m_asked, 0);
    EXPECT_TRUE(m_document.TextEdit());
    EXPECT_EQ(view().Text(), u"a\1b"_qs);
    EXPECT_TRUE(m_document.isReadOnly);
    EXPECT_FALSE(m_document.isChange);
}

TEST_F(HexMode, ReloadingAsTextAfterASaveInAnEncodingIsForTextAlone) {
    ASSERT_TRUE(openHexOf("one"));
    m_document.ReloadTextFile(m_document.filename, SaveFormats::Ansi);
    EXPECT_FALSE(m_document.TextEdit());
    EXPECT_EQ(view().Text(), QString());
}

TEST_F(HexMode, TheLockIsThatOfBothViews) {
    ASSERT_TRUE(openHexOf("one"));
    m_document.ChangeToReadOnly();
    EXPECT_TRUE(view().Locked());
    EXPECT_TRUE(hex().Locked());
    EXPECT_EQ(m_document.DocIcon(), 2);
    press(u"41"_qs);
    EXPECT_EQ(shown(), QByteArray("6F6E65"));
    EXPECT_FALSE(m_document.isChange);
    m_document.ChangeToReadOnly();
    EXPECT_FALSE(hex().Locked());
    EXPECT_EQ(m_document.DocIcon(), 0);
    press(u"41"_qs);
    EXPECT_EQ(shown(), QByteArray("416E65"));
}

TEST_F(HexMode, TheLockOfATextThatCanOnlyBeShownIsNotThatOfItsBytes) {
    const QString file = fileOf("one\r\ntwo\n" + QByteArray(TextLoader::UncutLine, 'x'));
    ASSERT_TRUE(open(file));
    ASSERT_TRUE(view().Locked());
    EXPECT_TRUE(m_document.Locked());
    m_document.setTextEdit(false);
    EXPECT_FALSE(m_document.Locked());
    EXPECT_FALSE(m_document.isReadOnly);
    m_document.ChangeToReadOnly();
    EXPECT_TRUE(m_document.Locked());
    m_document.ChangeToReadOnly();
    EXPECT_FALSE(m_document.Locked());
    press(u"41"_qs);
    EXPECT_TRUE(m_document.isChange);
    EXPECT_TRUE(m_document.SaveFile(file));
    EXPECT_EQ(readFile(file).left(8), QByteArray("Ane\r\ntwo"));
    m_document.setTextEdit(true);
    EXPECT_TRUE(m_document.Locked());
}

TEST_F(HexMode, ALockFinishesTheByteOfOneDigit) {
    ASSERT_TRUE(openHexOf("one"));
    press(u"7"_qs);
    m_document.ChangeToReadOnly();
    EXPECT_EQ(shown(), QByteArray("076E65"));
    EXPECT_TRUE(m_document.isChange);
    m_document.ChangeToReadOnly();
    EXPECT_EQ(m_document.DocIcon(), 1);
}

TEST_F(HexMode, ChangesOnDiskAreNoticedAsForText) {
    ASSERT_TRUE(openHexOf("one"));
    EXPECT_FALSE(m_document.FileNeedToReload());
    setTime(m_document.filename, documenttest::SomeTime + 5);
    m_prompts.answerNo();
    EXPECT_FALSE(m_document.FileNeedToReload());
    EXPECT_EQ(m_prompts.questions,
              QStringList(u'\'' + m_document.filename + u"' has been changed, do you want to reload it."_qs));
    EXPECT_FALSE(m_document.FileNeedToReload());
}

TEST_F(HexMode, InASmallWindowItIsScrolledAndFollowsItsCursor) {
    ASSERT_TRUE(openHexOf(QByteArray(1000, 'a')));
    m_document.resize(300, 200);
    QApplication::processEvents();
    const auto seen = [&] { return QRect(QPoint(), m_document.size()); };
    const auto at = [&](int row, int col) {
        const QRect cell = pane(1).cellRect({row, col});
        return QRect(pane(1).mapTo(&m_document, cell.topLeft()), cell.size());
    };
    EXPECT_GE(hex().height(), pane(1).height());
    pressKey(Qt::Key_Right);
    EXPECT_TRUE(seen().contains(at(0, 1)));
    pressKey(Qt::Key_PageDown, Qt::ControlModifier);
    pressKey(Qt::Key_End);
    EXPECT_TRUE(seen().contains(at(19, 15)));
    EXPECT_FALSE(seen().contains(at(0, 1)));
}

// Closing

TEST_F(HexMode, ItClosesChangedWhenAByteOfOneDigitWasTyped) {
    ASSERT_TRUE(openHexOf("one"));
    press(u"7"_qs);
    bool changed = false;
    m_host.during[u"DocClose"_qs] = [&] { changed = m_document.isChange; };
    EXPECT_TRUE(m_document.close());
    EXPECT_TRUE(changed);
}

TEST_F(HexMode, TheWorkingCopyGoesWithTheDocument) {
    auto* document = new frmDocument(&m_host, m_services);
    ASSERT_TRUE(document->OpenFile(fileOf("one"), false, false, false));
    const QString copy = document->findChild<ucHex*>(u"ucHex1"_qs)->TempFileName();
    EXPECT_TRUE(QFile::exists(copy));
    delete document;
    EXPECT_FALSE(QFile::exists(copy));
}

// Commands

TEST_F(HexMode, CommandsOfTextAloneDoNothingToTheBytes) {
    ASSERT_TRUE(openHexOf("one"));
    QGuiApplication::clipboard()->setText(u"xyz"_qs);
    for (void (frmDocument::*command)() :
         {&frmDocument::Redo, &frmDocument::Cut, &frmDocument::Paste, &frmDocument::IncrementalSearch,
          &frmDocument::ReverseIncrementalSearch, &frmDocument::SelectAll, &frmDocument::Indent})
        (m_document.*command)();
    m_document.ExecMacro(1);
    EXPECT_EQ(shown(), QByteArray("6F6E65"));
    EXPECT_EQ(cursor(), 1);
    EXPECT_FALSE(hex().Modified());
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"xyz"_qs);
}

TEST_F(HexMode, CopyTakesTheByteOfThePaneInUse) {
    ASSERT_TRUE(openHexOf("one"));
    m_document.Copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"6F"_qs);
    pressKey(Qt::Key_Tab);
    m_document.Copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"o"_qs);
}

TEST_F(HexMode, WhatLiesOutsideOfItIsAskedOfTheFrame) {
    QSignalSpy properties(&m_document, &frmDocument::PropertiesRequest);
    QSignalSpy calculator(&m_document, &frmDocument::CalculatorRequest);
    QSignalSpy language(&m_document, &frmDocument::LanguageRequest);
    ASSERT_TRUE(openHexOf("one"));
    hex().cmdProperties();
    ASSERT_EQ(properties.count(), 1);
    EXPECT_EQ(properties[0][0].toString(), QString());
    EXPECT_EQ(calculator.count() + language.count(), 0);
    hex().cmdCalculator();
    EXPECT_EQ(calculator.count(), 1);
    hex().cmdLanguage();
    EXPECT_EQ(language.count(), 1);
}

TEST_F(HexMode, NobodyGivesTheNameForASaveOfItsOwn) {
    ASSERT_TRUE(openHexOf("one"));
    EXPECT_EQ(hex().SaveAsName(), QString());
    press(u"41"_qs);
    hex().cmdSaveAs();
    EXPECT_TRUE(m_document.isChange);
    EXPECT_EQ(readFile(m_document.filename), QByteArray("one"));
    ASSERT_TRUE(m_document.SaveFile(m_document.filename));
    EXPECT_EQ(hex().SaveAsName(), QString());
}

TEST_F(HexMode, TheSpellingCheckIsRefused) {
    ASSERT_TRUE(openHexOf("one"));
    m_document.Spelling();
    EXPECT_EQ(m_prompts.messages, QStringList(u"Spell check is not allowed in Hex mode."_qs));
}

TEST_F(HexMode, PrintingIsRefused) {
    ASSERT_TRUE(openHexOf("one"));
    m_document.PrintContent();
    EXPECT_EQ(m_prompts.messages, QStringList(u"Printing is not allowed in Hex mode."_qs));
    EXPECT_EQ(m_given.printDialogs.printersAsked, 0);
}

TEST_F(HexMode, ItsOwnFormsComeUpInHexModeAlone) {
    ASSERT_TRUE(openHexOf(QByteArray(1000, 'a')));
    const auto cancelled = [&](void (frmDocument::*command)(), const char* form) {
        bool came = false;
        QTimer::singleShot(0, &m_document, [&] {
            if (auto* shownForm = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
                came = shownForm->objectName() == QLatin1String(form);
                shownForm->reject();
            }
        });
        (m_document.*command)();
        QApplication::processEvents();
        return came;
    };
    EXPECT_TRUE(cancelled(&frmDocument::GotoPage, "frmGotoPage"));
    EXPECT_TRUE(cancelled(&frmDocument::GotoOffset, "frmGotoOffSet"));
    EXPECT_TRUE(cancelled(&frmDocument::SelectBlock, "frmBlock"));
    m_document.setTextEdit(true);
    for (void (frmDocument::*command)() :
         {&frmDocument::GotoPage, &frmDocument::GotoOffset, &frmDocument::SelectBlock}) {
        EXPECT_FALSE(cancelled(command, ""));
    }
}

// Searches from the find bar

TEST_F(HexMode, TheFindBarSearchesBytesFromThePaneOfDigits) {
    ASSERT_TRUE(openHexOf("one two one"));
    QSignalSpy told(&m_document, &frmDocument::AfterFind);
    m_document.FindNext(u"6F 6E "_qs);
    EXPECT_EQ(cursor(), 9);
    m_document.FindPrev(u"6F 6E "_qs);
    EXPECT_EQ(cursor(), 1);
    EXPECT_TRUE(m_document.FindText(u"74 77 "_qs, false, true, true));
    EXPECT_EQ(cursor(), 5);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
    EXPECT_EQ(told.count(), 3);
}

TEST_F(HexMode, TheFindBarSearchesTextFromThePaneOfCharacters) {
    ASSERT_TRUE(openHexOf("one two ONE"));
    pressKey(Qt::Key_Tab);
    m_options.CaseSensitiveOn = false;
    m_document.FindNext(u"one"_qs);
    EXPECT_EQ(cursor(), 9);
    m_options.CaseSensitiveOn = true;
    m_document.FindNext(u"one"_qs);
    EXPECT_EQ(cursor(), 1);
    EXPECT_TRUE(m_document.FindText(u"Two"_qs, false, false, false));
    EXPECT_EQ(cursor(), 5);
    EXPECT_FALSE(m_document.FindText(u"Two"_qs, false, true, false));
    EXPECT_EQ(m_prompts.messages, QStringList(u"The search string not found."_qs));
}

TEST_F(HexMode, WhatIsNotFoundIsTold) {
    ASSERT_TRUE(openHexOf("one"));
    m_document.FindNext(u"FF "_qs);
    m_document.FindPrev(u"no bytes"_qs);
    EXPECT_FALSE(m_document.FindText(QString(), false, false, false));
    EXPECT_EQ(m_prompts.messages, QStringList(3, u"The search string not found."_qs));
    EXPECT_EQ(cursor(), 1);
}

TEST_F(HexMode, AnEmptyTextSearchesForTheLastOneAgain) {
    ASSERT_TRUE(openHexOf("aXbXcX"));
    m_document.FindNext(u"58 "_qs);
    ASSERT_EQ(cursor(), 2);
    m_document.FindNext(QString());
    EXPECT_EQ(cursor(), 4);
}

TEST_F(HexMode, ASearchTellsTheFindBarWhatForAndHow) {
    struct Row {
        qint16 type;
        bool shared;
        bool expected;
    };
    ASSERT_TRUE(openHexOf("one"));
    m_options.RegExpOn = true;
    for (const Row& row : {Row{0, true, true}, Row{0, false, false}, Row{1, true, false}, Row{2, false, true}}) {
        m_options.CaseSensitiveOn = row.shared;
        QSignalSpy told(&m_document, &frmDocument::AfterFind);
        hex().FindDown(u"6E "_qs, row.type);
        ASSERT_EQ(told.count(), 1);
        EXPECT_EQ(told.first(), QList<QVariant>({u"6E "_qs, row.expected, true, false}));
    }
}

TEST_F(HexMode, TheFindBarTakesHexDigitsWithOrWithoutBlanks) {
    ASSERT_TRUE(openHexOf(QByteArray("....\xDE\xAD\xBE\xEF....")));
    for (const auto& text : {u"DEADBEEF"_qs, u"DE AD BE EF"_qs, u"dead beef"_qs}) {
        pressKey(Qt::Key_Home, Qt::ControlModifier);
        EXPECT_TRUE(m_document.FindText(text, false, false, false)) << text.toStdString();
        EXPECT_EQ(cursor(), 5) << text.toStdString();
        pressKey(Qt::Key_Home, Qt::ControlModifier);
        m_document.FindNext(text);
        EXPECT_EQ(cursor(), 5) << text.toStdString();
    }
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(HexMode, AReloadAsTextEndsTheFormAndLeavesTheBytesAlone) {
    const QString file = fileOf("one two");
    ASSERT_TRUE(openHex(file));
    bool isFormOver = false;
    QTimer::singleShot(0, &m_document, [&] {
        const QPointer<QDialog> form(qobject_cast<QDialog*>(QApplication::activeModalWidget()));
        ASSERT_TRUE(form);
        writeFile(file, "two one");
        setTime(file, documenttest::SomeTime + 5);
        m_prompts.answerYes();
        if (m_document.FileNeedToReload())
            m_document.ReloadFile();
        isFormOver = !form || !form->isVisible();
    });
    m_document.Find();
    EXPECT_TRUE(isFormOver);
    ASSERT_TRUE(m_document.TextEdit());
    EXPECT_EQ(focused(), &textWidget());
    press(u"41"_qs);
    EXPECT_EQ(view().Text(), u"41two one"_qs);
    EXPECT_EQ(shown(), QByteArray("6F6E652074776F"));
    EXPECT_FALSE(hex().Modified());
}

TEST_F(HexMode, ReplacedAndFilledBytesAreSaidToNeedSaveAs) {
    ASSERT_TRUE(openHexOf("one two"));
    QSignalSpy changes(&m_document, &frmDocument::LimitationsChange);
    EXPECT_EQ(m_document.limitations(), QString());
    EXPECT_EQ(hex().ReplaceAll(u"6F "_qs, u"30 "_qs, 0), 2);
    EXPECT_EQ(changes.count(), 1);
    const QString notice = m_document.limitations();
    EXPECT_TRUE(notice.contains(u"Save As"_qs)) << notice.toStdString();
    EXPECT_TRUE(m_document.SaveFile(m_document.filename));
    EXPECT_EQ(readFile(m_document.filename), QByteArray("one two"));
    EXPECT_EQ(m_document.limitations(), notice);
    EXPECT_TRUE(m_document.SaveFile(m_document.filename, SaveFormats::AsLoaded, true));
    EXPECT_EQ(readFile(m_document.filename), QByteArray("0ne tw0"));
    EXPECT_EQ(m_document.limitations(), QString());
}

TEST_F(HexMode, NothingIsSavedWhereNeitherBytesNorTextAreLoaded) {
    m_document.setTextEdit(false);
    const QString file = path(u"new.bin"_qs);
    EXPECT_FALSE(m_document.SaveFile(file));
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_TRUE(m_document.filename.isEmpty());
    EXPECT_EQ(m_prompts.messages, QStringList(file + u"\nNothing was saved, because no bytes are loaded."_qs));
}

TEST_F(HexMode, AnUntitledTextIsSavedWhileNoBytesAreLoaded) {
    type(u"typed \u00E4"_qs);
    answerSwitch(1, "cmdSwitch");
    m_document.setTextEdit(false);
    ASSERT_FALSE(m_document.TextEdit());
    const QString file = path(u"new.txt"_qs);
    EXPECT_TRUE(m_document.SaveFile(file));
    EXPECT_EQ(readFile(file), QByteArray("typed \u00E4"));
    EXPECT_EQ(m_document.filename, file);
    EXPECT_FALSE(m_document.isChange);
    EXPECT_FALSE(view().FileChanged);
    m_document.setTextEdit(false);
    EXPECT_EQ(m_asked, 1);
    EXPECT_EQ(shown(), QByteArray("7479706564 20C3A4").replace(" ", ""));
}

TEST_F(HexMode, AnUntitledTextThatCannotBeSavedStaysAChange) {
    type(u"typed"_qs);
    answerSwitch(1, "cmdSwitch");
    m_document.setTextEdit(false);
    EXPECT_FALSE(m_document.SaveFile(path(u"none/new.txt"_qs)));
    EXPECT_EQ(m_prompts.messages.size(), 1);
    EXPECT_TRUE(view().FileChanged);
    EXPECT_TRUE(m_document.isChange);
    EXPECT_EQ(m_document.filename, QString());
}

TEST_F(HexMode, LoadedBytesAreSavedWhateverTheTextViewHolds) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    m_document.setTextEdit(false);
    press(u"41"_qs);
    EXPECT_TRUE(m_document.SaveFile(file));
    EXPECT_EQ(readFile(file), QByteArray("Ane"));
}

// Bookmarks and menus

TEST_F(HexMode, BookmarksAreThoseOfTheBytes) {
    ASSERT_TRUE(openHexOf(QByteArray(100, 'a')));
    for (const int moves : {0, 1, 1}) {
        for (int i = 0; i < moves; ++i)
            pressKey(Qt::Key_Right);
        m_document.ToggleBookmark();
    }
    EXPECT_EQ(bookmarkCount(), 3);
    m_document.FirstBookmark();
    EXPECT_EQ(cursor(), 1);
    m_document.NextBookmark();
    EXPECT_EQ(cursor(), 2);
    m_document.LastBookmark();
    EXPECT_EQ(cursor(), 3);
    m_document.PrevBookmark();
    EXPECT_EQ(cursor(), 2);
    m_document.ToggleBookmark();
    EXPECT_EQ(m_prompts.messages, QStringList(u"Bookmark already exists!"_qs));
    m_document.DeleteBookmark();
    EXPECT_EQ(bookmarkCount(), 2);
    m_prompts.answerNo();
    m_document.ClearAllBookmark();
    EXPECT_EQ(bookmarkCount(), 2);
    m_prompts.answerYes();
    m_document.ClearAllBookmark();
    EXPECT_EQ(bookmarkCount(), 0);
    EXPECT_EQ(m_prompts.questions, QStringList(2, u"Clear all bookmarks?"_qs));
}

TEST_F(HexMode, ABookmarkIsDeletedInHexModeAlone) {
    ASSERT_TRUE(openHexOf("one"));
    m_document.ToggleBookmark();
    view().show();  // text mode, with the hex view unchanged
    m_document.DeleteBookmark();
    EXPECT_EQ(bookmarkCount(), 1);
}

TEST_F(HexMode, ThePanesBringTheirMenuUp) {
    ASSERT_TRUE(openHexOf("one"));
    QTest::mouseClick(&pane(2), Qt::RightButton, {}, QPoint(4, 4));
    EXPECT_TRUE(menu("HEX").isVisible());
    EXPECT_FALSE(menu("EditText").isVisible());
    EXPECT_EQ(menu("HEX").pos(), pane(2).mapToGlobal(QPoint(4, 4)));
    menu("HEX").close();
}

TEST_F(HexMode, TheListOfBookmarksBringsItsMenuUp) {
    ASSERT_TRUE(openHexOf("one"));
    m_document.ToggleBookmark();
    pressKey(Qt::Key_Right);
    m_document.ToggleBookmark();
    const QPoint at(9, 7);
    QTest::mousePress(bookmarks().viewport(), Qt::RightButton, {}, at);
    EXPECT_FALSE(menu("BOOK").isVisible());
    QTest::mouseRelease(bookmarks().viewport(), Qt::RightButton, {}, at);
    EXPECT_TRUE(menu("BOOK").isVisible());
    EXPECT_EQ(menu("BOOK").pos().y(), bookmarks().viewport()->mapToGlobal(at).y());  // the screen is too narrow for x
    menu("BOOK").close();
    choose("BOOK", "mnuHexDelBookmark");
    EXPECT_EQ(bookmarkCount(), 1);
    m_prompts.answerYes();
    choose("BOOK", "mnuHexDelAllBookmark");
    EXPECT_EQ(bookmarkCount(), 0);
}

TEST_F(HexMode, TheMenuFollowsTheLock) {
    ASSERT_TRUE(openHexOf("one"));
    for (const bool readOnly : {false, true}) {
        m_document.isReadOnly = readOnly;
        Q_EMIT hex().ContextMenuRequest(1, 1, u"HEX"_qs);
        EXPECT_EQ(menu("HEX").findChild<QAction*>(u"mnuHexUndo"_qs)->isEnabled(), !readOnly);
        EXPECT_EQ(menu("HEX").findChild<QAction*>(u"mnuHexReadonly"_qs)->isChecked(), readOnly);
        menu("HEX").close();
    }
}

TEST_F(HexMode, AnEntryOfTheMenuRunsTheOperationOfItsName) {
    ASSERT_TRUE(openHexOf("one"));
    press(u"41"_qs);
    choose("HEX", "mnuHexCopy");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"41"_qs);
    choose("HEX", "mnuHexUndo");
    EXPECT_EQ(shown(), QByteArray("6F6E65"));
    choose("HEX", "mnuHexToggleBookmark");
    EXPECT_EQ(bookmarkCount(), 1);
    choose("HEX", "mnuHexDelBookmark");
    EXPECT_EQ(bookmarkCount(), 0);
    choose("HEX", "mnuHexReadonly");
    EXPECT_EQ(m_host.calls.last(), u"ChangeReadOnly"_qs);
}
