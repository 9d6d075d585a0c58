#include "workspace/panel/OpenFilesModel.h"

#include "platform/Paths.h"
#include "widgets/Icons.h"
#include "widgets/SystemIcons.h"

#include <QIcon>

#include <algorithm>
#include <array>

namespace {

constexpr QStringView Untitled = u"Document";
constexpr int Normal = 1;

/// A state of a document as the list shows and speaks it.
struct StateLook {
    const char* icon;
    const char* spoken;
};

/// By image, which counts from 1.
constexpr std::array<StateLook, 3> Looks = {
    {{"doc-normal", ""}, {"doc-changed", ", changed"}, {"doc-locked", ", locked"}}};

const StateLook& lookOf(int image) {
    return Looks.at(static_cast<size_t>(image - 1));
}

}  // namespace

OpenFilesModel::OpenFilesModel(QObject* parent) : QAbstractListModel(parent) {}

int OpenFilesModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant OpenFilesModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= m_rows.size())
        return {};
    const Row& row = m_rows.at(index.row());
    switch (role) {
        case Qt::DisplayRole:
            return textOf(row);
        case Qt::AccessibleTextRole:
            return QString(textOf(row) + QLatin1String(lookOf(row.image).spoken));
        case Qt::DecorationRole:
            return iconOf(row);
        case Qt::ToolTipRole:
        case Tag:
            return row.tag;
        case Key:
            return row.key;
        case Image:
            return row.image;
        default:
            return {};
    }
}

QString OpenFilesModel::textOf(const Row& row) const {
    return m_showPath ? row.tag : FileNameOf(row.tag);
}

QIcon OpenFilesModel::iconOf(const Row& row) const {
    const QIcon own = m_systemIcons && row.image == Normal ? SystemIcons::ofFile(row.tag) : QIcon();
    return own.isNull() ? Icons::named(lookOf(row.image).icon) : own;
}

void OpenFilesModel::add(const QString& file, const QString& key) {
    const auto end = static_cast<int>(m_rows.size());
    beginInsertRows({}, end, end);
    m_rows.append({key, file});
    endInsertRows();
}

void OpenFilesModel::set(const QString& file, const QString& key, int image) {
    const int row = rowOf(key);
    if (row < 0)
        return;
    Row& changed = m_rows[row];
    changed.image = std::clamp(image, Normal, static_cast<int>(Looks.size()));
    if (!file.isEmpty())
        changed.tag = file;
    Q_EMIT dataChanged(index(row), index(row));
}

void OpenFilesModel::remove(const QString& key) {
    const int row = rowOf(key);
    if (row < 0)
        return;
    beginRemoveRows({}, row, row);
    m_rows.removeAt(row);
    endRemoveRows();
}

void OpenFilesModel::clear() {
    beginResetModel();
    m_rows.clear();
    endResetModel();
}

int OpenFilesModel::rowOf(const QString& key) const {
    const auto found = std::ranges::find(m_rows, key, &Row::key);
    return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

bool OpenFilesModel::isUntitled(int row) const {
    return tagAt(row).startsWith(Untitled);
}

void OpenFilesModel::setShowPath(bool on) {
    m_showPath = on;
    repaintAll();
}

void OpenFilesModel::setDefaultSysIcon(bool on) {
    m_systemIcons = on;
    repaintAll();
}

void OpenFilesModel::repaintAll() {
    if (!m_rows.isEmpty())
        Q_EMIT dataChanged(index(0), index(rowCount() - 1));
}
