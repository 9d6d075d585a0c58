#include "workspace/files/FileListModel.h"

#include "platform/BackgroundWork.h"
#include "platform/FileInfo.h"
#include "platform/Paths.h"
#include "widgets/Icons.h"
#include "widgets/SystemIcons.h"
#include "workspace/files/Disk.h"
#include "workspace/lists/FolderKey.h"
#include "workspace/lists/SortedRows.h"

#include <QMimeData>
#include <QSet>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace {

constexpr int KeyRole = Qt::UserRole;
constexpr int TagRole = Qt::UserRole + 1;
/// Rows whose times are read together when one of them is shown.
constexpr size_t RowsAtOnce = 32;

struct ColumnText {
    const char* title;
    ColumnType type;
};

constexpr ColumnText Columns[] = {{"Filename", ColumnType::Text}, {"Modified", ColumnType::Date}};

/// Destroys the work later, because this may be called from its signal.
void drop(std::unique_ptr<BackgroundWork>& work) {
    if (!work)
        return;
    work->cancel();
    work->disconnect();
    work.release()->deleteLater();
}

}  // namespace

struct FileListModel::Reading {
    Disk::Names found;
};

struct FileListModel::Timing {
    QStringList names;
    QList<int> places;  ///< of the rows
    QList<qint64> times;
};

FileListModel::FileListModel(std::shared_ptr<const Disk> disk, QObject* parent)
    : QAbstractTableModel(parent), m_disk(std::move(disk)), m_fixedIcon(Icons::named("file")) {}

FileListModel::~FileListModel() = default;

void FileListModel::load(const QString& folder, const QString& filter) {
    clear();
    m_folder = folder;
    m_names = std::make_shared<Reading>();
    m_reading = std::make_unique<BackgroundWork>(
        [disk = m_disk, folder, filter, names = m_names](const std::atomic<bool>& cancelled) {
            names->found = disk->files(folder, filter, cancelled);
        });
    if (m_reading->waitFor(BackgroundWork::Still))
        takeNames();
    else
        connect(m_reading.get(), &BackgroundWork::finished, this, &FileListModel::takeNames);
}

void FileListModel::takeNames() {
    drop(m_reading);
    const QStringList names = std::exchange(m_names, nullptr)->found.names;
    if (!names.isEmpty()) {
        beginInsertRows({}, 0, static_cast<int>(names.size()) - 1);
        m_rows.reserve(static_cast<size_t>(names.size()));
        for (const QString& name : names)
            m_rows.push_back({name, static_cast<int>(m_rows.size()), false, NoFileTime});
        endInsertRows();
    }
    sort(m_sortColumn, m_sortOrder);
    Q_EMIT loaded();
}

void FileListModel::clear() {
    drop(m_reading);
    drop(m_timing);
    m_names.reset();
    m_times.reset();
    m_isSlow = false;
    removeAll();
    m_folder.clear();
}

void FileListModel::removeAll() {
    if (m_rows.empty())
        return;
    beginRemoveRows({}, 0, static_cast<int>(m_rows.size()) - 1);
    m_rows.clear();
    endRemoveRows();
}

void FileListModel::setModifiedShown(bool on) {
    if (on == m_modifiedShown)
        return;
    if (on) {
        beginInsertColumns({}, ModifiedColumn, ModifiedColumn);
        m_modifiedShown = true;
        endInsertColumns();
    } else {
        beginRemoveColumns({}, ModifiedColumn, ModifiedColumn);
        m_modifiedShown = false;
        endRemoveColumns();
        if (m_sortColumn == ModifiedColumn)
            sort(NameColumn, Qt::AscendingOrder);
    }
}

void FileListModel::setSystemIcons(bool on) {
    m_systemIcons = on;
    if (!m_rows.empty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::DecorationRole});
}

QString FileListModel::pathOf(int row) const {
    return row < 0 || row >= rowCount() ? QString() : pathIn(m_folder, m_rows[static_cast<size_t>(row)].name);
}

int FileListModel::rowOf(const QString& path) const {
    const QString name = FileNameOf(path);
    const auto found = std::ranges::find(m_rows, name, &Row::name);
    return found == m_rows.end() || pathIn(m_folder, name) != path ? -1 : static_cast<int>(found - m_rows.begin());
}

void FileListModel::removeFiles(const QStringList& paths) {
    const QSet<QString> gone(paths.begin(), paths.end());
    const auto isLeft = [&](const Row& row) { return !gone.contains(pathIn(m_folder, row.name)); };
    if (std::ranges::all_of(m_rows, isLeft))
        return;
    // To the end first, so that they are removed at once and not one by one.
    qsizetype left = 0;
    rearrange([&] { left = std::stable_partition(m_rows.begin(), m_rows.end(), isLeft) - m_rows.begin(); });
    beginRemoveRows({}, static_cast<int>(left), rowCount() - 1);
    m_rows.resize(static_cast<size_t>(left));
    endRemoveRows();
}

int FileListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int FileListModel::columnCount(const QModelIndex& parent) const {
    if (parent.isValid())
        return 0;
    return m_modifiedShown ? 2 : 1;
}

QVariant FileListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const Row& row = m_rows[static_cast<size_t>(index.row())];
    if (role == Qt::DisplayRole)
        return cell(index);
    if (role == KeyRole || role == Qt::ToolTipRole)
        return pathIn(m_folder, row.name);
    if (role == Qt::DecorationRole && index.column() == NameColumn)
        return m_systemIcons ? SystemIcons::ofFile(row.name) : m_fixedIcon;
    return {};
}

QVariant FileListModel::cell(const QModelIndex& index) const {
    if (index.column() == NameColumn)
        return m_rows[static_cast<size_t>(index.row())].name;
    const Row& row = timed(index.row());
    return row.isTimeKnown ? modifiedText(row.modified) : QString();
}

QVariant FileListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount())
        return {};
    if (role == Qt::DisplayRole)
        return QString::fromLatin1(Columns[section].title);
    if (role == TagRole)
        return static_cast<int>(Columns[section].type);
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter));
    return {};
}

Qt::ItemFlags FileListModel::flags(const QModelIndex& index) const {
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled : Qt::NoItemFlags;
}

QStringList FileListModel::mimeTypes() const {
    return {u"text/uri-list"_qs};
}

QMimeData* FileListModel::mimeData(const QModelIndexList& indexes) const {
    QList<QUrl> urls;
    for (const QModelIndex& index : indexes) {
        if (index.column() == NameColumn)
            urls.append(QUrl::fromLocalFile(pathOf(index.row())));
    }
    auto* data = new QMimeData;
    data->setUrls(urls);
    return data;
}

void FileListModel::sort(int column, Qt::SortOrder order) {
    m_sortColumn = column;
    m_sortOrder = order;
    if (column == ModifiedColumn && !areTimesKnown())
        readAllTimes();
    else
        arrange();
}

bool FileListModel::areTimesKnown() const {
    return std::ranges::all_of(m_rows, &Row::isTimeKnown);
}

void FileListModel::readAllTimes() {
    drop(m_timing);
    m_times = std::make_shared<Timing>();
    for (const Row& row : m_rows) {
        m_times->names.append(row.name);
        m_times->places.append(row.place);
    }
    m_timing = std::make_unique<BackgroundWork>(
        [disk = m_disk, folder = m_folder, times = m_times](const std::atomic<bool>& cancelled) {
            times->times = disk->writeTimes(folder, times->names, cancelled);
        });
    if (m_timing->waitFor(BackgroundWork::Still))
        takeTimes();
    else
        connect(m_timing.get(), &BackgroundWork::finished, this, &FileListModel::takeTimes);
}

void FileListModel::takeTimes() {
    drop(m_timing);
    const std::shared_ptr<Timing> read = std::exchange(m_times, nullptr);
    // Rows may have been taken out or moved meanwhile.
    QHash<int, qint64> byPlace;
    byPlace.reserve(read->places.size());
    for (qsizetype at = 0; at < read->places.size(); ++at)
        byPlace.insert(read->places.at(at), read->times.at(at));
    for (Row& row : m_rows) {
        row.modified = byPlace.value(row.place, NoFileTime);
        row.isTimeKnown = true;
    }
    arrange();
    if (m_modifiedShown && !m_rows.empty())
        Q_EMIT dataChanged(index(0, ModifiedColumn), index(rowCount() - 1, ModifiedColumn), {Qt::DisplayRole});
}

void FileListModel::arrange() {
    if (m_sortColumn == NameColumn)
        reorder([](const Row& one, const Row& other) { return one.place < other.place; });
    else
        reorder([](const Row& one, const Row& other) { return one.modified < other.modified; });
}

void FileListModel::reorder(const std::function<bool(const Row&, const Row&)>& isBefore) {
    const auto isBeforeInOrder = [&](const Row& one, const Row& other) {
        return m_sortOrder == Qt::AscendingOrder ? isBefore(one, other) : isBefore(other, one);
    };
    if (!std::ranges::is_sorted(m_rows, isBeforeInOrder))
        rearrange([&] { std::ranges::stable_sort(m_rows, isBeforeInOrder); });
}

void FileListModel::rearrange(const std::function<void()>& move) {
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    QList<int> places;
    for (const QModelIndex& index : before)
        places.append(m_rows[static_cast<size_t>(index.row())].place);
    move();
    QHash<int, int> rowByPlace;
    for (size_t row = 0; !before.isEmpty() && row < m_rows.size(); ++row)
        rowByPlace.insert(m_rows[row].place, static_cast<int>(row));
    QModelIndexList after;
    for (qsizetype at = 0; at < before.size(); ++at)
        after.append(index(rowByPlace.value(places.at(at)), before.at(at).column()));
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

const FileListModel::Row& FileListModel::timed(int row) const {
    if (!m_rows[static_cast<size_t>(row)].isTimeKnown && !m_isSlow)
        readTimesAround(row);
    return m_rows[static_cast<size_t>(row)];
}

void FileListModel::readTimesAround(int row) const {
    const auto first = static_cast<size_t>(row) / RowsAtOnce * RowsAtOnce;
    const size_t end = std::min(first + RowsAtOnce, m_rows.size());
    const auto read = std::make_shared<Timing>();
    for (size_t at = first; at < end; ++at)
        read->names.append(m_rows[at].name);
    const BackgroundWork work([disk = m_disk, folder = m_folder, read](const std::atomic<bool>& cancelled) {
        read->times = disk->writeTimes(folder, read->names, cancelled);
    });
    m_isSlow = !work.waitFor(BackgroundWork::Still);
    for (size_t at = first; !m_isSlow && at < end; ++at) {
        m_rows[at].modified = read->times.at(static_cast<qsizetype>(at - first));
        m_rows[at].isTimeKnown = true;
    }
}
