#include "document/DocumentFixture.h"
#include "hex/ucHex.h"

#include <QAccessible>
#include <QGuiApplication>
#include <Qsci/qsciscintillabase.h>

using documenttest::readFailure;
using documenttest::setMode;
using documenttest::setTime;
using documenttest::SomeTime;
using documenttest::writeFile;

namespace {

bool pointerIsBusy() {
    return QGuiApplication::overrideCursor() && QGuiApplication::overrideCursor()->shape() == Qt::WaitCursor;
}

/// The state that a failed load or save must not change.
struct Fields {
    QString filename;
    bool isChange;
    bool isNew;
    bool isReadOnly;
    int icon;
    bool operator==(const Fields&) const = default;
};

Fields fieldsOf(const frmDocument& document) {
    return {document.filename, document.isChange, document.isNew, document.isReadOnly, document.DocIcon()};
}

}  // namespace

class Document : public DocumentFixture {};

TEST_F(Document, BeginsUntitledAndUntouchedInTextMode) {
    EXPECT_EQ(m_document.filename, QString());
    EXPECT_TRUE(m_document.isNew);
    EXPECT_FALSE(m_document.isChange);
    EXPECT_FALSE(m_document.isReadOnly);
    EXPECT_FALSE(m_document.Locked());
    EXPECT_TRUE(m_document.TextEdit());
    EXPECT_EQ(m_document.LastUpdate, QString());
    EXPECT_EQ(m_document.KnownUpdate, QString());
    EXPECT_EQ(m_document.DocIcon(), 0);
    EXPECT_EQ(m_document.gParent, &m_host);
    EXPECT_TRUE(m_host.calls.isEmpty());
}

TEST_F(Document, ShowsTheHighlightOfItsRowFromTheStart) {
    EXPECT_EQ(view().LastHighlightLine(), 0);
    EXPECT_NE(ask(QsciScintillaBase::SCI_GETCARETLINEVISIBLE), 0);
}

TEST_F(Document, ItsPartsBearTheirNames) {
    EXPECT_EQ(m_document.objectName(), u"frmDocument"_qs);
    EXPECT_EQ(m_document.findChild<rtCM*>(u"rtCM1"_qs), &view());
    EXPECT_EQ(view().findChild<QWidget*>(u"TextControl1"_qs), &textWidget());
    EXPECT_NE(m_document.findChild<ucHex*>(u"ucHex1"_qs), nullptr);
}

TEST_F(Document, ItsFieldsCanBeReadFromOutside) {
    m_document.fIdx = u"F7"_qs;
    m_document.setCaption(u"Document7"_qs);
    const QString file = fileOf("text");
    ASSERT_TRUE(open(file, true));
    m_document.setLocked(true);
    EXPECT_EQ(m_document.property("fIdx").toString(), u"F7"_qs);
    EXPECT_EQ(m_document.property("Caption").toString(), u"Document7"_qs);
    EXPECT_EQ(m_document.property("filename").toString(), file);
    EXPECT_TRUE(m_document.property("isReadOnly").toBool());
    EXPECT_TRUE(m_document.property("Locked").toBool());
    EXPECT_TRUE(m_document.property("TextEdit").toBool());
    EXPECT_FALSE(m_document.property("isNew").toBool());
    EXPECT_FALSE(m_document.property("isChange").toBool());
    EXPECT_EQ(m_document.property("DocIcon").toInt(), 2);
    EXPECT_FALSE(m_document.LastUpdate.isEmpty());
    EXPECT_EQ(m_document.property("LastUpdate").toString(), m_document.LastUpdate);
    m_document.KnownUpdate = u"2000/01/01 00:00:00"_qs;
    EXPECT_EQ(m_document.property("KnownUpdate").toString(), m_document.KnownUpdate);
}

TEST_F(Document, IsReloadedFromOutsideByItsPathAlone) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    documenttest::writeFile(file, QByteArray("\xFF\xFEt\0", 4));
    EXPECT_TRUE(QMetaObject::invokeMethod(&m_document, "ReloadTextFile", Q_ARG(QString, file)));
    EXPECT_EQ(view().Text(), u"t"_qs);
}

TEST_F(Document, TheTextLiesWithinANarrowMargin) {
    m_document.resize(300, 200);
    m_document.show();
    EXPECT_EQ(view().geometry(), QRect(1, 1, 298, 198));
}

TEST_F(Document, TakesTheFontOfTheSettings) {
    m_options.FontName = u"Monospace"_qs;
    m_options.FontSize = 17;
    const frmDocument document(&m_host, m_services);
    EXPECT_EQ(document.GetEditor()->FontName(), u"Monospace"_qs);
    EXPECT_EQ(document.GetEditor()->FontSize(), 17);
}

TEST_F(Document, TheFocusGoesToTheText) {
    m_document.show();
    m_document.setFocus();
    EXPECT_EQ(m_document.focusWidget(), &textWidget());
}

TEST_F(Document, TheCaptionNamesWindowAndTextAlike) {
    m_document.setCaption(u"/home/u/notes.txt"_qs);
    EXPECT_EQ(m_document.Caption(), u"/home/u/notes.txt"_qs);
    EXPECT_EQ(m_document.windowTitle(), u"/home/u/notes.txt"_qs);
    const QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&textWidget());
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->text(QAccessible::Name), u"/home/u/notes.txt"_qs);
}

TEST_F(Document, ACaptionWithTheMarkOfWindowTitlesComesBackWhole) {
    for (const QString& caption : {u"a[*].txt"_qs, u"[*][*]"_qs, u"[[*]*]"_qs}) {
        m_document.setCaption(caption);
        EXPECT_EQ(m_document.Caption(), caption);
        EXPECT_FALSE(m_document.isWindowModified());
    }
}

// Loading

TEST_F(Document, OpeningTakesTheFile) {
    const QString file = fileOf("one\ntwo\n");
    EXPECT_TRUE(open(file));
    EXPECT_EQ(m_document.filename, file);
    EXPECT_FALSE(m_document.isNew);
    EXPECT_FALSE(m_document.isChange);
    EXPECT_FALSE(m_document.isReadOnly);
    EXPECT_FALSE(view().FileChanged);
    EXPECT_EQ(view().Text(), u"one\ntwo\n"_qs);
    EXPECT_EQ(m_document.DocIcon(), 0);
    EXPECT_FALSE(m_document.LastUpdate.isEmpty());
    EXPECT_EQ(m_document.KnownUpdate, m_document.LastUpdate);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(Document, OpeningTellsTheFrameTabCaptionThenMode) {
    ASSERT_TRUE(open(fileOf("text")));
    EXPECT_EQ(m_host.calls, QStringList({u"SetTabCaption 1"_qs, u"SetEditModeIcon"_qs}));
}

TEST_F(Document, TheFrameIsToldWhenTheFieldsAreThoseOfTheFile) {
    const QString file = fileOf("text");
    bool told = false;
    m_host.during[u"SetTabCaption"_qs] = [&] {
        told = true;
        EXPECT_EQ(m_document.filename, file);
        EXPECT_FALSE(m_document.isNew);
        EXPECT_FALSE(m_document.LastUpdate.isEmpty());
    };
    ASSERT_TRUE(open(file));
    EXPECT_TRUE(told);
}

TEST_F(Document, OpeningReadOnlyIsTheCallersWordAlone) {
    const QString file = fileOf("text");
    ASSERT_TRUE(open(file, true));
    EXPECT_TRUE(m_document.isReadOnly);
    EXPECT_EQ(m_document.DocIcon(), 2);
    EXPECT_FALSE(m_document.Locked());
    ASSERT_TRUE(open(file, false));
    EXPECT_FALSE(m_document.isReadOnly);
    EXPECT_EQ(m_document.DocIcon(), 0);
}

TEST_F(Document, TheModeOfTheFileDoesNotMakeTheDocumentReadOnly) {
    const QString file = fileOf("text");
    setMode(file, 0444);
    ASSERT_TRUE(open(file));
    EXPECT_FALSE(m_document.isReadOnly);
    EXPECT_FALSE(m_document.Locked());
}

TEST_F(Document, ALockSetBeforeTheLoadOutlivesIt) {
    m_document.setLocked(true);
    ASSERT_TRUE(open(fileOf("text"), true));
    EXPECT_TRUE(m_document.Locked());
    type(u"x"_qs);
    EXPECT_EQ(view().Text(), u"text"_qs);
    EXPECT_FALSE(m_document.isChange);
}

TEST_F(Document, OpeningAnotherFileDropsTheEdits) {
    ASSERT_TRUE(open(fileOf("one")));
    type(u"x"_qs);
    ASSERT_TRUE(m_document.isChange);
    const QString other = fileOf("two", u"b.txt"_qs);
    ASSERT_TRUE(open(other));
    EXPECT_EQ(m_document.filename, other);
    EXPECT_FALSE(m_document.isChange);
    EXPECT_FALSE(view().FileChanged);
    EXPECT_EQ(view().Text(), u"two"_qs);
}

TEST_F(Document, OpeningIntoAnEditedUntitledDocumentMakesItASavedOne) {
    type(u"abc"_qs);
    ASSERT_TRUE(m_document.isChange);
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    EXPECT_EQ(m_document.filename, file);
    EXPECT_FALSE(m_document.isChange);
    EXPECT_FALSE(m_document.isNew);
    EXPECT_EQ(m_document.DocIcon(), 0);
    EXPECT_FALSE(canUndo());
}

TEST_F(Document, AFailedLoadOfAnUntitledDocumentLeavesItUntouched) {
    const Fields before = fieldsOf(m_document);
    EXPECT_FALSE(open(path(u"missing.txt"_qs)));
    EXPECT_EQ(fieldsOf(m_document), before);
    ASSERT_EQ(m_prompts.messages.size(), 1);
    EXPECT_EQ(m_prompts.messages.front(), readFailure(path(u"missing.txt"_qs), ENOENT));
    EXPECT_EQ(m_document.LastUpdate, QString());
}

TEST_F(Document, AFailedLoadLeavesFileTextAndChangesAndRefreshesTheTimes) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    const QString loadedAt = m_document.LastUpdate;
    type(u"x"_qs);
    const Fields before = fieldsOf(m_document);
    setTime(file, SomeTime + 60);
    m_host.calls.clear();

    EXPECT_FALSE(open(path(u"missing.txt"_qs), true));
    EXPECT_EQ(fieldsOf(m_document), before);
    EXPECT_TRUE(view().FileChanged);
    EXPECT_EQ(view().Text(), u"xone"_qs);
    EXPECT_NE(m_document.LastUpdate, loadedAt);
    EXPECT_EQ(m_document.KnownUpdate, m_document.LastUpdate);
    EXPECT_EQ(m_host.calls, QStringList({u"SetTabCaption 1"_qs, u"SetEditModeIcon"_qs}));
    EXPECT_FALSE(pointerIsBusy());
}

TEST_F(Document, AFolderIsToldAndNotOpened) {
    EXPECT_FALSE(open(m_folder.path()));
    ASSERT_EQ(m_prompts.messages.size(), 1);
    EXPECT_FALSE(m_prompts.messages.front().isEmpty());
    EXPECT_TRUE(m_document.isNew);
}

TEST_F(Document, AFifoIsToldAndNotWaitedFor) {
    const QString fifo = path(u"fifo"_qs);
    ASSERT_EQ(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    EXPECT_FALSE(m_document.OpenFile(fifo, false, true, true));
    ASSERT_EQ(m_prompts.messages.size(), 1);
    EXPECT_FALSE(m_prompts.messages.front().isEmpty());
}

TEST_F(Document, ThePointerIsBusyWhileItLoads) {
    bool busy = false;
    m_host.during[u"SetEditModeIcon"_qs] = [&] { busy = pointerIsBusy(); };
    ASSERT_TRUE(open(fileOf("text")));
    EXPECT_TRUE(busy);
    EXPECT_FALSE(pointerIsBusy());
}

TEST_F(Document, ItIsNotToldAsChangedByALoad) {
    int changes = 0;
    QObject::connect(&m_document, &frmDocument::FileChange, [&] { ++changes; });
    QObject::connect(&m_document, &frmDocument::DocChange, [&] { ++changes; });
    ASSERT_TRUE(open(fileOf("one")));
    ASSERT_TRUE(open(fileOf("two", u"b.txt"_qs)));
    EXPECT_EQ(changes, 0);
}

// Choice of the mode

TEST_F(Document, ABinaryFileChoosesHexWhenItIsCheckedAndTheSettingIsOn) {
    const QString file = fileOf(QByteArray("a\1b", 3));
    m_options.CheckHexModeWhenOpen = true;
    EXPECT_TRUE(m_document.OpenFile(file, false, true, true));
    EXPECT_FALSE(m_document.TextEdit());
    m_options.CheckHexModeWhenOpen = false;
    EXPECT_TRUE(m_document.OpenFile(file, false, true, true));
    EXPECT_TRUE(m_document.TextEdit());
    m_options.CheckHexModeWhenOpen = true;
    EXPECT_TRUE(m_document.OpenFile(file, false, false, true));
    EXPECT_TRUE(m_document.TextEdit());
}

TEST_F(Document, WithoutTheCheckTheCallerChoosesTheMode) {
    const QString file = fileOf("text");
    EXPECT_TRUE(m_document.OpenFile(file, false, false, false));
    EXPECT_FALSE(m_document.TextEdit());
    EXPECT_TRUE(m_document.OpenFile(file, false, true, false));
    EXPECT_TRUE(m_document.TextEdit());
}

TEST_F(Document, ReloadingComesBackAsTextWithoutTheBinaryTest) {
    const QString file = fileOf(QByteArray("a\1b", 3));
    ASSERT_TRUE(m_document.OpenFile(file, true, true, true));
    ASSERT_FALSE(m_document.TextEdit());
    writeFile(file, QByteArray("c\2d", 3));
    m_document.ReloadFile();
    EXPECT_TRUE(m_document.TextEdit());
    EXPECT_EQ(view().Text(), u"c\2d"_qs);
    EXPECT_TRUE(m_document.isReadOnly);
    EXPECT_EQ(m_document.DocIcon(), 2);
}

TEST_F(Document, ReloadingDropsTheEdits) {
    ASSERT_TRUE(open(fileOf("one")));
    type(u"x"_qs);
    m_document.ReloadFile();
    EXPECT_FALSE(m_document.isChange);
    EXPECT_FALSE(view().FileChanged);
    EXPECT_FALSE(canUndo());
    EXPECT_EQ(view().Text(), u"one"_qs);
}

TEST_F(Document, SettingTextModeInTextModeLoadsTheFileAnew) {
    ASSERT_TRUE(open(fileOf("one"), true));
    type(u"x"_qs);
    m_document.setTextEdit(true);
    EXPECT_EQ(view().Text(), u"one"_qs);
    EXPECT_FALSE(m_document.isChange);
    EXPECT_TRUE(m_document.isReadOnly);
}

TEST_F(Document, SettingTextModeKeepsTheTextOfAnUntitledDocument) {
    type(u"abc"_qs);
    m_document.setTextEdit(true);
    EXPECT_EQ(view().Text(), u"abc"_qs);
    EXPECT_TRUE(m_document.isChange);
    EXPECT_TRUE(view().FileChanged);
}

// Editing

TEST_F(Document, TheFirstEditMarksItChangedAndTouched) {
    int fileChanges = 0;
    int docChanges = 0;
    QObject::connect(&m_document, &frmDocument::FileChange, [&](frmDocument* document) {
        ++fileChanges;
        EXPECT_EQ(document, &m_document);
        EXPECT_TRUE(document->isChange);
        EXPECT_EQ(document->DocIcon(), 1);
        EXPECT_EQ(docChanges, 0);
    });
    QObject::connect(&m_document, &frmDocument::DocChange, [&](frmDocument* document) {
        ++docChanges;
        EXPECT_EQ(document, &m_document);
        EXPECT_EQ(fileChanges, 1);
    });
    type(u"a"_qs);
    EXPECT_EQ(fileChanges, 1);
    EXPECT_EQ(docChanges, 1);
    EXPECT_TRUE(m_document.isChange);
    EXPECT_FALSE(m_document.isNew);
    EXPECT_EQ(m_document.filename, QString());
    type(u"bc"_qs);
    EXPECT_EQ(fileChanges, 1);
    EXPECT_EQ(docChanges, 3);
}

TEST_F(Document, AnEditOfASavedDocumentMarksItChanged) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    type(u"x"_qs);
    EXPECT_TRUE(m_document.isChange);
    EXPECT_FALSE(m_document.isNew);
    EXPECT_EQ(m_document.filename, file);
    EXPECT_EQ(m_document.DocIcon(), 1);
}

TEST_F(Document, UndoingTheEditIsAnEditToo) {
    ASSERT_TRUE(open(fileOf("one")));
    type(u"x"_qs);
    int docChanges = 0;
    QObject::connect(&m_document, &frmDocument::DocChange, [&] { ++docChanges; });
    m_document.Undo();
    EXPECT_EQ(view().Text(), u"one"_qs);
    EXPECT_EQ(docChanges, 1);
    EXPECT_TRUE(m_document.isChange);
    m_document.Redo();
    EXPECT_EQ(view().Text(), u"xone"_qs);
    EXPECT_EQ(docChanges, 2);
}

TEST_F(Document, TheEditingCommandsReachTheText) {
    ASSERT_TRUE(open(fileOf("one")));
    m_document.SelectAll();
    EXPECT_EQ(view().SelText(), u"one"_qs);
    m_document.Copy();
    m_document.Cut();
    EXPECT_EQ(view().Text(), QString());
    m_document.Paste();
    m_document.Paste();
    EXPECT_EQ(view().Text(), u"oneone"_qs);
}

TEST_F(Document, MovesOfTheCaretAreTold) {
    ASSERT_TRUE(open(fileOf("one\ntwo")));
    m_document.show();
    QCoreApplication::processEvents();
    int moves = 0;
    QObject::connect(&m_document, &frmDocument::SelChange, [&](frmDocument* document) {
        ++moves;
        EXPECT_EQ(document, &m_document);
    });
    view().GotoTextLine(1);
    QCoreApplication::processEvents();
    EXPECT_GE(moves, 1);
    EXPECT_FALSE(m_document.isChange);
}

TEST_F(Document, TheCursorIsToldByLineColumnAndPosition) {
    EXPECT_EQ(m_document.GetCursorPos(), u"Ln 1 / 1, Col 1, Pos 1"_qs);
    ASSERT_TRUE(open(fileOf("one\ntwo\nthree")));
    view().setSelStart(6);
    view().setSelEnd(6);
    EXPECT_EQ(m_document.GetCursorPos(), u"Ln 2 / 3, Col 3, Pos 7"_qs);
}

TEST_F(Document, LinesOfTheCursorAreShownWithThousandsSeparators) {
    ASSERT_TRUE(open(fileOf(QByteArray("\n").repeated(1'234'566))));
    view().GotoTextLine(1'233);
    EXPECT_EQ(m_document.GetCursorPos(), u"Ln 1,234 / 1,234,567, Col 1, Pos 1234"_qs);
}

TEST_F(Document, EnablingConcernsTheTextView) {
    EXPECT_TRUE(m_document.DocEnabled());
    m_document.setDocEnabled(false);
    EXPECT_FALSE(m_document.DocEnabled());
    EXPECT_FALSE(textWidget().isEnabled());
    EXPECT_TRUE(m_document.isEnabled());
    m_document.setDocEnabled(true);
    EXPECT_TRUE(m_document.DocEnabled());
}

TEST_F(Document, ADroppedFileGoesToTheFrame) {
    drop(u"/home/u/ b.txt"_qs);
    EXPECT_EQ(m_host.calls, QStringList(u"OpenFile /home/u/ b.txt 0 1 1"_qs));
}

// Read-only

TEST_F(Document, TogglingReadOnlyLocksAndUnlocks) {
    ASSERT_TRUE(open(fileOf("one")));
    int told = 0;
    QObject::connect(&m_document, &frmDocument::FileChange, [&] { ++told; });
    m_document.ChangeToReadOnly();
    EXPECT_TRUE(m_document.isReadOnly);
    EXPECT_TRUE(m_document.Locked());
    EXPECT_EQ(m_document.DocIcon(), 2);
    EXPECT_EQ(told, 1);
    type(u"x"_qs);
    m_document.Paste();
    EXPECT_EQ(view().Text(), u"one"_qs);
    m_document.ChangeToReadOnly();
    EXPECT_FALSE(m_document.isReadOnly);
    EXPECT_FALSE(m_document.Locked());
    EXPECT_EQ(m_document.DocIcon(), 0);
    EXPECT_EQ(told, 2);
    EXPECT_FALSE(m_document.isNew);
}

TEST_F(Document, TogglingReadOnlyOfAChangedDocumentComesBackToTheChangedIcon) {
    ASSERT_TRUE(open(fileOf("one")));
    type(u"x"_qs);
    m_document.ChangeToReadOnly();
    EXPECT_EQ(m_document.DocIcon(), 2);
    EXPECT_TRUE(m_document.isChange);
    m_document.ChangeToReadOnly();
    EXPECT_EQ(m_document.DocIcon(), 1);
    EXPECT_TRUE(m_document.isChange);
}

TEST_F(Document, TogglingReadOnlyDoesNotLeaveTheSavedState) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    m_document.ChangeToReadOnly();
    EXPECT_EQ(m_document.filename, file);
    EXPECT_FALSE(m_document.isChange);
    EXPECT_FALSE(m_document.isNew);
}

TEST_F(Document, TogglingReadOnlyTakesTheFlagNotTheLockAsItsStart) {
    ASSERT_TRUE(open(fileOf("one")));
    m_document.setLocked(true);
    EXPECT_FALSE(m_document.isReadOnly);
    m_document.ChangeToReadOnly();
    EXPECT_TRUE(m_document.isReadOnly);
    EXPECT_TRUE(m_document.Locked());
}

TEST_F(Document, LockingIsToldOnceAndTouchesNoOtherFlag) {
    int told = 0;
    QObject::connect(&m_document, &frmDocument::FileChange, [&] { ++told; });
    m_document.setLocked(true);
    m_document.setLocked(true);
    EXPECT_EQ(told, 1);
    EXPECT_FALSE(m_document.isReadOnly);
    EXPECT_TRUE(m_document.isNew);
    EXPECT_EQ(m_document.DocIcon(), 0);
}

TEST_F(Document, AnUnknownIconIsLeftOut) {
    m_document.SetDocIcon(2);
    m_document.SetDocIcon(3);
    m_document.SetDocIcon(-1);
    EXPECT_EQ(m_document.DocIcon(), 2);
}
