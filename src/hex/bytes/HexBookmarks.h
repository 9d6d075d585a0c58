#pragma once

#include <QAbstractListModel>
#include <QSet>
#include <QString>

#include <vector>

/// The bookmarks of a hex view in the order of adding, as its list shows them. The decimal offset is the key. Owned by
/// the view; cleared with each load.
class HexBookmarks : public QAbstractListModel {
    Q_OBJECT

 public:
    /// Where an item has its decimal offset.
    static constexpr int TagRole = Qt::UserRole + 1;

    using QAbstractListModel::QAbstractListModel;

    /// Adds at the end under a running number, which is the count of items and not renewed by a removal. False when the
    /// offset has its bookmark already.
    bool add(const QString& hexText, const QString& decimalText);
    void remove(int index);
    void clear();

    int count() const { return static_cast<int>(m_items.size()); }
    /// The offset of an item, from 0.
    qint64 offsetAt(int index) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

 private:
    struct Item {
        QString text;
        QString tag;
    };

    std::vector<Item> m_items;
    QSet<QString> m_tags;
};
