#pragma once

#include "hex/bytes/FilePosition.h"

#include <QAbstractListModel>

#include <vector>

/// The bookmarks of a hex view in the order in which they were added, as its list shows them. Keeps the offset and the
/// number of each; texts are made when they are read, since all matches of a search may get bookmarks. Owned by the
/// view; cleared with each load.
class HexBookmarks : public QAbstractListModel {
    Q_OBJECT

 public:
    /// The role of an item's decimal offset.
    static constexpr int TagRole = Qt::UserRole + 1;

    using QAbstractListModel::QAbstractListModel;

    /// Adds one at the end. Its number is the count of items by then; a removal does not change the numbers of others.
    /// False when the offset has a bookmark already.
    bool add(Offset offset);
    /// Adds those of the offsets that have no bookmark yet. The offsets ascend; one may occur several times.
    void addAll(std::vector<qint32> offsets);
    void remove(int index);
    void clear();

    int count() const { return static_cast<int>(m_items.size()); }
    Offset offsetAt(int index) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

 private:
    struct Item {
        qint32 offset;
        qint32 number;
    };

    std::vector<Item> m_items;
    std::vector<qint32> m_offsets;  ///< the same offsets, ascending
};
