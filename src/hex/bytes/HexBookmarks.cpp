#include "hex/bytes/HexBookmarks.h"

bool HexBookmarks::add(const QString& hexText, const QString& decimalText) {
    if (m_tags.contains(decimalText))
        return false;
    beginInsertRows({}, count(), count());
    m_items.push_back({u"%1 - (%2,%3)"_qs.arg(QString::number(count() + 1), hexText, decimalText), decimalText});
    m_tags.insert(decimalText);
    endInsertRows();
    return true;
}

void HexBookmarks::remove(int index) {
    if (index < 0 || index >= count())
        return;
    beginRemoveRows({}, index, index);
    m_tags.remove(m_items[static_cast<std::size_t>(index)].tag);
    m_items.erase(m_items.begin() + index);
    endRemoveRows();
}

void HexBookmarks::clear() {
    beginResetModel();
    m_items.clear();
    m_tags.clear();
    endResetModel();
}

qint64 HexBookmarks::offsetAt(int index) const {
    return m_items.at(static_cast<std::size_t>(index)).tag.toLongLong();
}

int HexBookmarks::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant HexBookmarks::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= count())
        return {};
    const Item& item = m_items[static_cast<std::size_t>(index.row())];
    if (role == Qt::DisplayRole)
        return item.text;
    return role == TagRole ? QVariant(item.tag) : QVariant();
}

QVariant HexBookmarks::headerData(int section, Qt::Orientation orientation, int role) const {
    if (section != 0 || orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return u"Bookmarks"_qs;
}
