#include "workspace/lists/SortedRows.h"

#include <QDateTime>
#include <QHeaderView>
#include <QLocale>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>
#include <utility>
#include <vector>

namespace {

struct Key {
    std::optional<double> value;  ///< nothing for a text, and for a cell that is not of its type
    QString text;
};

std::optional<double> numberOf(const QString& cell) {
    bool isNumber = false;
    const double value = QLocale::c().toDouble(cell.trimmed(), &isNumber);
    // "nan" and "inf" are read as numbers, and have no place among them.
    return isNumber && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

/// In the forms in which the lists show dates.
std::optional<double> dateOf(const QString& cell) {
    for (const char* form : {"yyyy/M/d h:m:s", "yyyy/M/d h:m", "yyyy/M/d", "yyyy-M-d h:m:s", "yyyy-M-d"}) {
        QDateTime time = QDateTime::fromString(cell.trimmed(), QString::fromLatin1(form));
        time.setTimeSpec(Qt::UTC);
        if (time.isValid())
            return static_cast<double>(time.toSecsSinceEpoch());
    }
    return std::nullopt;
}

Key keyOf(const QString& cell, ColumnType type) {
    if (type == ColumnType::Text)
        return {std::nullopt, cell};
    return {type == ColumnType::Number ? numberOf(cell) : dateOf(cell), {}};
}

bool isBefore(const Key& one, const Key& other) {
    if (one.value != other.value)
        return one.value < other.value;
    return compareByCodePoints(one.text, other.text) < 0;
}

/// UTF-16 orders characters outside the first plane before the last ones of it.
char16_t rank(QChar unit) {
    const char16_t code = unit.unicode();
    if (unit.isSurrogate())
        return static_cast<char16_t>(code + 0x2000);
    return code >= 0xE000 ? static_cast<char16_t>(code - 0x800) : code;
}

}  // namespace

ColumnType columnType(int tag) {
    const bool isKnown = tag == static_cast<int>(ColumnType::Text) || tag == static_cast<int>(ColumnType::Number);
    return isKnown ? static_cast<ColumnType>(tag) : ColumnType::Date;
}

int compareByCodePoints(QStringView one, QStringView other) {
    const auto [inOne, inOther] = std::mismatch(one.begin(), one.end(), other.begin(), other.end());
    if (inOne == one.end() || inOther == other.end())
        return one.size() == other.size() ? 0 : (one.size() < other.size() ? -1 : 1);
    return rank(*inOne) < rank(*inOther) ? -1 : 1;
}

QList<int> sortedRows(const QStringList& cells, ColumnType type, Qt::SortOrder order) {
    std::vector<Key> keys;
    keys.reserve(static_cast<size_t>(cells.size()));
    for (const QString& cell : cells)
        keys.push_back(keyOf(cell, type));
    QList<int> rows(cells.size());
    std::iota(rows.begin(), rows.end(), 0);
    std::ranges::stable_sort(rows, [&](int one, int other) {
        if (order == Qt::DescendingOrder)
            std::swap(one, other);
        return isBefore(keys[static_cast<size_t>(one)], keys[static_cast<size_t>(other)]);
    });
    return rows;
}

void ShowSortIcon(QHeaderView& header, int column, Qt::SortOrder order) {
    header.setSortIndicatorShown(true);
    header.setSortIndicator(column, order);
}

Qt::SortOrder SortDirections::click(int column) {
    const Qt::SortOrder order = m_next.value(column, Qt::AscendingOrder);
    m_next.insert(column, order == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder);
    return order;
}
