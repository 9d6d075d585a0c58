#include "editor/control/EditView.h"

#include "editor/held/Colouring.h"
#include "editor/held/MarkHistory.h"
#include "text/codec/Utf8Text.h"

#include <QDropEvent>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QResizeEvent>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace {

MarkHistory::By editorOf(int modification) {
    using By = MarkHistory::By;
    if ((modification & QsciScintillaBase::SC_PERFORMED_UNDO) != 0)
        return By::Undo;
    return (modification & QsciScintillaBase::SC_PERFORMED_REDO) != 0 ? By::Redo : By::User;
}

}  // namespace

EditView::EditView(QWidget* parent)
    : QsciScintillaBase(parent),
      m_colouring(std::make_unique<Colouring>(*this, m_text)),
      m_marks(std::make_unique<MarkHistory>(*this, m_text, m_map)) {
    setUpScintilla();
    connect(this, &QsciScintillaBase::SCN_MODIFIED, this,
            [this](int at, int type, const char*, int length) { textAboutToChange(at, type, length); });
    connect(this, &QsciScintillaBase::SCN_UPDATEUI, this, &EditView::checkSelectionLater);
    connect(this, &QsciScintillaBase::SCN_STYLENEEDED, this, [this](int to) { m_colouring->styleTo(to); });
}

EditView::~EditView() = default;

void EditView::setUpScintilla() {
    setFrameShape(QFrame::NoFrame);
    send(SCI_CLEARALLCMDKEYS);
    send(SCI_USEPOPUP, 0);
    // Notified before an edit instead of after it: the library's own handling of the latter counts from the start of
    // the text.
    send(SCI_SETMODEVENTMASK, SC_MOD_BEFOREINSERT | SC_MOD_BEFOREDELETE);
    send(SCI_SETLAYOUTCACHE, SC_CACHE_PAGE);
    // No further than is shown: otherwise each key would have all following text styled again.
    send(SCI_SETIDLESTYLING, SC_IDLESTYLING_TOVISIBLE);
    send(SCI_SETBUFFEREDDRAW, 0);
    send(SCI_SETSCROLLWIDTH, 1);
    send(SCI_SETSCROLLWIDTHTRACKING, 1);
    send(SCI_SETVIRTUALSPACEOPTIONS, SCVS_RECTANGULARSELECTION);
    send(SCI_SETCARETLINEVISIBLEALWAYS, 1);
    send(SCI_SETMULTIPLESELECTION, 1);
    send(SCI_SETADDITIONALSELECTIONTYPING, 1);
    send(SCI_SETMULTIPASTE, SC_MULTIPASTE_EACH);
}

// Scintilla

qint64 EditView::send(unsigned message, qint64 first, qint64 second) const {
    return SendScintilla(message, static_cast<unsigned long>(first), static_cast<long>(second));
}

qint64 EditView::replaceBytes(qint64 from, qint64 to, const QByteArray& utf8) {
    send(SCI_SETTARGETRANGE, from, to);
    return SendScintilla(SCI_REPLACETARGET, static_cast<uintptr_t>(utf8.size()), utf8.constData());
}

void EditView::passToLibrary(QEvent::Type type, QEvent& event) {
    switch (type) {
        case QEvent::MouseButtonPress:
            return QsciScintillaBase::mousePressEvent(static_cast<QMouseEvent*>(&event));
        case QEvent::MouseButtonDblClick:
            return QsciScintillaBase::mouseDoubleClickEvent(static_cast<QMouseEvent*>(&event));
        case QEvent::MouseMove:
            return QsciScintillaBase::mouseMoveEvent(static_cast<QMouseEvent*>(&event));
        case QEvent::MouseButtonRelease:
            return QsciScintillaBase::mouseReleaseEvent(static_cast<QMouseEvent*>(&event));
        case QEvent::Wheel:
            return QsciScintillaBase::wheelEvent(static_cast<QWheelEvent*>(&event));
        case QEvent::DragEnter:
            return QsciScintillaBase::dragEnterEvent(static_cast<QDragEnterEvent*>(&event));
        case QEvent::DragMove:
            return QsciScintillaBase::dragMoveEvent(static_cast<QDragMoveEvent*>(&event));
        case QEvent::DragLeave:
            return QsciScintillaBase::dragLeaveEvent(static_cast<QDragLeaveEvent*>(&event));
        case QEvent::Drop:
            return QsciScintillaBase::dropEvent(static_cast<QDropEvent*>(&event));
        case QEvent::InputMethod:
            return QsciScintillaBase::inputMethodEvent(static_cast<QInputMethodEvent*>(&event));
        default:
            return;
    }
}

bool EditView::isRectangular(const QMimeData& mime) const {
    bool rectangular = false;
    QsciScintillaBase::fromMimeData(&mime, rectangular);
    return rectangular;
}

// The text

std::vector<std::string_view> EditView::plainRuns(qint64 from, qint64 to) const {
    std::vector<std::string_view> runs;
    const auto take = [&runs](std::string_view run) { runs.push_back(run); };
    const auto& joints = m_map.joints().offsets();
    for (auto joint = std::lower_bound(joints.begin(), joints.end(), from); joint != joints.end() && *joint < to;
         ++joint) {
        m_text.forEachRun(from, *joint, take);
        from = *joint + 1;
    }
    m_text.forEachRun(from, to, take);
    return runs;
}

QByteArray EditView::bytes(qint64 from, qint64 to) const {
    QByteArray plain;
    plain.reserve(to - from);
    for (const std::string_view run : plainRuns(from, to))
        plain.append(run.data(), static_cast<qsizetype>(run.size()));
    return plain;
}

QByteArray EditView::heldForm(const QString& text) const {
    return m_map.joints().kind() == JointKind::None ? wellFormedUtf8(text) : withOwnLineEnds(text);
}

QByteArray EditView::withOwnLineEnds(const QString& text) const {
    const qint64 mode = send(SCI_GETEOLMODE);
    if (mode == SC_EOL_CRLF)
        return utf8WithLineEnds(text, u"\r\n"_qs);
    return utf8WithLineEnds(text, mode == SC_EOL_CR ? u"\r"_qs : u"\n"_qs);
}

QString EditView::Text() const {
    return QString::fromUtf8(bytes(0, m_text.length()));
}

void EditView::AddText(const QString& text) {
    openScope(true);
    const QByteArray utf8 = heldForm(text);
    SendScintilla(SCI_APPENDTEXT, static_cast<uintptr_t>(utf8.size()), utf8.constData());
    closeScope();
}

bool EditView::wouldOutgrow(qint64 bytes) const {
    return m_longLines.wouldOutgrow(selection().caret, bytes);
}

// The selection

ByteSelection EditView::selection() const {
    return {send(SCI_GETANCHOR), send(SCI_GETCURRENTPOS)};
}

void EditView::setSelectionBytes(qint64 anchor, qint64 caret) {
    send(SCI_SETSEL, anchor, caret);
}

/// Not scrolled into view at once: to find a place of a line that is too long on the screen, Scintilla would lay out
/// all of that line, which is about to be cut.
void EditView::placeCaret(qint64 byte) {
    send(SCI_CLEARSELECTIONS);
    send(SCI_SETSELECTION, byte, byte);
    m_state.scrollDue = true;
}

/// Unlike Scintilla's message for it this accepts NUL bytes.
void EditView::replaceSelection(const QByteArray& utf8) {
    openScope(true);
    const auto [anchor, caret] = selection();
    const qint64 from = std::min(anchor, caret);
    const qint64 added = replaceBytes(from, std::max(anchor, caret), utf8);
    if (!Locked())
        placeCaret(from + added);
    closeScope();
}

void EditView::GotoTextLine(qint64 line) {
    openScope(false);
    send(SCI_GOTOPOS, m_map.lineBegin(std::clamp<qint64>(line, 0, TotalLines() - 1)));
    send(SCI_VERTICALCENTRECARET);
    closeScope();
}

// Changes and their signals

void EditView::textAboutToChange(qint64 at, int type, qint64 length) {
    const bool inserts = (type & SC_MOD_BEFOREINSERT) != 0;
    if (!inserts && (type & SC_MOD_BEFOREDELETE) == 0)
        return;
    ++m_state.changes;
    if (inserts)
        m_edits.beforeInsert(at, length);
    else
        m_edits.beforeDelete(at, length);
    Q_EMIT aboutToChange(at, length, inserts);
    // The marks are moved by what text and map are before the edit.
    if (inserts) {
        m_marks->beforeInsert(at, editorOf(type));
        m_map.beforeInsert(at, length);
    } else {
        m_marks->beforeDelete(at, length, editorOf(type));
        m_map.beforeDelete(at, length);
    }
    if (!std::exchange(m_state.changed, true))
        m_state.touchedFrom = m_state.touchedTo = at;
    m_state.touchedFrom = std::min(m_state.touchedFrom, at);
    m_state.touchedTo = inserts ? std::max(m_state.touchedTo, at) + length : std::max(at, m_state.touchedTo - length);
}

void EditView::openScope(bool grouped) {
    if (m_state.scopes++ == 0)
        m_state.failed = false;
    if (grouped && !m_state.grouped) {
        m_state.grouped = true;
        send(SCI_BEGINUNDOACTION);
    }
}

void EditView::closeScope() {
    m_marks->settle();
    if (m_state.scopes > 1) {
        --m_state.scopes;
        return;
    }
    if (m_state.changed)
        m_longLines.keepShort(m_state.touchedFrom, m_state.touchedTo);
    if (std::exchange(m_state.grouped, false))
        send(SCI_ENDUNDOACTION);
    if (std::exchange(m_state.scrollDue, false))
        send(SCI_SCROLLCARET);
    m_edits.settle();
    m_state.scopes = 0;
    const bool changed = std::exchange(m_state.changed, false);
    const ByteSelection now = selection();
    const bool moved = std::exchange(m_state.reported, now) != now;
    const bool recounted = std::exchange(m_state.reportedCount, m_state.repeatCount) != m_state.repeatCount;
    followEdits(changed, moved);
    if (recounted)
        Q_EMIT RepeatCountChanged();
    if (changed)
        Q_EMIT Change();
    if (moved)
        Q_EMIT SelChange();
}

/// Scintilla moves the selection by itself too, as when a drag scrolls; it notifies of that while it paints.
void EditView::checkSelectionLater() {
    if (m_state.scopes == 0 && (m_state.changed || selection() != m_state.reported)) {
        const auto report = [this] {
            openScope(false);
            closeScope();
        };
        QMetaObject::invokeMethod(this, report, Qt::QueuedConnection);
    }
}

void EditView::breakUndo() {
    send(SCI_BEGINUNDOACTION);
    send(SCI_ENDUNDOACTION);
}

void EditView::commandFailed() {
    m_state.failed = true;
    Q_EMIT CommandFailed();
}

void EditView::notice(const QString& text) {
    if (std::exchange(m_noticed, !text.isEmpty()) || !text.isEmpty())
        Q_EMIT Notice(text);
}

void EditView::Redraw() {
    viewport()->update();
}

/// A line that was deleted needs no painting: all below a line that comes or goes is painted anyway.
void EditView::redrawLines(qint64 first, qint64 last) {
    const qint64 lines = m_text.lineCount();
    if (first < 0 || first >= lines)
        return;
    const qint64 top = send(SCI_GETFIRSTVISIBLELINE);
    const qint64 from = std::max<qint64>(send(SCI_VISIBLEFROMDOCLINE, first) - top, 0);
    qint64 to = send(SCI_LINESONSCREEN) + 1;
    if (last < lines)
        to = std::min(to, send(SCI_VISIBLEFROMDOCLINE, last) + send(SCI_WRAPCOUNT, last) - top);
    const qint64 height = send(SCI_TEXTHEIGHT);
    viewport()->update(
        QRect(0, static_cast<int>(from * height), viewport()->width(), static_cast<int>((to - from) * height)));
}

// Locked, undo, and the bar below the text

void EditView::setLocked(bool locked) {
    m_state.locked = locked;
    send(SCI_SETREADONLY, Locked());
}

bool EditView::CanUndo() const {
    return send(SCI_CANUNDO) != 0;
}

bool EditView::CanRedo() const {
    return send(SCI_CANREDO) != 0;
}

void EditView::setBottomBar(QWidget* bar) {
    m_bottomBar = bar;
    setViewportMargins(0, 0, 0, bar == nullptr ? 0 : bar->sizeHint().height());
    placeBottomBar();
}

void EditView::placeBottomBar() {
    if (m_bottomBar == nullptr)
        return;
    const QRect text = viewport()->geometry();
    m_bottomBar->setGeometry(text.left(), text.bottom() + 1, text.width(), m_bottomBar->sizeHint().height());
}

void EditView::resizeEvent(QResizeEvent* event) {
    QsciScintillaBase::resizeEvent(event);
    placeBottomBar();
}
