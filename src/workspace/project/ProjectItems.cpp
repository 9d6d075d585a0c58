#include "workspace/project/ProjectItems.h"

#include "platform/BackgroundWork.h"
#include "platform/Paths.h"
#include "widgets/Icons.h"
#include "widgets/SystemIcons.h"
#include "workspace/lists/FolderKey.h"
#include "workspace/lists/SortedRows.h"

#include <QGuiApplication>
#include <QHash>
#include <QPalette>

#include <algorithm>
#include <utility>

namespace {

constexpr QStringView File = u"FILE";
constexpr QStringView Folder = u"FOLDER";

QString folderText(const QString& key) {
    const QString path = DecodeFolderKey(key);
    return u'[' + (key.startsWith(Folder) ? FileNameOf(path) : path) + u']';
}

}  // namespace

ProjectItems::ProjectItems(QObject* parent) : ProjectItems(fileExists, parent) {}

ProjectItems::ProjectItems(Exists exists, QObject* parent) : QAbstractListModel(parent), m_exists(std::move(exists)) {}

ProjectItems::~ProjectItems() = default;

ProjectItems::Added ProjectItems::add(const QString& key, const QString& type) {
    const QString upper = type.toUpper();
    const bool isFile = upper == File;
    if (!isFile && upper != Folder)
        return Added::UnknownType;
    if (m_keys.contains(key))
        return Added::KnownKey;
    m_keys.insert(key);
    auto row = std::make_unique<Row>(Row{.item = {upper, key},
                                         .text = isFile ? FileNameOf(key) : folderText(key),
                                         .path = isFile ? key : DecodeFolderKey(key),
                                         .typeIcon = !isFile || m_typeIcons,
                                         .number = ++m_lastNumber});
    m_waiting.push_back({.number = row->number, .path = row->path});
    const int place = placeFor(row->text);
    beginInsertRows({}, place, place);
    m_rows.insert(m_rows.begin() + place, std::move(row));
    endInsertRows();
    // Later, so that the rows of a whole project are asked for together.
    if (!std::exchange(m_asksSoon, true))
        QMetaObject::invokeMethod(this, &ProjectItems::ask, Qt::QueuedConnection);
    return Added::Yes;
}

/// Behind rows of the same text. The rows of a saved project come in their order.
int ProjectItems::placeFor(const QString& text) const {
    if (m_rows.empty() || compareByCodePoints(text, m_rows.back()->text) >= 0)
        return rowCount();
    const auto after = std::ranges::upper_bound(
        m_rows, text, [](const QString& left, const QString& right) { return compareByCodePoints(left, right) < 0; },
        [](const auto& row) -> const QString& { return row->text; });
    return static_cast<int>(after - m_rows.begin());
}

/// One work at a time, for all rows that wait: no number of rows makes many threads.
void ProjectItems::ask() {
    m_asksSoon = false;
    if (m_work != nullptr || m_waiting.empty())
        return;
    const auto questions = std::make_shared<Questions>(std::exchange(m_waiting, {}));
    m_work = new BackgroundWork(
        [questions, exists = m_exists](const std::atomic<bool>& cancelled) {
            for (Question& each : *questions) {
                if (cancelled)
                    return;
                each.isThere = exists(each.path);
            }
        },
        this);
    connect(m_work, &BackgroundWork::finished, this, [this, questions] {
        endWork();
        takeAnswers(*questions);
        ask();
    });
}

/// Rows that were removed meanwhile have no use for their answer.
void ProjectItems::takeAnswers(const Questions& answered) {
    QHash<quint64, bool> isThere;
    for (const Question& each : answered)
        isThere.insert(each.number, each.isThere);
    for (const auto& row : m_rows) {
        const auto answer = isThere.constFind(row->number);
        if (answer != isThere.cend())
            row->state = *answer ? OnDisk::There : OnDisk::Missing;
    }
    if (!m_rows.empty())
        Q_EMIT dataChanged(index(0), index(rowCount() - 1));
}

/// Ends the work without its answers, unless it has given them.
void ProjectItems::endWork() {
    if (m_work == nullptr)
        return;
    m_work->disconnect(this);
    m_work->cancel();
    m_work->deleteLater();
    m_work = nullptr;
}

void ProjectItems::removeAt(int row) {
    beginRemoveRows({}, row, row);
    m_keys.remove(rowAt(row).item.key);
    m_rows.erase(m_rows.begin() + row);
    endRemoveRows();
}

void ProjectItems::clear() {
    endWork();
    m_waiting.clear();
    beginResetModel();
    m_rows.clear();
    m_keys.clear();
    endResetModel();
}

int ProjectItems::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant ProjectItems::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row& row = rowAt(index.row());
    const bool isMissing = row.state == OnDisk::Missing;
    switch (role) {
        case Qt::DisplayRole:
            return row.text;
        case Qt::ToolTipRole:
            return row.path;
        case Qt::DecorationRole:
            return picture(row);
        case Qt::ForegroundRole:
            return isMissing ? QVariant(QGuiApplication::palette().brush(QPalette::Disabled, QPalette::Text))
                             : QVariant();
        case Qt::AccessibleDescriptionRole:
            return isMissing ? u"missing"_qs : QString();
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
    if (row.typeIcon && row.state == OnDisk::There)
        return isFile ? SystemIcons::ofFile(row.path) : SystemIcons::ofFolder(row.path);
    const QIcon own = Icons::named(isFile ? "file" : "folder");
    if (row.state != OnDisk::Missing)
        return own;
    constexpr QSize Small(16, 16);
    return QIcon(own.pixmap(Small, QIcon::Disabled));
}

QVariant ProjectItems::headerData(int section, Qt::Orientation orientation, int role) const {
    if (section != 0 || orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return u"Workspace"_qs;
}
