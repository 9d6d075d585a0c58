#pragma once

#include <QAbstractItemModel>
#include <QString>
#include <QStringList>

#include <memory>

/// The volumes and folders of the folder tree. A node has its folder tree key, its text, and the tag "1" once its
/// children have been read; until then a dummy child ".." lets the view show that it can be opened. Owned by the folder
/// tree, which reads the disk; the model holds what was read.
class FolderTreeModel : public QAbstractItemModel {
    Q_OBJECT

 public:
    explicit FolderTreeModel(QObject* parent = nullptr);
    ~FolderTreeModel() override;

    void clear();
    /// Adds a node at the root, with a dummy child where it can be opened.
    QModelIndex addRoot(const QString& key, const QString& text, bool canBeOpened);
    /// A volume that has answered after it was added.
    void setReady(const QModelIndex& index, const QString& text);

    /// Replaces what is below the node by these folders, and tags it as read.
    void setFolders(const QModelIndex& index, const QStringList& names);
    /// Takes all children away, the dummy too.
    void removeChildren(const QModelIndex& index);

    QString keyOf(const QModelIndex& index) const;
    bool isRead(const QModelIndex& index) const;
    /// The node of the key among the children; invalid when there is none.
    QModelIndex child(const QModelIndex& parent, const QString& key) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override { return rowCount(parent) > 0; }
    QVariant data(const QModelIndex& index, int role) const override;

 private:
    struct Node;

    Node& nodeOf(const QModelIndex& index) const;
    QModelIndex indexOf(const Node& node) const;

    std::unique_ptr<Node> m_top;
};
