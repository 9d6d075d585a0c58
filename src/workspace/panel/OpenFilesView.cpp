#include "workspace/panel/OpenFilesView.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <functional>

OpenFilesView::OpenFilesView(QWidget* parent) : QListView(parent) {
    setObjectName(u"lvOpen"_qs);
    setAccessibleName(u"Open files"_qs);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setUniformItemSizes(true);
    setIconSize(QSize(16, 16));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTextElideMode(Qt::ElideMiddle);
    setFrameShape(NoFrame);
    connect(this, &QListView::doubleClicked, this, &OpenFilesView::rowChosen);
}

QList<int> OpenFilesView::selectedRows() const {
    QList<int> rows;
    for (const QModelIndex& each : selectionModel()->selectedRows())
        rows.append(each.row());
    std::ranges::sort(rows, std::greater<>());
    return rows;
}

void OpenFilesView::mousePressEvent(QMouseEvent* event) {
    m_lastButton = event->button();
    QListView::mousePressEvent(event);
}

void OpenFilesView::mouseReleaseEvent(QMouseEvent* event) {
    QListView::mouseReleaseEvent(event);
    if (event->button() == Qt::RightButton)
        Q_EMIT menuWanted(event->globalPosition().toPoint());
}

/// The mouse brings the menu up when its button is released; the key does so here.
void OpenFilesView::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() == QContextMenuEvent::Keyboard)
        Q_EMIT menuWanted(viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()));
}

void OpenFilesView::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (isPlain && (key == Qt::Key_Return || key == Qt::Key_Enter) && currentIndex().isValid())
        Q_EMIT rowChosen(currentIndex());
    else if (isPlain && key == Qt::Key_Delete)
        Q_EMIT deletePressed();
    else
        QListView::keyPressEvent(event);
}
