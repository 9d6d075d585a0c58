// What the mouse does in the control.

#include "editor/control/EditScope.h"
#include "editor/control/TextControl.h"
#include "editor/held/Margins.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <utility>

namespace {

/// By this the library knows a press that begins a rectangle here; people press Alt, or Ctrl and Alt where the desktop
/// takes Alt for itself.
constexpr Qt::KeyboardModifiers RectangleModifier = Qt::ControlModifier;

}  // namespace

/// Whether a place of the control lies left of the text.
bool TextControl::isInMargin(int x) const {
    qint64 width = 0;
    for (int margin = 0; margin < Margins::Count; ++margin)
        width += send(SCI_GETMARGINWIDTHN, margin);
    return x < width;
}

bool TextControl::isSelected(qint64 byte) const {
    for (qint64 range = 0; range < send(SCI_GETSELECTIONS); ++range) {
        if (byte >= send(SCI_GETSELECTIONNSTART, range) && byte < send(SCI_GETSELECTIONNEND, range))
            return true;
    }
    return false;
}

void TextControl::mousePressEvent(QMouseEvent* event) {
    const bool pastes = event->button() == Qt::MiddleButton;
    const EditScope scope(*this, pastes ? EditScope::Grouped : EditScope::Separate);
    m_typing = false;
    leaveHotKey();
    const QPoint at = event->position().toPoint();
    const qint64 byte = send(SCI_POSITIONFROMPOINT, at.x(), at.y());
    const bool inMargin = isInMargin(at.x());
    m_pressedInSelection = !inMargin && isSelected(byte);
    Q_EMIT MouseDown(event->button(), at.x(), at.y());
    if (event->button() == Qt::RightButton && !inMargin && !m_pressedInSelection)
        send(SCI_SETEMPTYSELECTION, byte);
    if (event->button() != Qt::LeftButton)
        return QsciScintillaBase::mousePressEvent(event);
    const bool addsRange = event->modifiers() == Qt::ControlModifier;
    if (addsRange && !inMargin) {
        send(SCI_ADDSELECTION, byte, byte);
        m_addsRange = true;
        return;
    }
    if (!DragDrop() && m_pressedInSelection)
        send(SCI_SETEMPTYSELECTION, byte);
    const bool rectangle = event->modifiers().testFlag(Qt::AltModifier);
    const Qt::KeyboardModifiers plain = addsRange ? Qt::NoModifier : event->modifiers();
    QMouseEvent press(event->type(), event->position(), event->globalPosition(), event->button(), event->buttons(),
                      rectangle ? RectangleModifier : plain, event->pointingDevice());
    press.setTimestamp(event->timestamp());
    QsciScintillaBase::mousePressEvent(&press);
}

/// With Ctrl the range that the press has added grows. A drag runs its event loop in here.
void TextControl::mouseMoveEvent(QMouseEvent* event) {
    const EditScope scope(*this);
    if (m_addsRange) {
        const QPoint at = event->position().toPoint();
        send(SCI_SETSELECTIONNCARET, send(SCI_GETMAINSELECTION), send(SCI_POSITIONFROMPOINT, at.x(), at.y()));
        send(SCI_SCROLLCARET);
        return;
    }
    if (m_pressedInSelection && !DragDrop())
        return;
    m_dragging = m_pressedInSelection;
    QsciScintillaBase::mouseMoveEvent(event);
    m_dragging = false;
}

/// The second press of a double click. Those of the other buttons are presses as any.
void TextControl::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return mousePressEvent(event);
    const EditScope scope(*this);
    const QPoint at = event->position().toPoint();
    Q_EMIT MouseDown(event->button(), at.x(), at.y());
    QsciScintillaBase::mouseDoubleClickEvent(event);
}

void TextControl::mouseReleaseEvent(QMouseEvent* event) {
    const QPoint at = event->position().toPoint();
    {
        const EditScope scope(*this);
        if (!std::exchange(m_addsRange, false))
            QsciScintillaBase::mouseReleaseEvent(event);
        m_pressedInSelection = false;
    }
    if (event->button() == Qt::RightButton)
        Q_EMIT ShowMenu(at.x(), at.y());
}

/// Steps of a wheel are gathered: a fine one sends parts of them.
void TextControl::wheelEvent(QWheelEvent* event) {
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

/// The mouse asks for the menu when its button comes up; this is the menu key.
void TextControl::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() == QContextMenuEvent::Mouse)
        return;
    const qint64 caret = selection().caret;
    const qint64 line = send(SCI_LINEFROMPOSITION, caret);
    Q_EMIT ShowMenu(static_cast<int>(send(SCI_POINTXFROMPOSITION, 0, caret)),
                    static_cast<int>(send(SCI_POINTYFROMPOSITION, 0, caret) + send(SCI_TEXTHEIGHT, line)));
}
