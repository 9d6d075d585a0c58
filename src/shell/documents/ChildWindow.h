#pragma once

#include <QMdiSubWindow>

/// The window of a document in the frame. Maximising and restoring hide a child window for a moment, by which Qt hands
/// the keyboard on to the next widget; this one gives it back to where it was. Belongs to the area it is added to.
class ChildWindow : public QMdiSubWindow {
    Q_OBJECT

 public:
    using QMdiSubWindow::QMdiSubWindow;

 protected:
    void changeEvent(QEvent* event) override;
};
