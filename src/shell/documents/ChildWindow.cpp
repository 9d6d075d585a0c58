#include "shell/documents/ChildWindow.h"

#include <QPointer>
#include <QWindowStateChangeEvent>

#include <cstddef>

namespace {

constexpr Qt::WindowStates NotNormal = Qt::WindowMinimized | Qt::WindowMaximized;

/// By state.
constexpr void (QWidget::*ShowAs[])() = {&QWidget::showNormal, &QWidget::showMinimized, &QWidget::showMaximized};

ChildState childState(Qt::WindowStates states) {
    if (states & Qt::WindowMinimized)
        return ChildState::Minimised;
    return states & Qt::WindowMaximized ? ChildState::Maximised : ChildState::Normal;
}

}  // namespace

ChildPlace ChildWindow::place() const {
    ChildPlace place{childState(windowState()), m_normal};
    if (place.state == ChildState::Normal)
        place.normal = geometry();
    return place;
}

void ChildWindow::setPlace(const ChildPlace& place) {
    const ChildPlace now = this->place();
    if (now.normal != place.normal) {
        setState(ChildState::Normal);
        setGeometry(place.normal);
    }
    // Where it was already, too: the area, once it is shown, places windows that nobody has placed.
    setAttribute(Qt::WA_Moved);
    setAttribute(Qt::WA_Resized);
    setState(place.state);
}

/// A window with the active state requests the keyboard for its frame when it is shown in another size, even while the
/// user works in another program. So it is shown without that state.
void ChildWindow::setState(ChildState state) {
    const auto show = ShowAs[static_cast<std::size_t>(state)];
    const Qt::WindowStates active = windowState() & Qt::WindowActive;
    overrideWindowState(windowState() & ~Qt::WindowActive);
    (this->*show)();
    overrideWindowState(windowState() | active);
}

void ChildWindow::changeEvent(QEvent* event) {
    const QPointer<QWidget> focused(window()->focusWidget());
    const bool held = event->type() == QEvent::WindowStateChange && focused && isAncestorOf(focused);
    if (event->type() == QEvent::WindowStateChange)
        noteNormalPlace(static_cast<QWindowStateChangeEvent&>(*event));
    QMdiSubWindow::changeEvent(event);
    if (held && focused && focused->isVisible() && window()->focusWidget() != focused)
        focused->setFocus();
}

/// Before the base class moves the window. While it does, it sends further events, which do not say the state in which
/// the window was.
void ChildWindow::noteNormalPlace(const QWindowStateChangeEvent& event) {
    if (!event.isOverride() && !(event.oldState() & NotNormal))
        m_normal = geometry();
}
