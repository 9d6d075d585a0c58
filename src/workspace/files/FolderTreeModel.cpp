#include "workspace/files/FolderTreeModel.h"

#include "widgets/SystemIcons.h"
#include "workspace/lists/FolderKey.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

constexpr int KeyRole = Qt::UserRole;
constexpr int TagRole = Qt::UserRole + 1;

}  // namespace

/// A dummy has no key.
struct FolderTreeModel::Node {
    Node* parent = nullptr;
    int row = 0;
    QString key;
    QString text;
    bool isRead = false;
    std::vector<std::unique_ptr<Node>> children;

    Node& add(const QString& childKey, const QString& childText) {
        children.push_back(std::make_unique<Node>());
        Node& child = *children.back();
        child.parent = this;
        child.row = static_cast<int>(children.size()) - 1;
        child.key = childKey;
        child.text = childText;
        return child;
    }
    void addDummy() { add({}, u".."_qs); }
};

FolderTreeModel::FolderTreeModel(QObject* parent) : QAbstractItemModel(parent), m_top(std::make_unique<Node>()) {}

FolderTreeModel::~FolderTreeModel() = default;

void FolderTreeModel::clear() {
    beginResetModel();
    m_top->children.clear();
    endResetModel();
}

QModelIndex FolderTreeModel::addRoot(const QString& key, const QString& text, bool canBeOpened) {
    const int row = rowCount();
    beginInsertRows({}, row, row);
    Node& added = m_top->add(key, text);
    if (canBeOpened)
        added.addDummy();
    endInsertRows();
    return indexOf(added);
}

void FolderTreeModel::setReady(const QModelIndex& index, const QString& text) {
    Node& node = nodeOf(index);
    node.text = text;
    Q_EMIT dataChanged(index, index, {Qt::DisplayRole});
    if (node.isRead || !node.children.empty())
        return;
    beginInsertRows(index, 0, 0);
    node.addDummy();
    endInsertRows();
}

void FolderTreeModel::setFolders(const QModelIndex& index, const QStringList& names) {
    removeChildren(index);
    Node& node = nodeOf(index);
    node.isRead = true;
    if (names.isEmpty())
        return;
    const QString folder = DecodeFolderKey(node.key);
    beginInsertRows(index, 0, static_cast<int>(names.size()) - 1);
    node.children.reserve(static_cast<size_t>(names.size()));
    for (const QString& name : names)
        node.add(folderKey(pathIn(folder, name)), name).addDummy();
    endInsertRows();
}

void FolderTreeModel::removeChildren(const QModelIndex& index) {
    Node& node = nodeOf(index);
    node.isRead = false;
    if (node.children.empty())
        return;
    beginRemoveRows(index, 0, static_cast<int>(node.children.size()) - 1);
    node.children.clear();
    endRemoveRows();
}

QString FolderTreeModel::keyOf(const QModelIndex& index) const {
    return nodeOf(index).key;
}

bool FolderTreeModel::isRead(const QModelIndex& index) const {
    return nodeOf(index).isRead;
}

QModelIndex FolderTreeModel::child(const QModelIndex& parent, const QString& key) const {
    const Node& node = nodeOf(parent);
    const auto found = std::ranges::find_if(node.children, [&](const auto& each) { return each->key == key; });
    return found == node.children.end() ? QModelIndex() : indexOf(**found);
}

QModelIndex FolderTreeModel::index(int row, int column, const QModelIndex& parent) const {
    const Node& node = nodeOf(parent);
    const bool isThere = column == 0 && row >= 0 && static_cast<size_t>(row) < node.children.size();
    return isThere ? createIndex(row, 0, node.children[static_cast<size_t>(row)].get()) : QModelIndex();
}

QModelIndex FolderTreeModel::parent(const QModelIndex& index) const {
    return index.isValid() ? indexOf(*nodeOf(index).parent) : QModelIndex();
}

int FolderTreeModel::rowCount(const QModelIndex& parent) const {
    return static_cast<int>(nodeOf(parent).children.size());
}

int FolderTreeModel::columnCount(const QModelIndex&) const {
    return 1;
}

QVariant FolderTreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const Node& node = nodeOf(index);
    if (role == Qt::DisplayRole)
        return node.text;
    if (role == KeyRole)
        return node.key;
    if (role == TagRole)
        return node.isRead ? u"1"_qs : QString();
    if (role == Qt::ToolTipRole)
        return DecodeFolderKey(node.key);
    if (role != Qt::DecorationRole || node.key.isEmpty())
        return {};
    return isFolderKey(node.key) ? SystemIcons::ofFolder(DecodeFolderKey(node.key))
                                 : SystemIcons::ofVolume(isFixedKey(node.key));
}

FolderTreeModel::Node& FolderTreeModel::nodeOf(const QModelIndex& index) const {
    return index.isValid() ? *static_cast<Node*>(index.internalPointer()) : *m_top;
}

QModelIndex FolderTreeModel::indexOf(const Node& node) const {
    return &node == m_top.get() ? QModelIndex() : createIndex(node.row, 0, &node);
}
