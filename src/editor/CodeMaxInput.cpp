// What reaches the control from outside: keys, mouse, input methods, drops, clipboard.

#include "editor/CodeMax.h"
#include "editor/EditScope.h"
#include "editor/EditorKeys.h"

#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QUrl>
#include <QWheelEvent>

#include <algorithm>

namespace {

/// A selection of more bytes than this is not offered to the X11 primary selection: each step of the caret would copy
/// it.
constexpr qsizetype PrimaryLimit = 1024 * 1024;
/// Bytes on each side of the caret that an input method is told of.
constexpr qint64 SurroundingBytes = 1024;
/// By this the library knows a press that begins a rectangle here; people press Alt, or Ctrl and Alt where the desktop
/// takes Alt for itself.
constexpr Qt::KeyboardModifiers RectangleModifier = Qt::ControlModifier;

}  // namespace

void CodeMax::keyPressEvent(QKeyEvent* event) {
    if (const int message = EditorKeys::messageFor(*event)) {
        runCommand(message);
        event->accept();
    } else if (EditorKeys::typesText(*event)) {
        type(event->text());
        event->accept();
    } else {
        event->ignore();
    }
}

void CodeMax::inputMethodEvent(QInputMethodEvent* event) {
    const QString committed = event->commitString();
    const int times = committed.isEmpty() ? 1 : takeRepeatCount();
    const bool outgrows = m_longLines.wouldOutgrow(selection().caret, committed.toUtf8().size() * times);
    const EditScope scope(*this, outgrows || times > 1 ? EditScope::Grouped : EditScope::Separate);
    QsciScintillaBase::inputMethodEvent(event);
    for (int done = 1; done < times; ++done)
        putTyped(committed, withOwnLineEnds(committed));
}

/// Only the neighbourhood of the caret: the library's own answer is the whole paragraph, which may be the whole text.
QVariant CodeMax::inputMethodQuery(Qt::InputMethodQuery query) const {
    const qint64 caret = selection().caret;
    const auto before = [&] {
        const qint64 from = send(SCI_POSITIONBEFORE, std::max(m_map.lineBeginOf(caret), caret - SurroundingBytes) + 1);
        return QString::fromUtf8(bytes(from, caret));
    };
    const auto after = [&] {
        const qint64 to = send(SCI_POSITIONAFTER, std::min(m_map.lineEndOf(caret), caret + SurroundingBytes) - 1);
        return QString::fromUtf8(bytes(caret, std::max(caret, to)));
    };
    switch (query) {
        case Qt::ImSurroundingText:
            return before() + after();
        case Qt::ImCursorPosition:
        case Qt::ImAnchorPosition:
            return before().size();
        case Qt::ImTextBeforeCursor:
            return before();
        case Qt::ImTextAfterCursor:
            return after();
        case Qt::ImAbsolutePosition:
            return m_map.positionOf(caret);
        case Qt::ImCurrentSelection:
            return SelEnd() - SelStart() > SurroundingBytes ? QString() : SelText();
        default:
            return QsciScintillaBase::inputMethodQuery(query);
    }
}

void CodeMax::mousePressEvent(QMouseEvent* event) {
    const bool pastes = event->button() == Qt::MiddleButton;
    const EditScope scope(*this, pastes ? EditScope::Grouped : EditScope::Separate);
    m_typing = false;
    const QPoint at = event->position().toPoint();
    const qint64 byte = send(SCI_POSITIONFROMPOINT, at.x(), at.y());
    m_pressedInSelection = byte >= send(SCI_GETSELECTIONSTART) && byte < send(SCI_GETSELECTIONEND);
    Q_EMIT MouseDown(event->button(), at.x(), at.y());
    if (event->button() != Qt::LeftButton)
        return QsciScintillaBase::mousePressEvent(event);
    if (event->modifiers() == Qt::ControlModifier) {
        send(SCI_ADDSELECTION, byte, byte);
        return;
    }
    if (!DragDrop() && m_pressedInSelection)
        send(SCI_SETEMPTYSELECTION, byte);
    const bool rectangle = event->modifiers().testFlag(Qt::AltModifier);
    QMouseEvent press(event->type(), event->position(), event->globalPosition(), event->button(), event->buttons(),
                      rectangle ? RectangleModifier : event->modifiers(), event->pointingDevice());
    press.setTimestamp(event->timestamp());
    QsciScintillaBase::mousePressEvent(&press);
}

/// Steps of a wheel are gathered: a fine one sends parts of them.
void CodeMax::wheelEvent(QWheelEvent* event) {
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        m_wheelTurned = 0;
        return QsciScintillaBase::wheelEvent(event);
    }
    event->accept();
    m_wheelTurned += event->angleDelta().y();
    for (; m_wheelTurned >= QWheelEvent::DefaultDeltasPerStep; m_wheelTurned -= QWheelEvent::DefaultDeltasPerStep)
        send(SCI_ZOOMIN);
    for (; m_wheelTurned <= -QWheelEvent::DefaultDeltasPerStep; m_wheelTurned += QWheelEvent::DefaultDeltasPerStep)
        send(SCI_ZOOMOUT);
}

void CodeMax::mouseMoveEvent(QMouseEvent* event) {
    const EditScope scope(*this);
    QsciScintillaBase::mouseMoveEvent(event);
}

void CodeMax::mouseDoubleClickEvent(QMouseEvent* event) {
    const EditScope scope(*this);
    QsciScintillaBase::mouseDoubleClickEvent(event);
}

void CodeMax::mouseReleaseEvent(QMouseEvent* event) {
    const QPoint at = event->position().toPoint();
    {
        const EditScope scope(*this);
        QsciScintillaBase::mouseReleaseEvent(event);
        m_pressedInSelection = false;
    }
    if (event->button() == Qt::RightButton)
        Q_EMIT ShowMenu(at.x(), at.y());
}

/// The mouse asks for the menu when its button comes up; this is the menu key.
void CodeMax::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() == QContextMenuEvent::Mouse)
        return;
    const qint64 caret = selection().caret;
    const qint64 line = send(SCI_LINEFROMPOSITION, caret);
    Q_EMIT ShowMenu(static_cast<int>(send(SCI_POINTXFROMPOSITION, 0, caret)),
                    static_cast<int>(send(SCI_POINTYFROMPOSITION, 0, caret) + send(SCI_TEXTHEIGHT, line)));
}

void CodeMax::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
    else if (DragDrop())
        QsciScintillaBase::dragEnterEvent(event);
}

void CodeMax::dragMoveEvent(QDragMoveEvent* event) {
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
    else if (DragDrop())
        QsciScintillaBase::dragMoveEvent(event);
}

void CodeMax::dropEvent(QDropEvent* event) {
    if (!event->mimeData()->hasUrls() && !DragDrop())
        return event->ignore();
    if (!event->mimeData()->hasUrls()) {
        const EditScope scope(*this, EditScope::Grouped);
        bool rectangular = false;
        fromMimeData(event->mimeData(), rectangular);
        if (rectangular || !isStream())
            QsciScintillaBase::dropEvent(event);
        else
            dropText(event->mimeData()->text(), event);
        return;
    }
    // Copied first: opening a file runs the event loop, and the drop is over by then.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    const QList<QUrl> urls = event->mimeData()->urls();
    for (const QUrl& url : urls) {
        if (url.isLocalFile())
            Q_EMIT DropFile(url.toLocalFile());
    }
}

/// In place of the library's own, which ends a text at its first NUL. Told to the source as a copy even where it moves
/// within this control, since the moved text is taken away here.
void CodeMax::dropText(const QString& text, QDropEvent* event) {
    const QPoint at = event->position().toPoint();
    qint64 target = send(SCI_POSITIONFROMPOINT, at.x(), at.y());
    const qint64 from = send(SCI_GETSELECTIONSTART);
    const qint64 to = send(SCI_GETSELECTIONEND);
    const bool moves = m_pressedInSelection && event->proposedAction() == Qt::MoveAction;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    if (Locked() || (moves && target >= from && target <= to))
        return;
    if (moves) {
        send(SCI_DELETERANGE, from, to - from);
        target -= target > to ? to - from : 0;
    }
    setSelectionBytes(target, target);
    replaceSelection(withOwnLineEnds(text));
    setSelectionBytes(target, send(SCI_GETCURRENTPOS));
}

bool CodeMax::canInsertFromMimeData(const QMimeData* source) const {
    return source->hasText();
}

QByteArray CodeMax::fromMimeData(const QMimeData* source, bool& rectangular) const {
    QsciScintillaBase::fromMimeData(source, rectangular);
    return withOwnLineEnds(source->text());
}

/// Called for the clipboard, a drag and the primary selection alike.
QMimeData* CodeMax::toMimeData(const QByteArray& text, bool rectangular) const {
    if (rectangular)
        return QsciScintillaBase::toMimeData(text, rectangular);
    auto mime = std::make_unique<QMimeData>();
    if (m_copying || m_pressedInSelection || text.size() <= PrimaryLimit)
        mime->setText(isStream() ? SelText() : QString::fromUtf8(text));
    return mime.release();
}

void CodeMax::Copy() {
    const auto [anchor, caret] = selection();
    if (anchor == caret)
        return;
    if (!isStream()) {
        m_copying = true;
        send(SCI_COPY);
        m_copying = false;
        return;
    }
    auto mime = std::make_unique<QMimeData>();
    mime->setText(SelText());
    QGuiApplication::clipboard()->setMimeData(mime.release());
}

void CodeMax::Paste() {
    const QMimeData* mime = QGuiApplication::clipboard()->mimeData();
    if (Locked() || mime == nullptr || !mime->hasText())
        return;
    const EditScope scope(*this, EditScope::Grouped);
    bool rectangular = false;
    const QByteArray utf8 = fromMimeData(mime, rectangular);
    if (rectangular || !isStream())
        send(SCI_PASTE);
    else
        replaceSelection(utf8);
    m_scrollDue = true;
}
