#include "hex/BookmarkList.h"

#include "widgets/RowInput.h"

#include <QHeaderView>

BookmarkList::BookmarkList(QWidget* parent) : QListView(parent), m_heading(new QHeaderView(Qt::Horizontal, this)) {
    setUniformItemSizes(true);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_heading->setStretchLastSection(true);
    m_heading->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_heading->setFocusPolicy(Qt::NoFocus);
    connect(new RowInput(*this), &RowInput::menuWanted, this, &BookmarkList::menuWanted);
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
