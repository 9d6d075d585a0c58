#include "workspace/files/FileListView.h"

#include "widgets/RowInput.h"

#include <QFocusEvent>
#include <QHeaderView>
#include <QPointer>

#include <algorithm>

FileListView::FileListView(QWidget* parent) : QTreeView(parent) {
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setDragEnabled(true);
    setDragDropMode(QAbstractItemView::DragOnly);
    header()->setSectionsClickable(true);
    header()->setStretchLastSection(true);
    auto* input = new RowInput(*this);
    input->onKeys({Qt::Key_Return, Qt::Key_Enter}, [this] { Q_EMIT openRequested(); });
    input->onKeys({Qt::Key_F2}, [this] { Q_EMIT renameRequested(); });
    input->onKeys({Qt::Key_Delete}, [this] { Q_EMIT deleteRequested(); });
    connect(input, &RowInput::menuWanted, this, &FileListView::menuWanted);
}

QList<int> FileListView::selectedRows() const {
    QList<int> rows;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        rows.append(index.row());
    std::ranges::sort(rows);
    return rows;
}

/// The base class makes the first row the current one without selecting it, but the keys act on selected rows. A press
/// of the mouse selects by itself, and a closed menu changes nothing.
void FileListView::focusInEvent(QFocusEvent* event) {
    QTreeView::focusInEvent(event);
    if (event->reason() == Qt::MouseFocusReason || event->reason() == Qt::PopupFocusReason)
        return;
    if (currentIndex().isValid() && !selectionModel()->hasSelection())
        selectionModel()->select(currentIndex(), QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void FileListView::startDrag(Qt::DropActions supportedActions) {
    const QPointer<FileListView> self(this);
    Q_EMIT dragStarted();
    if (!self)
        return;
    QTreeView::startDrag(supportedActions);
    if (self)
        Q_EMIT dragEnded();
}
