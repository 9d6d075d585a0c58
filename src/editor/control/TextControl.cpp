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

#include <QContextMenuEvent>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPointer>
#include <QResizeEvent>
#include <QWheelEvent>

#include <algorithm>
#include <array>
#include <span>
#include <utility>

using Sci = QsciScintillaBase;

namespace {

/// Commands that are made of several edits.
constexpr auto Composed = std::to_array<int>({Sci::SCI_PASTE, Sci::SCI_TAB, Sci::SCI_BACKTAB, Sci::SCI_NEWLINE});
/// Commands that delete or insert something wherever something is selected.
constexpr auto Edits = std::to_array<int>({Sci::SCI_NEWLINE, Sci::SCI_TAB, Sci::SCI_BACKTAB, Sci::SCI_CLEAR,
                                           Sci::SCI_DELETEBACK, Sci::SCI_DELWORDRIGHT, Sci::SCI_DELWORDLEFT});
/// Commands that keep to a column.
constexpr auto Vertical = std::to_array<int>(
    {Sci::SCI_LINEUP, Sci::SCI_LINEDOWN, Sci::SCI_LINEUPEXTEND, Sci::SCI_LINEDOWNEXTEND, Sci::SCI_LINEUPRECTEXTEND,
     Sci::SCI_LINEDOWNRECTEXTEND, Sci::SCI_PAGEUP, Sci::SCI_PAGEDOWN, Sci::SCI_PAGEUPEXTEND, Sci::SCI_PAGEDOWNEXTEND,
     Sci::SCI_PAGEUPRECTEXTEND, Sci::SCI_PAGEDOWNRECTEXTEND});

bool contains(std::span<const int> messages, int message) {
    return std::ranges::find(messages, message) != messages.end();
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
    }
    if (changed || moved)
        m_braces->follow();
}

// The text

QString TextControl::Text() const {
    return QString::fromUtf8(bytes(0, heldText().length()));
}

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

void TextControl::AddText(const QString& text) {
    const EditScope scope(*this, EditScope::Grouped);
    const QByteArray utf8 = heldForm(text);
    SendScintilla(SCI_APPENDTEXT, static_cast<uintptr_t>(utf8.size()), utf8.constData());
}

QString TextControl::GetLine(qint64 line) const {
    if (line < 0 || line >= TotalLines())
        return {};
    const qint64 begin = map().lineBegin(line);
    return QString::fromUtf8(bytes(begin, map().lineEndOf(begin)));
}

void TextControl::setLocked(bool locked) {
    state().locked = locked;
    send(SCI_SETREADONLY, Locked());
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

void TextControl::changeFlag(bool SearchFlags::*flag, bool on) {
    SearchFlags flags = m_search->flags();
    flags.*flag = on;
    m_search->setFlags(flags);
}

void TextControl::setSearchCaseSensitive(bool on) {
    changeFlag(&SearchFlags::caseSensitive, on);
}

void TextControl::setSearchRegExp(bool on) {
    changeFlag(&SearchFlags::regExp, on);
}

void TextControl::setSearchWholeWord(bool on) {
    changeFlag(&SearchFlags::wholeWord, on);
}

// Commands

void TextControl::ExecuteCmd(int number, const QString& argument) {
    using Command::Kind;
    const Command::Info* info = Command::infoOf(number);
    if (info == nullptr || (info->kind == Kind::Edits && Locked()))
        return;
    if (number >= Command::FirstMessage)
        return runCommand(number);
    // A copy, which lives on when the control is destroyed within.
    const CommandRunner run = m_runner;
    if (!run)
        return;
    if (info->kind == Kind::Records || info->kind == Kind::Plays)
        return run(*this, number, argument);
    const EditScope scope(*this, EditScope::Grouped);
    state().typing = false;
    const bool leavesCount = info->kind == Kind::Sets || info->kind == Kind::Asks;
    const int times = leavesCount ? 1 : state().takeRepeatCount();
    const QPointer<TextControl> alive(this);
    for (int done = 0; done < times && !(info->kind == Kind::Searches && state().failed); ++done) {
        run(*this, number, argument);
        if (!alive)
            return;
    }
    if (info->kind == Kind::Edits)
        m_selection->cutRectangleAnew();
    m_macros->noteCommand(number, argument, times);
}

void TextControl::setRepeatCount(int times) {
    state().repeatCount = std::clamp(times, 1, LargestRepeatCount);
}

void TextControl::runCommand(int message) {
    // What has grown in pieces is cut again with it; undo and redo are no edits of their own.
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
    for (int done = 0; done < times; ++done)
        carryOut(message);
    if (vertical)
        m_selection->knowColumn();
    m_macros->noteCommand(message, {}, times);
}

void TextControl::carryOut(int message) {
    switch (message) {
        case SCI_CUT:
            return m_clipboard->Cut();
        case SCI_COPY:
            return m_clipboard->Copy();
        case SCI_PASTE:
            return m_clipboard->Paste();
        case SCI_UNDO:
            return Undo();
        case SCI_REDO:
            return Redo();
        case SCI_NEWLINE:
            return m_typing->newLine();
        case SCI_TAB:
        case SCI_BACKTAB:
            return m_typing->tabKey(message);
        default:
            return runAcrossJoints(message);
    }
}

bool TextControl::CanUndo() const {
    return send(SCI_CANUNDO) != 0;
}

bool TextControl::CanRedo() const {
    return send(SCI_CANREDO) != 0;
}

void TextControl::Undo() {
    const EditScope scope(*this);
    const KeptBookmarks kept(*this);
    state().typing = false;
    send(SCI_UNDO);
}

void TextControl::Redo() {
    const EditScope scope(*this);
    const KeptBookmarks kept(*this);
    state().typing = false;
    send(SCI_REDO);
}

// Events

/// A key that a second stroke is waited for is kept from the menus.
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

void TextControl::wheelEvent(QWheelEvent* event) {
    m_mouse->turnWheel(*event);
}

void TextControl::resizeEvent(QResizeEvent* event) {
    EditView::resizeEvent(event);
    placeBottomBar();
}

// The bar below the text

void TextControl::setBottomBar(QWidget* bar) {
    m_bottomBar = bar;
    setViewportMargins(0, 0, 0, bar == nullptr ? 0 : bar->sizeHint().height());
    placeBottomBar();
}

void TextControl::placeBottomBar() {
    if (m_bottomBar == nullptr)
        return;
    const QRect text = viewport()->geometry();
    m_bottomBar->setGeometry(text.left(), text.bottom() + 1, text.width(), m_bottomBar->sizeHint().height());
}
