#pragma once

#include <QMdiSubWindow>

/// The window of a document in the frame. Maximising and restoring hide a child window for a moment, and Qt then gives
/// the keyboard focus to another widget; this class restores it. Owned by the area it is added to.
class ChildWindow : public QMdiSubWindow {
    Q_OBJECT

 public:
    using QMdiSubWindow::QMdiSubWindow;

 protected:
    void changeEvent(QEvent* event) override;
};
