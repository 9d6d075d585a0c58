#include "editor/InputStop.h"

#include <QApplication>
#include <QKeyEvent>

#include <algorithm>
#include <array>

namespace {

constexpr auto Stopped = std::to_array<QEvent::Type>(
    {QEvent::KeyPress, QEvent::KeyRelease, QEvent::ShortcutOverride, QEvent::Shortcut, QEvent::InputMethod,
     QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick, QEvent::Wheel,
     QEvent::ContextMenu, QEvent::TouchBegin, QEvent::TouchUpdate, QEvent::TouchEnd, QEvent::TabletPress,
     QEvent::TabletRelease, QEvent::DragEnter, QEvent::DragMove, QEvent::Drop, QEvent::Close});

}  // namespace

InputStop::InputStop() {
    QCoreApplication::instance()->installEventFilter(this);
}

InputStop::~InputStop() {
    QCoreApplication::instance()->removeEventFilter(this);
}

bool InputStop::eventFilter(QObject* watched, QEvent* event) {
    if (std::ranges::find(Stopped, event->type()) == Stopped.end() || QApplication::activeModalWidget() != nullptr)
        return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride)
        m_escaped = m_escaped || static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
    // Only a refused close leaves its window as it is.
    event->setAccepted(event->type() != QEvent::Close);
    return true;
}
