#include "editor/control/ControlMouse.h"

#include "editor/control/ControlMacros.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/EditScope.h"
#include "editor/control/EditView.h"
#include "editor/held/Margins.h"

#include <QContextMenuEvent>
#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPointer>
#include <QUrl>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

using Sci = QsciScintillaBase;

namespace {

/// The modifier by which the library recognises a press that begins a rectangle; the user presses Alt, or Ctrl and Alt
/// where the desktop uses Alt itself.
constexpr Qt::KeyboardModifiers RectangleModifier = Qt::ControlModifier;
/// A click within so many pixels of the left edge toggles the bookmark of a line.
constexpr int BookmarkClickFrom = 6;
constexpr int BookmarkClickTo = Margins::BookmarksWidth;

/// Files are opened; addresses of other kinds are text.
bool bringsFiles(const QDropEvent& event) {
    const QList<QUrl> urls = event.mimeData()->urls();
    return std::ranges::any_of(urls, &QUrl::isLocalFile);
}

}  // namespace

/// Whether a point of the control is left of the text.
bool ControlMouse::isInMargin(int x) const {
    qint64 width = 0;
    for (int margin = 0; margin < Margins::Count; ++margin)
        width += m_view.send(Sci::SCI_GETMARGINWIDTHN, margin);
    return x < width;
}

void ControlMouse::reportPress(const QMouseEvent& event) {
    const QPoint at = event.position().toPoint();
    Q_EMIT m_view.MouseDown(event.button(), at.x(), at.y());
    const bool inBookmarks = isInMargin(at.x()) && at.x() >= BookmarkClickFrom && at.x() < BookmarkClickTo;
    // The line is that of the text beside the margin.
    if (inBookmarks && event.button() == Qt::LeftButton)
        Q_EMIT m_view.bookmarkMarginClicked(m_selection.lineAtPoint(at.x() + Margins::BookmarksWidth, at.y()));
}

void ControlMouse::press(QMouseEvent& event) {
    const bool pastes = event.button() == Qt::MiddleButton;
    const EditScope scope(m_view, pastes ? EditScope::Grouped : EditScope::Separate);
    m_view.state().typing = false;
    m_macros.leaveHotKey();
    const QPoint at = event.position().toPoint();
    const qint64 byte = m_view.send(Sci::SCI_POSITIONFROMPOINT, at.x(), at.y());
    const bool inMargin = isInMargin(at.x());
    m_pressedInSelection = !inMargin && m_selection.isSelected(byte);
    reportPress(event);
    if (event.button() == Qt::RightButton && !inMargin && !m_pressedInSelection)
        m_view.send(Sci::SCI_SETEMPTYSELECTION, byte);
    if (event.button() != Qt::LeftButton)
        return m_view.passToLibrary(QEvent::MouseButtonPress, event);
    pressLeft(event, byte, inMargin);
}

void ControlMouse::pressLeft(QMouseEvent& event, qint64 byte, bool inMargin) {
    const bool addsRange = event.modifiers() == Qt::ControlModifier;
    if (addsRange && !inMargin) {
        m_view.send(Sci::SCI_ADDSELECTION, byte, byte);
        m_addsRange = true;
        return;
    }
    if (!DragDrop() && m_pressedInSelection)
        m_view.send(Sci::SCI_SETEMPTYSELECTION, byte);
    const bool rectangle = event.modifiers().testFlag(Qt::AltModifier);
    const Qt::KeyboardModifiers plain = addsRange ? Qt::NoModifier : event.modifiers();
    QMouseEvent press(event.type(), event.position(), event.globalPosition(), event.button(), event.buttons(),
                      rectangle ? RectangleModifier : plain, event.pointingDevice());
    press.setTimestamp(event.timestamp());
    m_view.passToLibrary(QEvent::MouseButtonPress, press);
}

/// With Ctrl the range that the press has added grows. A drag runs its event loop in here.
void ControlMouse::move(QMouseEvent& event) {
    const EditScope scope(m_view);
    if (m_addsRange) {
        const QPoint at = event.position().toPoint();
        m_view.send(Sci::SCI_SETSELECTIONNCARET, m_view.send(Sci::SCI_GETMAINSELECTION),
                    m_view.send(Sci::SCI_POSITIONFROMPOINT, at.x(), at.y()));
        m_view.send(Sci::SCI_SCROLLCARET);
        return;
    }
    if (m_pressedInSelection && !DragDrop())
        return;
    m_dragging = m_pressedInSelection;
    m_view.passToLibrary(QEvent::MouseMove, event);
    m_dragging = false;
}

/// The second press of a double click. Those of the other buttons are presses like any other.
void ControlMouse::doubleClick(QMouseEvent& event) {
    if (event.button() != Qt::LeftButton)
        return press(event);
    const EditScope scope(m_view);
    reportPress(event);
    m_view.passToLibrary(QEvent::MouseButtonDblClick, event);
}

void ControlMouse::release(QMouseEvent& event) {
    const QPoint at = event.position().toPoint();
    {
        const EditScope scope(m_view);
        if (!std::exchange(m_addsRange, false))
            m_view.passToLibrary(QEvent::MouseButtonRelease, event);
        m_pressedInSelection = false;
    }
    if (event.button() == Qt::RightButton)
        Q_EMIT m_view.ShowMenu(at.x(), at.y());
}

/// Steps of a wheel are gathered: a fine one sends parts of them.
void ControlMouse::turnWheel(QWheelEvent& event) {
    if (!event.modifiers().testFlag(Qt::ControlModifier)) {
        m_wheelTurned = 0;
        return m_view.passToLibrary(QEvent::Wheel, event);
    }
    event.accept();
    m_wheelTurned += event.angleDelta().y();
    for (; m_wheelTurned >= QWheelEvent::DefaultDeltasPerStep; m_wheelTurned -= QWheelEvent::DefaultDeltasPerStep)
        m_view.send(Sci::SCI_ZOOMIN);
    for (; m_wheelTurned <= -QWheelEvent::DefaultDeltasPerStep; m_wheelTurned += QWheelEvent::DefaultDeltasPerStep)
        m_view.send(Sci::SCI_ZOOMOUT);
}

/// With the mouse the menu is requested when its button is released; this is the menu key.
void ControlMouse::openMenu(QContextMenuEvent& event) {
    event.accept();
    if (event.reason() == QContextMenuEvent::Mouse)
        return;
    const qint64 caret = m_view.selection().caret;
    const qint64 line = m_view.send(Sci::SCI_LINEFROMPOSITION, caret);
    Q_EMIT m_view.ShowMenu(
        static_cast<int>(m_view.send(Sci::SCI_POINTXFROMPOSITION, 0, caret)),
        static_cast<int>(m_view.send(Sci::SCI_POINTYFROMPOSITION, 0, caret) + m_view.send(Sci::SCI_TEXTHEIGHT, line)));
}

void ControlMouse::setDragDrop(bool on) {
    m_dragDrop = on;
    if (on)
        return;
    QDrag::cancel();
    endDragMark();
}

/// The library shows where a text would be dropped until it is notified that the drag has left.
void ControlMouse::endDragMark() {
    QDragLeaveEvent leave;
    m_view.passToLibrary(QEvent::DragLeave, leave);
}

void ControlMouse::dragEnter(QDragEnterEvent& event) {
    if (bringsFiles(event))
        event.acceptProposedAction();
    else if (DragDrop())
        m_view.passToLibrary(QEvent::DragEnter, event);
}

void ControlMouse::dragMove(QDragMoveEvent& event) {
    if (bringsFiles(event))
        event.acceptProposedAction();
    else if (DragDrop())
        m_view.passToLibrary(QEvent::DragMove, event);
    else
        event.ignore();
}

void ControlMouse::drop(QDropEvent& event) {
    if (bringsFiles(event))
        return dropFiles(event);
    if (DragDrop() && !m_view.Locked()) {
        const EditScope scope(m_view, EditScope::Grouped);
        if (m_view.isRectangular(*event.mimeData()) || (m_dragging && !m_selection.isStream()))
            m_view.passToLibrary(QEvent::Drop, event);
        else
            dropText(event);
    } else {
        event.ignore();
    }
    endDragMark();
}

/// Copied first: opening a file runs the event loop, and the drop is over by then.
void ControlMouse::dropFiles(QDropEvent& event) {
    const QPointer<EditView> alive(&m_view);
    const QList<QUrl> urls = event.mimeData()->urls();
    event.setDropAction(Qt::CopyAction);
    event.accept();
    for (const QUrl& url : urls) {
        if (alive && url.isLocalFile())
            Q_EMIT m_view.DropFile(url.toLocalFile());
    }
}

/// In place of the library's own, which ends a text at its first NUL. A move within this control is reported to the
/// source as a copy, since the moved text is removed here.
void ControlMouse::dropText(QDropEvent& event) {
    const QString text = event.mimeData()->text();
    const QPoint at = event.position().toPoint();
    qint64 target = m_view.send(Sci::SCI_POSITIONFROMPOINT, at.x(), at.y());
    const qint64 from = m_view.send(Sci::SCI_GETSELECTIONSTART);
    const qint64 to = m_view.send(Sci::SCI_GETSELECTIONEND);
    const auto* source = qobject_cast<const EditView*>(event.source());
    const bool keepsSource = m_dragging || (source != nullptr && source->Locked());
    const bool moves = m_dragging && event.proposedAction() == Qt::MoveAction;
    event.setDropAction(keepsSource ? Qt::CopyAction : event.proposedAction());
    event.accept();
    if (moves && target >= from && target <= to)
        return;
    if (moves) {
        m_view.send(Sci::SCI_DELETERANGE, from, to - from);
        target -= target > to ? to - from : 0;
    }
    m_view.setSelectionBytes(target, target);
    m_view.replaceSelection(m_view.withOwnLineEnds(text));
    m_view.setSelectionBytes(target, m_view.send(Sci::SCI_GETCURRENTPOS));
}
