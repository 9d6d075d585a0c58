#pragma once

#include <QtGlobal>

class ControlMacros;
class ControlSelection;
class EditView;
class QContextMenuEvent;
class QDragEnterEvent;
class QDragMoveEvent;
class QDropEvent;
class QMouseEvent;
class QWheelEvent;

/// Handles the mouse in a control: selecting, dragging and dropping texts and files, zooming, margin clicks and the
/// menu. Owned by the control, which passes its events on. A drag, and a dropped file, run the event loop.
class ControlMouse {
 public:
    /// All three outlive this object.
    ControlMouse(EditView& view, ControlSelection& selection, ControlMacros& macros)
        : m_view(view), m_selection(selection), m_macros(macros) {}

    /// Whether text can be dragged; files can be dropped in any case. Off also ends a drag in progress.
    bool DragDrop() const { return m_dragDrop; }
    void setDragDrop(bool on);
    /// While text of the selection is dragged.
    bool isDragging() const { return m_dragging; }

    void press(QMouseEvent& event);
    void move(QMouseEvent& event);
    void doubleClick(QMouseEvent& event);
    void release(QMouseEvent& event);
    void turnWheel(QWheelEvent& event);
    void openMenu(QContextMenuEvent& event);
    void dragEnter(QDragEnterEvent& event);
    void dragMove(QDragMoveEvent& event);
    void drop(QDropEvent& event);

 private:
    bool isInMargin(int x) const;
    void pressLeft(QMouseEvent& event, qint64 byte, bool inMargin);
    void reportPress(const QMouseEvent& event);
    void dropText(QDropEvent& event);
    void dropFiles(QDropEvent& event);
    void endDragMark();

    EditView& m_view;
    ControlSelection& m_selection;
    ControlMacros& m_macros;
    bool m_dragDrop = true;
    bool m_pressedInSelection = false;
    bool m_dragging = false;   ///< out of the selection, as long as the drag lasts
    bool m_addsRange = false;  ///< by a press with Ctrl, until the button is released
    int m_wheelTurned = 0;     ///< with Ctrl held, in eighths of a degree
};
