#include "workspace/files/FolderTreeView.h"

#include <QMouseEvent>

FolderTreeView::FolderTreeView(QWidget* parent) : QTreeView(parent) {
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QTreeView::clicked, this, [this](const QModelIndex& index) {
        if (!m_isRightPress && !m_isClickReported)
            Q_EMIT nodeClicked(index);
    });
}

void FolderTreeView::mousePressEvent(QMouseEvent* event) {
    m_isRightPress = event->button() == Qt::RightButton;
    m_isClickReported = false;
    QTreeView::mousePressEvent(event);
}

void FolderTreeView::keyPressEvent(QKeyEvent* event) {
    m_isRightPress = false;
    QTreeView::keyPressEvent(event);
}

/// Without a current node the view takes the first one, which nobody chose.
void FolderTreeView::focusInEvent(QFocusEvent* event) {
    m_isFocusArriving = true;
    QTreeView::focusInEvent(event);
    m_isFocusArriving = false;
}

void FolderTreeView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeView::currentChanged(current, previous);
    if (!current.isValid() || m_isRightPress || m_isFocusArriving)
        return;
    m_isClickReported = true;
    Q_EMIT nodeClicked(current);
}
