#include "widgets/InputStop.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWindow>

#include <algorithm>
#include <array>

namespace {

constexpr auto Stopped = std::to_array<QEvent::Type>({QEvent::KeyPress,
                                                      QEvent::KeyRelease,
                                                      QEvent::ShortcutOverride,
                                                      QEvent::Shortcut,
                                                      QEvent::InputMethod,
                                                      QEvent::MouseButtonPress,
                                                      QEvent::MouseButtonRelease,
                                                      QEvent::MouseButtonDblClick,
                                                      QEvent::MouseMove,
                                                      QEvent::Wheel,
                                                      QEvent::NativeGesture,
                                                      QEvent::ContextMenu,
                                                      QEvent::TouchBegin,
                                                      QEvent::TouchUpdate,
                                                      QEvent::TouchEnd,
                                                      QEvent::TabletPress,
                                                      QEvent::TabletMove,
                                                      QEvent::TabletRelease,
                                                      QEvent::DragEnter,
                                                      QEvent::DragMove,
                                                      QEvent::Drop,
                                                      QEvent::Close});

}  // namespace

InputStop::InputStop(const QWidget* except) : m_except(except), m_boxAtFirst(QApplication::activeModalWidget()) {
    QCoreApplication::instance()->installEventFilter(this);
}

InputStop::~InputStop() {
    QCoreApplication::instance()->removeEventFilter(this);
}

bool InputStop::isBoxOfLater() const {
    const QWidget* box = QApplication::activeModalWidget();
    return box != nullptr && box != m_boxAtFirst;
}

/// Input arrives at the window of the system first, and then at a widget in it.
bool InputStop::isInFreeWindow(const QObject* watched) const {
    if (m_except == nullptr)
        return false;
    const auto* widget = qobject_cast<const QWidget*>(watched);
    return widget == nullptr ? watched == m_except->windowHandle() : widget->window() == m_except;
}

bool InputStop::eventFilter(QObject* watched, QEvent* event) {
    if (std::ranges::find(Stopped, event->type()) == Stopped.end() || isBoxOfLater() || isInFreeWindow(watched))
        return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride)
        m_escaped = m_escaped || static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
    // Only a refused close leaves its window unchanged.
    event->setAccepted(event->type() != QEvent::Close);
    return true;
}
