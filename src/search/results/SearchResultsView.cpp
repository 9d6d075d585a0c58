#include "search/results/SearchResultsView.h"

#include "search/results/MatchDelegate.h"
#include "search/results/SearchResultsModel.h"
#include "widgets/RowInput.h"

#include <QAccessible>
#include <QApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>
#include <QSignalBlocker>

#include <algorithm>

namespace {

/// The base class lays out all rows again when some are added. Where there are more than this, that is done less often:
/// a millisecond later for so many rows.
constexpr int FewRows = 10'000;
constexpr int RowsPerMillisecond = 1'000;

}  // namespace

SearchResultsView::SearchResultsView(SearchResultsModel& model, QWidget* parent)
    : QTreeView(parent), m_model(model), m_delegate(*new MatchDelegate(this)) {
    setObjectName(u"t1"_qs);
    setAccessibleName(u"Search results"_qs);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setFrameShape(NoFrame);
    setIconSize(QSize(16, 16));
    setItemDelegate(&m_delegate);
    setVerticalScrollMode(ScrollPerItem);
    header()->setStretchLastSection(false);
    header()->setResizeContentsPrecision(0);  // the rows in the view
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_nextLayout.setSingleShot(true);
    connect(&m_nextLayout, &QTimer::timeout, this, &SearchResultsView::scheduleDelayedItemsLayout);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &SearchResultsView::fitColumn);
    connect(this, &QTreeView::doubleClicked, this, [this](const QModelIndex& index) {
        if (SearchResultsModel::isMatch(index))
            Q_EMIT matchChosen(index);
    });
    connect(this, &QTreeView::collapsed, this, &SearchResultsView::leaveClosedFile);
    auto* input = new RowInput(*this);
    input->onKeys({Qt::Key_Return, Qt::Key_Enter}, [this] { takeEnter(); });
    connect(input, &RowInput::menuWanted, this, &SearchResultsView::menuWanted);
    setModel(&m_model);
    // At once: the rows that are laid out may be of matches that are gone.
    connect(&m_model, &SearchResultsModel::layoutChanged, this, &SearchResultsView::doItemsLayout);
}

/// The arrow keys start at the current node, which must be visible for that.
void SearchResultsView::leaveClosedFile() {
    const QModelIndex file = currentIndex().parent();
    if (file.isValid() && !isExpanded(file))
        setCurrentIndex(file);
}

/// Without the signals of each file, which take longer than the closing.
void SearchResultsView::closeAllFiles() {
    {
        const QSignalBlocker quiet(this);
        collapseAll();
    }
    leaveClosedFile();
}

/// A screen reader is notified of rows by the base class alone.
void SearchResultsView::rowsInserted(const QModelIndex& parent, int start, int end) {
    const bool isShown = !parent.isValid() || isExpanded(parent);
    const int rows = verticalScrollBar()->maximum();
    if (!isShown || rows < FewRows || QAccessible::isActive())
        QTreeView::rowsInserted(parent, start, end);
    else if (!m_nextLayout.isActive())
        m_nextLayout.start(rows / RowsPerMillisecond);
}

void SearchResultsView::doItemsLayout() {
    m_nextLayout.stop();
    QTreeView::doItemsLayout();
}

/// The base class looks the row up among all of them, to measure and to paint it again. All rows have one height, and
/// those in the view are few.
void SearchResultsView::dataChanged(const QModelIndex&, const QModelIndex&, const QList<int>&) {
    viewport()->update();
}

void SearchResultsView::reset() {
    m_widestRow = 0;
    QTreeView::reset();
}

void SearchResultsView::fitColumn() {
    resizeColumnToContents(0);
}

int SearchResultsView::sizeHintForColumn(int column) const {
    m_widestRow = std::max(m_widestRow, QTreeView::sizeHintForColumn(column));
    return std::max(m_widestRow, viewport()->width());
}

void SearchResultsView::resizeEvent(QResizeEvent* event) {
    QTreeView::resizeEvent(event);
    fitColumn();
}

void SearchResultsView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    if (m_nextLayout.isActive())
        doItemsLayout();
    const int before = horizontalScrollBar()->value();
    QTreeView::scrollTo(index, hint);
    horizontalScrollBar()->setValue(before);
}

bool SearchResultsView::isOnCheckBox(QPoint place) const {
    const QModelIndex index = indexAt(place);
    if (!index.isValid())
        return false;
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.rect = visualRect(index);
    return m_delegate.checkBox(option, index).contains(place);
}

/// Two quick clicks on a check box are two clicks.
void SearchResultsView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || isOnCheckBox(event->position().toPoint()))
        mousePressEvent(event);
    else
        QTreeView::mouseDoubleClickEvent(event);
}

void SearchResultsView::takeEnter() {
    const QModelIndex current = currentIndex();
    if (SearchResultsModel::isMatch(current))
        Q_EMIT matchChosen(current);
    else if (current.isValid())
        setExpanded(current, !isExpanded(current));
}

/// What was typed without a pause is one name; a letter that is repeated stands for itself each time. Space, which
/// checks, is part of a name but does not begin one.
void SearchResultsView::keyboardSearch(const QString& typed) {
    const bool isContinued =
        m_sinceTyped.isValid() && !m_typed.isEmpty() && m_sinceTyped.elapsed() <= QApplication::keyboardInputInterval();
    m_sinceTyped.start();
    m_typed = isContinued ? m_typed + typed : typed.trimmed();
    if (m_typed.isEmpty())
        return;
    const bool isOneLetter = m_typed.count(m_typed.front()) == m_typed.size();
    const QModelIndex current = currentIndex();
    const int row = (SearchResultsModel::isMatch(current) ? current.parent() : current).row();
    const QModelIndex found = m_model.findName(isOneLetter ? m_typed.left(1) : m_typed, isOneLetter ? row + 1 : row);
    if (found.isValid())
        setCurrentIndex(found);
}
