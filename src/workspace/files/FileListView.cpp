#include "workspace/files/FileListView.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPointer>

#include <algorithm>

namespace {

struct KeyRow {
    Qt::Key key;
    void (FileListView::*requested)();
};

constexpr KeyRow KeyRows[] = {
    {Qt::Key_Return, &FileListView::openRequested},
    {Qt::Key_Enter, &FileListView::openRequested},
    {Qt::Key_F2, &FileListView::renameRequested},
    {Qt::Key_Delete, &FileListView::deleteRequested},
};

const KeyRow* rowOf(const QKeyEvent& event) {
    if ((event.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return nullptr;
    const auto* row = std::ranges::find(KeyRows, event.key(), &KeyRow::key);
    return row == std::end(KeyRows) ? nullptr : row;
}

}  // namespace

FileListView::FileListView(QWidget* parent) : QTreeView(parent) {
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setDragEnabled(true);
    setDragDropMode(QAbstractItemView::DragOnly);
    setContextMenuPolicy(Qt::CustomContextMenu);
    header()->setSectionsClickable(true);
    header()->setStretchLastSection(true);
}

QList<int> FileListView::selectedRows() const {
    QList<int> rows;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        rows.append(index.row());
    std::ranges::sort(rows);
    return rows;
}

bool FileListView::event(QEvent* event) {
    // These keys are not those of the main menu here.
    if (event->type() == QEvent::ShortcutOverride && rowOf(*static_cast<QKeyEvent*>(event)) != nullptr) {
        event->accept();
        return true;
    }
    if (event->type() == QEvent::ContextMenu) {
        const auto* asked = static_cast<QContextMenuEvent*>(event);
        if (asked->reason() == QContextMenuEvent::Keyboard) {
            event->accept();
            requestMenuAtCurrentRow();
            return true;
        }
    }
    return QTreeView::event(event);
}

/// Without a current row the menu opens at the top of the list.
void FileListView::requestMenuAtCurrentRow() {
    const QModelIndex row = currentIndex().siblingAtColumn(0);
    if (row.isValid())
        scrollTo(row);
    Q_EMIT customContextMenuRequested(row.isValid() ? visualRect(row).bottomLeft() : QPoint());
}

void FileListView::keyPressEvent(QKeyEvent* event) {
    const KeyRow* row = rowOf(*event);
    if (row == nullptr) {
        QTreeView::keyPressEvent(event);
        return;
    }
    event->accept();
    Q_EMIT(this->*row->requested)();
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
