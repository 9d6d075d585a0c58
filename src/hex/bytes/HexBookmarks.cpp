#include "hex/bytes/HexBookmarks.h"

#include "hex/bytes/HexText.h"

#include <algorithm>

bool HexBookmarks::add(Offset offset) {
    const auto kept = static_cast<qint32>(offset.number());
    const auto place = std::lower_bound(m_offsets.begin(), m_offsets.end(), kept);
    if (place != m_offsets.end() && *place == kept)
        return false;
    beginInsertRows({}, count(), count());
    m_items.push_back({kept, count() + 1});
    m_offsets.insert(place, kept);
    endInsertRows();
    return true;
}

void HexBookmarks::addAll(std::vector<qint32> offsets) {
    offsets.erase(std::unique(offsets.begin(), offsets.end()), offsets.end());
    auto known = m_offsets.cbegin();
    std::erase_if(offsets, [&](qint32 offset) {
        known = std::find_if(known, m_offsets.cend(), [offset](qint32 each) { return each >= offset; });
        return known != m_offsets.cend() && *known == offset;
    });
    if (offsets.empty())
        return;
    const int before = count();
    beginInsertRows({}, before, before + static_cast<int>(offsets.size()) - 1);
    m_items.reserve(m_items.size() + offsets.size());
    for (const qint32 offset : offsets)
        m_items.push_back({offset, count() + 1});
    m_offsets.reserve(m_items.size());
    m_offsets.insert(m_offsets.end(), offsets.begin(), offsets.end());
    std::inplace_merge(m_offsets.begin(), m_offsets.begin() + before, m_offsets.end());
    endInsertRows();
}

void HexBookmarks::remove(int index) {
    if (index < 0 || index >= count())
        return;
    beginRemoveRows({}, index, index);
    const auto item = m_items.begin() + index;
    m_offsets.erase(std::lower_bound(m_offsets.begin(), m_offsets.end(), item->offset));
    m_items.erase(item);
    endRemoveRows();
}

/// The memory of many bookmarks is not kept.
void HexBookmarks::clear() {
    beginResetModel();
    m_items = std::vector<Item>();
    m_offsets = std::vector<qint32>();
    endResetModel();
}

Offset HexBookmarks::offsetAt(int index) const {
    return Offset(m_items.at(static_cast<std::size_t>(index)).offset);
}

int HexBookmarks::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant HexBookmarks::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= count())
        return {};
    const Item& item = m_items[static_cast<std::size_t>(index.row())];
    const QString decimal = QString::number(item.offset);
    if (role == Qt::DisplayRole)
        return u"%1 - (%2,%3)"_qs.arg(QString::number(item.number), HexText::hexOf(Offset(item.offset)), decimal);
    return role == TagRole ? QVariant(decimal) : QVariant();
}

QVariant HexBookmarks::headerData(int section, Qt::Orientation orientation, int role) const {
    if (section != 0 || orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return u"Bookmarks"_qs;
}
