#include "hex/BookmarkList.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMouseEvent>

BookmarkList::BookmarkList(QWidget* parent) : QListView(parent), m_heading(new QHeaderView(Qt::Horizontal, this)) {
    setUniformItemSizes(true);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_heading->setStretchLastSection(true);
    m_heading->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_heading->setFocusPolicy(Qt::NoFocus);
}

void BookmarkList::setModel(QAbstractItemModel* model) {
    m_heading->setModel(model);
    QListView::setModel(model);
}

void BookmarkList::updateGeometries() {
    QListView::updateGeometries();
    const int height = m_heading->sizeHint().height();
    setViewportMargins(0, height, 0, 0);
    const QRect below = viewport()->geometry();
    m_heading->setGeometry(below.left(), below.top() - height, below.width(), height);
}

QPoint BookmarkList::fromViewport(const QPoint& point) const {
    return viewport()->mapTo(this, point);
}

void BookmarkList::mouseReleaseEvent(QMouseEvent* event) {
    QListView::mouseReleaseEvent(event);
    if (event->button() == Qt::RightButton)
        Q_EMIT rightReleased(fromViewport(event->position().toPoint()));
}

/// With the mouse the menu waits for the release.
void BookmarkList::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() != QContextMenuEvent::Keyboard)
        return;
    const QRect row = visualRect(currentIndex()) & viewport()->rect();
    Q_EMIT rightReleased(fromViewport(row.isEmpty() ? viewport()->rect().center() : row.center()));
}
