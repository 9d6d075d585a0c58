#include "workspace/project/ProjectItems.h"

#include "platform/Paths.h"
#include "widgets/Icons.h"
#include "widgets/SystemIcons.h"
#include "workspace/lists/FolderKey.h"

#include <QGuiApplication>
#include <QPalette>

#include <algorithm>

namespace {

constexpr QStringView File = u"FILE";
constexpr QStringView Folder = u"FOLDER";

QString folderText(const QString& key) {
    const QString path = DecodeFolderKey(key);
    return u'[' + (key.startsWith(Folder) ? FileNameOf(path) : path) + u']';
}

/// By code points, which is the order of UTF-8 bytes.
bool comesBefore(const QString& left, const QString& right) {
    return left.toUtf8() < right.toUtf8();
}

}  // namespace

ProjectItems::ProjectItems(QObject* parent) : QAbstractListModel(parent) {}

ProjectItems::Added ProjectItems::add(const QString& key, const QString& type) {
    const QString upper = type.toUpper();
    const bool isFile = upper == File;
    if (!isFile && upper != Folder)
        return Added::UnknownType;
    if (std::ranges::any_of(m_rows, [&key](const Row& row) { return row.item.key == key; }))
        return Added::KnownKey;
    const QString path = isFile ? key : DecodeFolderKey(key);
    const bool missing = !fileExists(path);
    Row row{
        {upper, key}, isFile ? FileNameOf(key) : folderText(key), path, missing, !missing && (!isFile || m_typeIcons)};
    const int place = placeFor(row.text);
    beginInsertRows({}, place, place);
    m_rows.insert(m_rows.begin() + place, std::move(row));
    endInsertRows();
    return Added::Yes;
}

/// Behind rows of the same text.
int ProjectItems::placeFor(const QString& text) const {
    const auto after = std::upper_bound(m_rows.begin(), m_rows.end(), text, [](const QString& value, const Row& row) {
        return comesBefore(value, row.text);
    });
    return static_cast<int>(after - m_rows.begin());
}

void ProjectItems::removeAt(int row) {
    beginRemoveRows({}, row, row);
    m_rows.erase(m_rows.begin() + row);
    endRemoveRows();
}

void ProjectItems::clear() {
    beginResetModel();
    m_rows.clear();
    endResetModel();
}

int ProjectItems::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant ProjectItems::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row& row = m_rows.at(static_cast<std::size_t>(index.row()));
    switch (role) {
        case Qt::DisplayRole:
            return row.text;
        case Qt::ToolTipRole:
            return row.path;
        case Qt::DecorationRole:
            return picture(row);
        case Qt::ForegroundRole:
            return row.ghosted ? QVariant(QGuiApplication::palette().brush(QPalette::Disabled, QPalette::Text))
                               : QVariant();
        case Qt::AccessibleDescriptionRole:
            return row.ghosted ? u"missing"_qs : QString();
        case KeyRole:
            return row.item.key;
        case TypeRole:
            return row.item.type;
        default:
            return {};
    }
}

QVariant ProjectItems::picture(const Row& row) {
    const bool isFile = row.item.type == File;
    if (row.typeIcon)
        return isFile ? SystemIcons::ofFile(row.path) : SystemIcons::ofFolder(row.path);
    const QIcon own = Icons::named(isFile ? "file" : "folder");
    if (!row.ghosted)
        return own;
    constexpr QSize Small(16, 16);
    return QIcon(own.pixmap(Small, QIcon::Disabled));
}

QVariant ProjectItems::headerData(int section, Qt::Orientation orientation, int role) const {
    if (section != 0 || orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return u"Workspace"_qs;
}
