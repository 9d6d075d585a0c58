#include "shell/documents/ChildWindow.h"

#include <QEvent>
#include <QPointer>

void ChildWindow::changeEvent(QEvent* event) {
    const QPointer<QWidget> focused(window()->focusWidget());
    const bool held = event->type() == QEvent::WindowStateChange && focused && isAncestorOf(focused);
    QMdiSubWindow::changeEvent(event);
    if (held && focused && focused->isVisible() && window()->focusWidget() != focused)
        focused->setFocus();
}
