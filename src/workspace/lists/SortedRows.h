#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

class QHeaderView;

/// How the rows of a list are sorted by a column. Equal rows keep their order.

/// What the cells of a column are. The numbers are the tags of its header.
enum class ColumnType {
    Text = 0,    ///< by code points
    Number = 1,  ///< cells that are no number first, then by value
    Date = 2,    ///< cells that are no date first, then by time
};

/// Any other tag than those of texts and numbers stands for dates.
ColumnType columnType(int tag);

/// Less than, equal to or greater than 0.
int compareByCodePoints(QStringView one, QStringView other);

/// The cells' indexes in sorted order.
QList<int> sortedRows(const QStringList& cells, ColumnType type, Qt::SortOrder order);

/// Shows the arrow in the header of the column, and in no other.
void ShowSortIcon(QHeaderView& header, int column, Qt::SortOrder order);

/// The direction of each column of a list: a click on a header sorts in the direction of its column, which the next
/// click on it turns round. The first one sorts ascending. A plain value.
class SortDirections {
 public:
    /// The direction of this click.
    Qt::SortOrder click(int column);

 private:
    QHash<int, Qt::SortOrder> m_next;
};
