#include "widgets/RowInput.h"

#include "widgets/PlainKey.h"

#include <QAbstractItemView>
#include <QContextMenuEvent>

#include <algorithm>

namespace {

/// Qt opens a menu by the key for menus alone.
bool isShiftF10(const QKeyEvent& event) {
    return event.key() == Qt::Key_F10 && event.modifiers() == Qt::ShiftModifier;
}

}  // namespace

RowInput::RowInput(QAbstractItemView& view) : QObject(&view), m_view(view) {
    view.installEventFilter(this);
    view.viewport()->installEventFilter(this);
}

void RowInput::onKeys(std::initializer_list<int> keys, const std::function<void()>& call) {
    for (const int key : keys)
        m_calls.insert(key, call);
}

bool RowInput::isOwnKey(const QKeyEvent& event) const {
    return isPlainKey(event) && m_calls.contains(event.key());
}

bool RowInput::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::ShortcutOverride:
        case QEvent::KeyPress:
            return watched == &m_view && takeKey(*static_cast<QKeyEvent*>(event));
        case QEvent::ContextMenu:
            event->accept();
            if (static_cast<QContextMenuEvent*>(event)->reason() == QContextMenuEvent::Keyboard)
                requestMenuAtCurrentRow();
            return true;
        case QEvent::MouseButtonRelease: {
            const auto& released = *static_cast<QMouseEvent*>(event);
            if (watched == m_view.viewport() && released.button() == Qt::RightButton &&
                m_view.viewport()->rect().contains(released.position().toPoint()))
                Q_EMIT menuWanted(released.globalPosition().toPoint());
            return false;
        }
        default:
            return false;
    }
}

/// False when the key is the view's own.
bool RowInput::takeKey(QKeyEvent& event) {
    const bool opensMenu = isShiftF10(event);
    if (!opensMenu && !isOwnKey(event))
        return false;
    event.accept();
    if (event.type() != QEvent::KeyPress)
        return true;
    if (opensMenu) {
        requestMenuAtCurrentRow();
        return true;
    }
    // A copy, since the call may end the view and with it this object.
    const auto call = m_calls.value(event.key());
    call();
    return true;
}

/// Without a current row the menu opens at the top of the view, and never beside the view.
void RowInput::requestMenuAtCurrentRow() {
    const QModelIndex current = m_view.currentIndex();
    const QModelIndex row = current.siblingAtColumn(0);
    if (row.isValid())
        m_view.scrollTo(row);
    const QPoint place = row.isValid() ? m_view.visualRect(row).bottomLeft() : QPoint();
    Q_EMIT menuWanted(m_view.viewport()->mapToGlobal(QPoint(std::max(place.x(), 0), place.y())));
}
