#include "editor/control/TextControl.h"

#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlBookmarks.h"
#include "editor/control/ControlBraces.h"
#include "editor/control/ControlClipboard.h"
#include "editor/control/ControlFile.h"
#include "editor/control/ControlLineNumbers.h"
#include "editor/control/ControlLook.h"
#include "editor/control/ControlMacros.h"
#include "editor/control/ControlMouse.h"
#include "editor/control/ControlReplace.h"
#include "editor/control/ControlSearch.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/EditScope.h"
#include "editor/control/EditorKeys.h"
#include "editor/control/KeptBookmarks.h"
#include "editor/control/MacroRecorder.h"
#include "editor/control/PageUpdate.h"
#include "editor/held/Colouring.h"

#include <QContextMenuEvent>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPointer>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <array>
#include <span>
#include <utility>

using Sci = QsciScintillaBase;

namespace {

/// Commands that consist of several edits.
constexpr auto Composed = std::to_array<int>({Sci::SCI_PASTE, Sci::SCI_TAB, Sci::SCI_BACKTAB, Sci::SCI_NEWLINE});
/// Commands that delete or insert something wherever something is selected.
constexpr auto Edits = std::to_array<int>({Sci::SCI_NEWLINE, Sci::SCI_TAB, Sci::SCI_BACKTAB, Sci::SCI_CLEAR,
                                           Sci::SCI_DELETEBACK, Sci::SCI_DELWORDRIGHT, Sci::SCI_DELWORDLEFT});
/// Commands that keep to a column.
constexpr auto Vertical = std::to_array<int>(
    {Sci::SCI_LINEUP, Sci::SCI_LINEDOWN, Sci::SCI_LINEUPEXTEND, Sci::SCI_LINEDOWNEXTEND, Sci::SCI_LINEUPRECTEXTEND,
     Sci::SCI_LINEDOWNRECTEXTEND, Sci::SCI_PAGEUP, Sci::SCI_PAGEDOWN, Sci::SCI_PAGEUPEXTEND, Sci::SCI_PAGEDOWNEXTEND,
     Sci::SCI_PAGEUPRECTEXTEND, Sci::SCI_PAGEDOWNRECTEXTEND});
/// Commands that move the caret by a line.
constexpr auto LineSteps =
    std::to_array<int>({Sci::SCI_LINEUP, Sci::SCI_LINEDOWN, Sci::SCI_LINEUPEXTEND, Sci::SCI_LINEDOWNEXTEND});

bool contains(std::span<const int> messages, int message) {
    return std::ranges::find(messages, message) != messages.end();
}

SearchFlags with(SearchFlags flags, bool SearchFlags::*flag, bool on) {
    flags.*flag = on;
    return flags;
}

/// Carries out a Scintilla message by the part of the control that handles it itself.
void carryOut(TextControl& control, int message) {
    switch (message) {
        case Sci::SCI_CUT:
            return control.clipboard().Cut();
        case Sci::SCI_COPY:
            return control.clipboard().Copy();
        case Sci::SCI_PASTE:
            return control.clipboard().Paste();
        case Sci::SCI_UNDO:
            return control.Undo();
        case Sci::SCI_REDO:
            return control.Redo();
        case Sci::SCI_NEWLINE:
            return control.typing().newLine();
        case Sci::SCI_TAB:
        case Sci::SCI_BACKTAB:
            return control.typing().tabKey(message);
        default:
            return control.runAcrossJoints(message);
    }
}

}  // namespace

TextControl::TextControl(QWidget* parent)
    : EditView(parent),
      m_selection(std::make_unique<ControlSelection>(*this)),
      m_bookmarks(std::make_unique<ControlBookmarks>(*this)),
      m_macros(std::make_unique<ControlMacros>(*this, *m_selection, m_searchState)),
      m_clipboard(std::make_unique<ControlClipboard>(*this, *m_selection, *m_macros)),
      m_mouse(std::make_unique<ControlMouse>(*this, *m_selection, *m_macros)),
      m_typing(std::make_unique<ControlTyping>(*this, *m_selection, *m_macros)),
      m_search(std::make_unique<ControlSearch>(*this, m_searchState, *m_macros)),
      m_replace(std::make_unique<ControlReplace>(*this, *m_selection, *m_search, *m_macros)),
      m_lineNumbers(std::make_unique<ControlLineNumbers>(*this)),
      m_braces(std::make_unique<ControlBraces>(*this)),
      m_look(std::make_unique<ControlLook>(*this, *m_typing, *m_lineNumbers, *m_braces)),
      m_file(std::make_unique<ControlFile>(*this, *m_typing, *m_lineNumbers, *m_look)) {}

TextControl::~TextControl() {
    Q_EMIT aboutToBeDestroyed();
}

void TextControl::followEdits(bool changed, bool moved) {
    MacroRecorder* recorder = m_macros->recording();
    const bool noted = std::exchange(state().noted, false);
    if (!noted && (changed || moved) && state().unrecorded == 0 && recorder != nullptr)
        recorder->missed();
    if (changed) {
        m_lineNumbers->follow();
        m_look->followPieces();
        // Painting a changed line colours no other, but the colours of the lines below may depend on it.
        colouring().completePage();
    }
    if (changed || moved)
        m_braces->follow();
}

// The text

void TextControl::setText(const QString& text) {
    const EditScope scope(*this, EditScope::Grouped);
    const KeptBookmarks kept(*this);
    replaceBytes(0, heldText().length(), heldForm(text));
    placeCaret(0);
}

QString TextControl::SelText() const {
    return m_selection->SelText();
}

void TextControl::setSelText(const QString& text) {
    const EditScope scope(*this, EditScope::Grouped);
    const KeptBookmarks kept(*this);
    replaceSelection(heldForm(text));
}

QString TextControl::GetLine(qint64 line) const {
    if (line < 0 || line >= TotalLines())
        return {};
    const qint64 begin = map().lineBegin(line);
    return QString::fromUtf8(bytes(begin, map().lineEndOf(begin)));
}

// The selection

qint64 TextControl::SelStart() const {
    return m_selection->SelStart();
}

void TextControl::setSelStart(qint64 position) {
    setSelection(position, std::max(position, SelEnd()));
}

qint64 TextControl::SelEnd() const {
    return m_selection->SelEnd();
}

void TextControl::setSelEnd(qint64 position) {
    setSelection(std::min(position, SelStart()), position);
}

void TextControl::setSelection(qint64 anchor, qint64 caret) {
    m_selection->select(anchor, caret);
}

qint64 TextControl::CurrentLine() const {
    return m_selection->EndLineNo();
}

qint64 TextControl::CurrentColumn() const {
    return m_selection->EndColNo();
}

void TextControl::SelectAll() {
    const EditScope scope(*this);
    send(SCI_SELECTALL);
    m_macros->noteCommand(Command::SelectAll, {}, 1);
}

// Search flags

void TextControl::setSearchCaseSensitive(bool on) {
    m_search->setFlags(with(m_search->flags(), &SearchFlags::caseSensitive, on));
}

void TextControl::setSearchRegExp(bool on) {
    m_search->setFlags(with(m_search->flags(), &SearchFlags::regExp, on));
}

void TextControl::setSearchWholeWord(bool on) {
    m_search->setFlags(with(m_search->flags(), &SearchFlags::wholeWord, on));
}

// Commands

void TextControl::ExecuteCmd(int number, const QString& argument) {
    using Command::Kind;
    const Command::Info* info = Command::infoOf(number);
    if (info == nullptr)
        return;
    const bool edits = info->kind == Kind::Edits || info->kind == Kind::EditsOnce;
    if (edits && Locked()) {
        takeRepeatCount();
        return;
    }
    if (number >= Command::FirstMessage)
        return runCommand(number);
    // A copy, which stays valid when the control is destroyed in the call.
    const CommandRunner run = m_runner;
    if (!run)
        return;
    if (info->kind == Kind::Records || info->kind == Kind::Plays)
        return run(*this, number, argument);
    const EditScope scope(*this, EditScope::Grouped);
    state().typing = false;
    const bool leavesCount = info->kind == Kind::Sets || info->kind == Kind::Asks;
    const int times = leavesCount ? 1 : state().repeatCount;
    const int runs = info->kind == Kind::EditsOnce || leavesCount ? 1 : state().takeRepeatCount();
    const QPointer<TextControl> alive(this);
    for (int done = 0; done < runs && !(info->kind == Kind::Searches && state().failed); ++done) {
        run(*this, number, argument);
        if (!alive)
            return;
    }
    if (edits)
        m_selection->cutRectangleAnew();
    m_macros->noteCommand(number, argument, times);
}

void TextControl::setRepeatCount(int times) {
    const EditScope scope(*this);
    state().repeatCount = std::clamp(times, 1, LargestRepeatCount);
}

int TextControl::takeRepeatCount() {
    const EditScope scope(*this);
    return state().takeRepeatCount();
}

void TextControl::runCommand(int message) {
    // Pieces that have grown are cut again within the same edit; undo and redo are not edits.
    const bool takesBack = message == SCI_UNDO || message == SCI_REDO;
    const int count = state().takeRepeatCount();
    const int times = message == SCI_CANCEL ? std::min(count, 1) : count;
    const bool composed = contains(Composed, message);
    const bool grouped = !takesBack && (times > 1 || composed || !map().joints().empty());
    const EditScope scope(*this, grouped ? EditScope::Grouped : EditScope::Separate);
    m_typing->beginCommand(message);
    const bool vertical = contains(Vertical, message);
    if (vertical)
        m_selection->chooseColumn();
    if (contains(Edits, message))
        m_selection->loosenRectangle();
    if (contains(LineSteps, message) && m_selection->isStream())
        stepLines(message, times);
    else
        repeat(message, times);
    if (vertical)
        m_selection->knowColumn();
    m_macros->noteCommand(message, {}, times);
}

void TextControl::repeat(int message, int times) {
    for (int done = 0; done < times; ++done)
        carryOut(*this, message);
}

/// At the edge of the page such a step scrolls, and the library would paint the whole page.
void TextControl::stepLines(int message, int times) {
    const ByteSelection before = selection();
    ScrolledPage page(*this);
    repeat(message, times);
    const ByteSelection now = selection();
    auto [from, to] = std::minmax({before.caret, now.caret});
    if (before.anchor != now.anchor) {
        from = std::min({from, before.anchor, now.anchor});
        to = std::max({to, before.anchor, now.anchor});
    }
    page.setChanged(heldText().lineOf(from), heldText().lineOf(to));
}

void TextControl::Undo() {
    const EditScope scope(*this);
    state().typing = false;
    send(SCI_UNDO);
}

void TextControl::Redo() {
    const EditScope scope(*this);
    state().typing = false;
    send(SCI_REDO);
}

// Events

/// A key that may be the second stroke of a hot key is kept from the menus.
bool TextControl::event(QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride || !m_macros->isAwaited(*static_cast<QKeyEvent*>(event)))
        return EditView::event(event);
    event->accept();
    return true;
}

void TextControl::keyPressEvent(QKeyEvent* event) {
    event->accept();
    if (m_macros->takeHotKey(*event))
        return;
    if (EditorKeys::typesText(*event))
        m_typing->type(event->text());
    else
        event->ignore();
}

void TextControl::focusOutEvent(QFocusEvent* event) {
    m_macros->leaveHotKey();
    EditView::focusOutEvent(event);
}

void TextControl::inputMethodEvent(QInputMethodEvent* event) {
    m_typing->takeInputMethod(*event);
}

QVariant TextControl::inputMethodQuery(Qt::InputMethodQuery query) const {
    const QVariant answer = m_typing->answer(query);
    return answer.isValid() ? answer : EditView::inputMethodQuery(query);
}

bool TextControl::canInsertFromMimeData(const QMimeData* source) const {
    return source->hasText();
}

QByteArray TextControl::fromMimeData(const QMimeData* source, bool& rectangular) const {
    rectangular = isRectangular(*source);
    return withOwnLineEnds(source->text());
}

/// Called for the clipboard, a drag and the primary selection alike.
QMimeData* TextControl::toMimeData(const QByteArray& text, bool rectangular) const {
    if (rectangular)
        return EditView::toMimeData(text, rectangular);
    return m_clipboard->selectedText(text, m_mouse->isDragging());
}

void TextControl::changeEvent(QEvent* event) {
    EditView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        m_look->applyColours();
}

void TextControl::paintEvent(QPaintEvent* event) {
    m_lineNumbers->numberVisiblePieces();
    EditView::paintEvent(event);
}

void TextControl::contextMenuEvent(QContextMenuEvent* event) {
    m_mouse->openMenu(*event);
}

void TextControl::dragEnterEvent(QDragEnterEvent* event) {
    m_mouse->dragEnter(*event);
}

void TextControl::dragMoveEvent(QDragMoveEvent* event) {
    m_mouse->dragMove(*event);
}

void TextControl::dropEvent(QDropEvent* event) {
    m_mouse->drop(*event);
}

void TextControl::mouseDoubleClickEvent(QMouseEvent* event) {
    m_mouse->doubleClick(*event);
}

void TextControl::mouseMoveEvent(QMouseEvent* event) {
    m_mouse->move(*event);
}

void TextControl::mousePressEvent(QMouseEvent* event) {
    m_mouse->press(*event);
}

void TextControl::mouseReleaseEvent(QMouseEvent* event) {
    m_mouse->release(*event);
}

/// Called when the scroll bar has moved, before the library is notified, which would paint the whole page. When the
/// library itself scrolls, it has done so before it moves the bar.
void TextControl::scrollContentsBy(int, int) {
    const qint64 wanted = verticalScrollBar()->value();
    if (wanted == send(SCI_GETFIRSTVISIBLELINE))
        return;
    const ScrolledPage page(*this);
    send(SCI_SETFIRSTVISIBLELINE, wanted);
}

void TextControl::wheelEvent(QWheelEvent* event) {
    m_mouse->turnWheel(*event);
}
