#include "document/HexDocumentFixture.h"
#include "editor/control/ControlBookmarks.h"
#include "hex/bytes/WorkingCopy.h"

#include <QSignalSpy>

/// The switch of a document between text and hex.
class SwitchMode : public HexDocumentFixture {};

TEST_F(SwitchMode, ExactlyOneViewIsVisible) {
    EXPECT_TRUE(view().isVisible());
    EXPECT_FALSE(hex().isVisible());
    m_document.setTextEdit(false);
    EXPECT_FALSE(view().isVisible());
    EXPECT_TRUE(hex().isVisible());
    EXPECT_FALSE(m_document.property("TextEdit").toBool());
    m_document.setProperty("TextEdit", true);
    EXPECT_TRUE(view().isVisible());
    EXPECT_FALSE(hex().isVisible());
    EXPECT_TRUE(m_document.TextEdit());
}

TEST_F(SwitchMode, ASavedUnchangedDocumentIsAskedNothing) {
    ASSERT_TRUE(open(fileOf("one")));
    m_document.setTextEdit(false);
    EXPECT_EQ(shown(), QByteArray("6F6E65"));
    m_document.setTextEdit(true);
    EXPECT_EQ(view().Text(), u"one"_qs);
    EXPECT_EQ(m_asked, 0);
    EXPECT_FALSE(m_document.isChange);
}

TEST_F(SwitchMode, CancelLeavesModeTextSelectionAndUndo) {
    ASSERT_TRUE(open(fileOf("one")));
    type(u"x"_qs);
    select(1, 3);
    for (const int option : {0, 1}) {
        answerSwitch(option, "cmdCancel");
        m_document.setTextEdit(false);
        EXPECT_TRUE(m_document.TextEdit());
        EXPECT_EQ(view().Text(), u"xone"_qs);
        EXPECT_EQ(view().SelText(), u"on"_qs);
        EXPECT_TRUE(canUndo());
        EXPECT_TRUE(m_document.isChange);
        EXPECT_TRUE(view().FileChanged);
    }
    EXPECT_EQ(m_asked, 2);
    EXPECT_FALSE(m_host.calls.contains(u"SaveDocument 1 1"_qs));
}

TEST_F(SwitchMode, CancelLeavesTheBytesAndTheirUndo) {
    ASSERT_TRUE(openHexOf("one"));
    press(u"41"_qs);
    answerSwitch(1, "cmdCancel");
    m_document.setTextEdit(true);
    EXPECT_EQ(m_asked, 1);
    EXPECT_FALSE(m_document.TextEdit());
    EXPECT_EQ(shown(), QByteArray("416E65"));
    EXPECT_TRUE(hex().Modified());
    EXPECT_TRUE(m_document.isChange);
    m_document.Undo();
    EXPECT_EQ(shown(), QByteArray("6F6E65"));
}

TEST_F(SwitchMode, SavingFirstSavesInTheModeThatIsLeft) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    type(u"x"_qs);
    m_host.during[u"SaveDocument"_qs] = [&] {
        EXPECT_TRUE(m_document.TextEdit());
        EXPECT_TRUE(m_document.SaveFile(file));
    };
    answerSwitch(0, "cmdSwitch");
    m_host.take();
    m_document.setTextEdit(false);
    EXPECT_EQ(m_host.take().first(), u"SaveDocument 1 1"_qs);
    EXPECT_EQ(shown(), QByteArray("786F6E65"));
    EXPECT_EQ(documenttest::readFile(file), QByteArray("xone"));

    press(u"41"_qs);
    m_host.during[u"SaveDocument"_qs] = [&] {
        EXPECT_FALSE(m_document.TextEdit());
        EXPECT_TRUE(m_document.SaveFile(file));
    };
    answerSwitch(0, "cmdSwitch");
    m_document.setTextEdit(true);
    EXPECT_EQ(view().Text(), u"Aone"_qs);
    EXPECT_EQ(documenttest::readFile(file), QByteArray("Aone"));
    EXPECT_EQ(m_asked, 2);
}

TEST_F(SwitchMode, DiscardingLoadsTheFileAsItIsOnDisk) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    type(u"x"_qs);
    answerSwitch(1, "cmdSwitch");
    m_document.setTextEdit(false);
    EXPECT_EQ(shown(), QByteArray("6F6E65"));
    EXPECT_FALSE(m_document.isChange);
    EXPECT_EQ(m_document.DocIcon(), 0);

    press(u"41"_qs);
    ASSERT_TRUE(m_document.isChange);
    answerSwitch(1, "cmdSwitch");
    m_document.setTextEdit(true);
    EXPECT_EQ(view().Text(), u"one"_qs);
    EXPECT_FALSE(m_document.isChange);
    EXPECT_EQ(documenttest::readFile(file), QByteArray("one"));
    EXPECT_FALSE(m_host.calls.contains(u"SaveDocument 1 1"_qs));
}

TEST_F(SwitchMode, ASaveThatCameToNothingDoesNotHoldTheSwitch) {
    type(u"abc"_qs);
    answerSwitch(0, "cmdSwitch");
    m_document.setTextEdit(false);
    EXPECT_EQ(m_host.calls, QStringList(u"SaveDocument 1 1"_qs));
    EXPECT_FALSE(m_document.TextEdit());
    EXPECT_FALSE(hex().FileOpen());
    EXPECT_TRUE(shown().isEmpty());
}

TEST_F(SwitchMode, AnUntitledTextWaitsInItsViewAndIsAskedAboutEachTime) {
    type(u"abc"_qs);
    for (int i = 1; i <= 2; ++i) {
        answerSwitch(1, "cmdSwitch");
        m_document.setTextEdit(false);
        EXPECT_EQ(m_asked, i);
        EXPECT_FALSE(m_document.TextEdit());
        EXPECT_TRUE(m_document.isChange);
        m_document.setTextEdit(true);
        EXPECT_EQ(m_asked, i);
        EXPECT_EQ(view().Text(), u"abc"_qs);
        EXPECT_TRUE(view().FileChanged);
    }
    EXPECT_TRUE(canUndo());
}

TEST_F(SwitchMode, EventsRunOnceBeforeTheBytesAreLoaded) {
    ASSERT_TRUE(open(fileOf("one")));
    bool ran = false;
    QTimer::singleShot(0, &m_document, [&] {
        ran = true;
        EXPECT_TRUE(hex().isVisible());
        EXPECT_FALSE(hex().FileOpen());
    });
    m_document.setTextEdit(false);
    EXPECT_TRUE(ran);
    EXPECT_TRUE(hex().FileOpen());
}

TEST_F(SwitchMode, AReadOnlyDocumentStaysSoInTheOtherView) {
    ASSERT_TRUE(open(fileOf("one")));
    m_document.ChangeToReadOnly();
    m_document.setTextEdit(false);
    EXPECT_TRUE(m_document.isReadOnly);
    EXPECT_TRUE(m_document.Locked());
    EXPECT_TRUE(hex().Locked());
    EXPECT_EQ(m_document.DocIcon(), 2);
    press(u"41"_qs);
    EXPECT_EQ(shown(), QByteArray("6F6E65"));
    m_document.setTextEdit(true);
    EXPECT_TRUE(m_document.isReadOnly);
    EXPECT_TRUE(view().Locked());
    type(u"x"_qs);
    EXPECT_EQ(view().Text(), u"one"_qs);
}

TEST_F(SwitchMode, TheFlagsAreThoseOfALoadedFile) {
    ASSERT_TRUE(open(fileOf("one"), true));
    m_document.isChange = true;
    m_document.isNew = true;
    m_document.setTextEdit(false);
    EXPECT_FALSE(m_document.isChange);
    EXPECT_FALSE(m_document.isNew);
    EXPECT_TRUE(m_document.isReadOnly);
    EXPECT_EQ(m_document.LastUpdate, m_document.KnownUpdate);
}

TEST_F(SwitchMode, SelectionUndoAndBookmarksOfTheTextGoWithTheReload) {
    ASSERT_TRUE(open(fileOf("one\ntwo\nthree")));
    type(u"x"_qs);
    ASSERT_TRUE(m_document.SaveFile(m_document.filename));
    view().GotoTextLine(2);
    m_document.ToggleBookmark();
    m_document.setTextEdit(false);
    m_document.setTextEdit(true);
    EXPECT_EQ(view().CurrentLine(), 0);
    EXPECT_EQ(view().SelLength(), 0);
    EXPECT_FALSE(canUndo());
    EXPECT_FALSE(isBookmarked(2));
}

TEST_F(SwitchMode, AFreshlyLoadedTextIsScrolledToItsTop) {
    QByteArray bytes;
    for (int line = 0; line < 2000; ++line)
        bytes += "line " + QByteArray::number(line) + QByteArray(300, 'x') + '\n';
    const QString file = fileOf(bytes);
    ASSERT_TRUE(open(file));
    const std::pair<const char*, std::function<void()>> loads[] = {
        {"switch",
         [&] {
             m_document.setTextEdit(false);
             m_document.setTextEdit(true);
         }},
        {"reload", [&] { m_document.ReloadFile(); }},
        {"encoding", [&] { m_document.ReloadTextFile(file, SaveFormats::NoByteOrderMark); }},
        {"file", [&] { ASSERT_TRUE(open(file)); }},
    };
    for (const auto& [way, load] : loads) {
        view().GotoTextLine(1500);
        ask(QsciScintillaBase::SCI_SETXOFFSET, 400);
        ASSERT_GT(ask(QsciScintillaBase::SCI_GETFIRSTVISIBLELINE), 1000) << way;
        load();
        EXPECT_EQ(view().CurrentLine(), 0) << way;
        EXPECT_EQ(ask(QsciScintillaBase::SCI_GETFIRSTVISIBLELINE), 0) << way;
        EXPECT_EQ(ask(QsciScintillaBase::SCI_GETXOFFSET), 0) << way;
        QApplication::processEvents();
        EXPECT_EQ(ask(QsciScintillaBase::SCI_GETFIRSTVISIBLELINE), 0) << way;
    }
}

TEST_F(SwitchMode, FreshlyLoadedBytesAreScrolledToTheirTop) {
    const QString file = fileOf(QByteArray(5000, 'a'));
    ASSERT_TRUE(openHex(file));
    m_document.resize(300, 200);
    QApplication::processEvents();
    const auto isSeen = [&](int row) {
        const QRect cell = pane(1).cellRect({row, 0});
        return m_document.rect().contains(QRect(pane(1).mapTo(&m_document, cell.topLeft()), cell.size()));
    };
    for (int i = 0; i < 2; ++i) {
        pressKey(Qt::Key_End, Qt::ControlModifier);
        ASSERT_GT(cursor(), 4000);
        ASSERT_FALSE(isSeen(0));
        if (i == 0) {
            m_document.setTextEdit(true);
            m_document.setTextEdit(false);
        } else {
            ASSERT_TRUE(openHex(file));
        }
        QApplication::processEvents();
        EXPECT_EQ(cursor(), 1);
        EXPECT_TRUE(isSeen(0)) << i;
    }
}

TEST_F(SwitchMode, AViewThatCouldNotBeLoadedDoesNotHoldTheFile) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    ASSERT_TRUE(QFile::rename(file, path(u"away"_qs)));
    m_document.setTextEdit(false);
    EXPECT_FALSE(m_document.holdsFile());
    m_document.setTextEdit(true);
    EXPECT_FALSE(m_document.holdsFile());
    ASSERT_TRUE(QFile::rename(path(u"away"_qs), file));
    m_document.setTextEdit(false);
    EXPECT_TRUE(m_document.holdsFile());
    m_document.setTextEdit(true);
    EXPECT_TRUE(m_document.holdsFile());
}

TEST_F(SwitchMode, CursorUndoAndBookmarksOfTheBytesGoWithTheReload) {
    ASSERT_TRUE(openHexOf(QByteArray(1000, 'a')));
    press(u"41"_qs);
    ASSERT_TRUE(m_document.SaveFile(m_document.filename));
    pressKey(Qt::Key_End, Qt::ControlModifier);
    m_document.ToggleBookmark();
    ASSERT_EQ(bookmarks().model()->rowCount(), 1);
    ASSERT_GT(cursor(), 1);
    m_document.setTextEdit(true);
    m_document.setTextEdit(false);
    EXPECT_EQ(cursor(), 1);
    EXPECT_EQ(bookmarks().model()->rowCount(), 0);
    m_document.Undo();
    EXPECT_TRUE(shown().startsWith("4161"));
}

TEST_F(SwitchMode, TheHiddenViewKeepsWhatItHadUntilItIsLoadedAnew) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    m_document.setTextEdit(false);
    documenttest::writeFile(file, "two");
    EXPECT_EQ(view().Text(), u"one"_qs);
    m_document.setTextEdit(true);
    EXPECT_EQ(view().Text(), u"two"_qs);
    EXPECT_EQ(shown(), QByteArray("6F6E65"));
}

TEST_F(SwitchMode, TheLanguageIsPickedByTheFileAgain) {
    m_given.globals.languages.LoadLanguageIndex();
    ASSERT_TRUE(openHex(fileOf("int i;", u"a.cpp"_qs)));
    EXPECT_EQ(m_document.GetLang(), QString());
    m_document.setTextEdit(true);
    EXPECT_EQ(m_document.GetLang(), u"C++"_qs);
}

TEST_F(SwitchMode, TextModeSetInTextModeLooksAtTheBytesAloneAndReloads) {
    ASSERT_TRUE(open(fileOf("one")));
    type(u"x"_qs);
    m_document.setTextEdit(true);
    EXPECT_EQ(m_asked, 0);
    EXPECT_EQ(view().Text(), u"one"_qs);

    m_document.setTextEdit(false);
    press(u"41"_qs);
    answerSwitch(1, "cmdSwitch");
    m_document.setTextEdit(true);
    ASSERT_EQ(m_asked, 1);
    answerSwitch(0, "cmdCancel");  // the discarded bytes are in the hidden view still
    m_document.setTextEdit(true);
    EXPECT_EQ(m_asked, 2);
}

TEST_F(SwitchMode, HexModeSetInHexModeReloadsTheBytes) {
    ASSERT_TRUE(openHexOf("one"));
    press(u"41"_qs);
    m_document.setTextEdit(false);
    EXPECT_EQ(m_asked, 0);
    EXPECT_EQ(shown(), QByteArray("6F6E65"));
    EXPECT_FALSE(m_document.isChange);
}

TEST_F(SwitchMode, AByteOfOneDigitIsAChangeToo) {
    ASSERT_TRUE(openHexOf("one"));
    press(u"4"_qs);
    answerSwitch(0, "cmdCancel");
    m_document.setTextEdit(true);
    EXPECT_EQ(m_asked, 1);
    EXPECT_EQ(shown(), QByteArray("046E65"));
}

TEST_F(SwitchMode, AFileThatIsGoneIsToldAndTheViewIsSwitchedAllTheSame) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    ASSERT_TRUE(QFile::remove(file));
    m_document.setTextEdit(false);
    EXPECT_EQ(m_prompts.messages.size(), 1);
    EXPECT_FALSE(m_document.TextEdit());
    EXPECT_FALSE(hex().FileOpen());
    EXPECT_EQ(m_document.filename, file);
    m_document.setTextEdit(true);
    EXPECT_EQ(m_prompts.messages.size(), 2);
    EXPECT_TRUE(m_document.TextEdit());
    EXPECT_EQ(view().Text(), u"one"_qs);
}

TEST_F(SwitchMode, AnEmptyFileGivesAnEmptyHexViewWithoutAWord) {
    ASSERT_TRUE(open(fileOf("")));
    m_document.setTextEdit(false);
    EXPECT_FALSE(m_document.TextEdit());
    EXPECT_FALSE(hex().FileOpen());
    EXPECT_TRUE(m_prompts.messages.isEmpty());
    m_document.setTextEdit(true);
    type(u"x"_qs);
    EXPECT_EQ(view().Text(), u"x"_qs);
}

TEST_F(SwitchMode, TheFocusIsInTheViewThatBecameVisible) {
    ASSERT_TRUE(open(fileOf("one")));
    textWidget().setFocus();
    m_document.setTextEdit(false);
    EXPECT_EQ(focused(), &pane(1));
    m_document.setTextEdit(true);
    EXPECT_EQ(focused(), &textWidget());
    QPushButton elsewhere(&m_document);
    elsewhere.show();
    elsewhere.setFocus();
    m_document.setTextEdit(false);
    EXPECT_EQ(focused(), &pane(1));
    elsewhere.setFocus();
    m_document.setTextEdit(true);
    EXPECT_EQ(focused(), &textWidget());
}

TEST_F(SwitchMode, WithoutAFileTheFocusWaitsInTheHexViewItself) {
    textWidget().setFocus();
    m_document.setTextEdit(false);
    EXPECT_EQ(focused(), &hex());
    m_document.setTextEdit(true);
    EXPECT_EQ(focused(), &textWidget());
}

TEST_F(SwitchMode, TheFocusComesBackToThePaneInUse) {
    ASSERT_TRUE(openHexOf("one"));
    pressKey(Qt::Key_Tab);
    ASSERT_EQ(focused(), &pane(2));
    QPushButton elsewhere(&m_document);
    elsewhere.show();
    elsewhere.setFocus();
    m_document.setFocus();
    EXPECT_EQ(focused(), &pane(2));
}

TEST_F(SwitchMode, WhileItLoadsAnotherSwitchIsLeftOut) {
    ASSERT_TRUE(open(fileOf("one")));
    QTimer::singleShot(0, &m_document, [&] { m_document.setTextEdit(true); });
    m_document.setTextEdit(false);
    EXPECT_FALSE(m_document.TextEdit());
    EXPECT_EQ(shown(), QByteArray("6F6E65"));
}

TEST_F(SwitchMode, ACloseEventWhileItAsksIsIgnored) {
    ASSERT_TRUE(open(fileOf("one")));
    type(u"x"_qs);
    bool closed = true;
    whileAsked<frmSwitch>([&](frmSwitch& form) {
        closed = m_document.close();
        form.reject();
    });
    m_document.setTextEdit(false);
    EXPECT_FALSE(closed);
    EXPECT_TRUE(m_document.close());
}

TEST_F(SwitchMode, ADocumentThatGoesWhileItAsksIsNotTouchedAgain) {
    for (const bool confirmed : {true, false}) {
        auto* document = new frmDocument(&m_host, m_services);
        document->show();
        documenttest::typeInto(*document->GetEditor()->focusProxy(), u"x"_qs);
        QTimer::singleShot(0, &m_document, [&] {
            if (confirmed)
                qobject_cast<frmSwitch*>(QApplication::activeModalWidget())->accept();
            delete document;
        });
        document->setTextEdit(false);
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    }
    EXPECT_TRUE(m_host.calls.isEmpty());
}

TEST_F(SwitchMode, ADocumentThatGoesWhileItSavesFirstIsNotTouchedAgain) {
    auto* document = new frmDocument(&m_host, m_services);
    document->show();
    documenttest::typeInto(*document->GetEditor()->focusProxy(), u"x"_qs);
    m_host.during[u"SaveDocument"_qs] = [&] { delete document; };
    answerSwitch(0, "cmdSwitch");
    document->setTextEdit(false);
    EXPECT_EQ(m_host.calls, QStringList(u"SaveDocument 1 1"_qs));
}

TEST_F(SwitchMode, ADocumentThatGoesBeforeTheBytesAreLoadedIsNotTouchedAgain) {
    auto* document = new frmDocument(&m_host, m_services);
    ASSERT_TRUE(document->OpenFile(fileOf("one"), false, false, true));
    m_host.take();
    QTimer::singleShot(0, &m_document, [&] { delete document; });
    document->setTextEdit(false);
    EXPECT_TRUE(m_host.calls.isEmpty());
}
