#include "widgets/RowInput.h"

#include "widgets/PlainKey.h"

#include <QAbstractItemView>
#include <QContextMenuEvent>

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
        case QEvent::KeyPress: {
            const auto& pressed = *static_cast<QKeyEvent*>(event);
            if (watched != &m_view || !isOwnKey(pressed))
                return false;
            event->accept();
            // A copy, since the call may end the view and with it this object.
            if (const auto call = m_calls.value(pressed.key()); event->type() == QEvent::KeyPress)
                call();
            return true;
        }
        case QEvent::ContextMenu:
            event->accept();
            if (static_cast<QContextMenuEvent*>(event)->reason() == QContextMenuEvent::Keyboard)
                requestMenuAtCurrentRow();
            return true;
        case QEvent::MouseButtonRelease: {
            const auto& released = *static_cast<QMouseEvent*>(event);
            if (watched == m_view.viewport() && released.button() == Qt::RightButton)
                Q_EMIT menuWanted(released.globalPosition().toPoint());
            return false;
        }
        default:
            return false;
    }
}

/// Without a current row the menu opens at the top of the view.
void RowInput::requestMenuAtCurrentRow() {
    const QModelIndex current = m_view.currentIndex();
    const QModelIndex row = current.siblingAtColumn(0);
    if (row.isValid())
        m_view.scrollTo(row);
    Q_EMIT menuWanted(m_view.viewport()->mapToGlobal(row.isValid() ? m_view.visualRect(row).bottomLeft() : QPoint()));
}
