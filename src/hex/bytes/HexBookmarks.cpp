#include "hex/bytes/HexBookmarks.h"

#include "hex/bytes/HexText.h"

#include <algorithm>

namespace {

/// Whether one of the items has that offset; `offsets` are theirs, unless it is empty and the items ascend.
template <typename Items>
bool contains(const Items& items, const std::vector<qint32>& offsets, qint32 offset) {
    if (!offsets.empty())
        return std::binary_search(offsets.begin(), offsets.end(), offset);
    const auto place = std::lower_bound(items.begin(), items.end(), offset,
                                        [](const auto& item, qint32 wanted) { return item.offset < wanted; });
    return place != items.end() && place->offset == offset;
}

/// To be called before an offset is added: fills `offsets` if the items would not ascend any more.
template <typename Items>
void fillUnlessAscending(std::vector<qint32>& offsets, const Items& items, qint32 added) {
    if (!offsets.empty() || items.empty() || items.back().offset < added)
        return;
    offsets.reserve(items.size());
    for (const auto& item : items)
        offsets.push_back(item.offset);
}

}  // namespace

bool HexBookmarks::add(Offset offset) {
    const auto kept = static_cast<qint32>(offset.number());
    if (contains(m_items, m_offsets, kept))
        return false;
    fillUnlessAscending(m_offsets, m_items, kept);
    beginInsertRows({}, count(), count());
    m_items.push_back({kept, count() + 1});
    if (!m_offsets.empty())
        m_offsets.insert(std::lower_bound(m_offsets.begin(), m_offsets.end(), kept), kept);
    endInsertRows();
    return true;
}

void HexBookmarks::addAll(std::vector<qint32> offsets) {
    offsets.erase(std::unique(offsets.begin(), offsets.end()), offsets.end());
    std::erase_if(offsets, [this](qint32 offset) { return contains(m_items, m_offsets, offset); });
    if (offsets.empty())
        return;
    fillUnlessAscending(m_offsets, m_items, offsets.front());
    const int before = count();
    m_items.reserve(m_items.size() + offsets.size());
    beginInsertRows({}, before, before + static_cast<int>(offsets.size()) - 1);
    for (const qint32 offset : offsets)
        m_items.push_back({offset, count() + 1});
    if (!m_offsets.empty()) {
        m_offsets.insert(m_offsets.end(), offsets.begin(), offsets.end());
        std::inplace_merge(m_offsets.begin(), m_offsets.begin() + before, m_offsets.end());
    }
    endInsertRows();
}

void HexBookmarks::remove(int index) {
    if (index < 0 || index >= count())
        return;
    beginRemoveRows({}, index, index);
    const auto item = m_items.begin() + index;
    if (!m_offsets.empty())
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
