#include "workspace/files/FolderTreeView.h"

#include "widgets/RowInput.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>

namespace {

/// How many rows below those in the view are measured. Measuring all would take long in a large tree.
constexpr int RowsMeasuredAhead = 100;

}  // namespace

FolderTreeView::FolderTreeView(QWidget* parent) : QTreeView(parent) {
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    header()->setStretchLastSection(false);
    header()->setResizeContentsPrecision(RowsMeasuredAhead);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    connect(new RowInput(*this), &RowInput::menuWanted, this, &FolderTreeView::menuWanted);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &FolderTreeView::fitColumn);
    connect(this, &QTreeView::clicked, this, [this](const QModelIndex& index) {
        if (!m_isRightPress && !m_isClickReported)
            Q_EMIT nodeClicked(index);
    });
}

void FolderTreeView::fitColumn() {
    resizeColumnToContents(0);
}

/// A column narrower than the view would leave no row to click on beside a short name.
int FolderTreeView::sizeHintForColumn(int column) const {
    return std::max(QTreeView::sizeHintForColumn(column), viewport()->width());
}

void FolderTreeView::resizeEvent(QResizeEvent* event) {
    QTreeView::resizeEvent(event);
    fitColumn();
}

/// The base class scrolls a column that is wider than the view to its start, where a deep node has no name.
void FolderTreeView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    QScrollBar& bar = *horizontalScrollBar();
    const int before = bar.value();
    QTreeView::scrollTo(index, hint);
    fitColumn();
    // The range of the bar follows the column only later otherwise.
    updateGeometries();
    bar.setValue(before);
    const QRect row = visualRect(index);
    if (row.isEmpty())
        return;
    const int start = row.left() - indentation();
    const int beyond = row.left() + sizeHintForIndex(index).width() - viewport()->width();
    if (start < 0 || beyond > 0)
        bar.setValue(bar.value() + (start < 0 ? start : std::min(beyond, start)));
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
