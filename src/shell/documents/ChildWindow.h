#pragma once

#include "shell/documents/ChildPlace.h"

#include <QMdiSubWindow>

class QWindowStateChangeEvent;

/// The window of a document in the frame. Maximising and restoring hide a child window for a moment, and Qt then gives
/// the keyboard focus to another widget; this class restores it. It also keeps the place of the normal state while the
/// window is minimised or maximised. Owned by the area it is added to.
class ChildWindow : public QMdiSubWindow {
    Q_OBJECT

 public:
    using QMdiSubWindow::QMdiSubWindow;

    ChildPlace place() const;
    void setPlace(const ChildPlace& place);
    /// The frame does not become the active window by it.
    void setState(ChildState state);

 protected:
    void changeEvent(QEvent* event) override;

 private:
    void noteNormalPlace(const QWindowStateChangeEvent& event);

    QRect m_normal;
};
