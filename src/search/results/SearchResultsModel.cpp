#include "search/results/SearchResultsModel.h"

#include "widgets/Icons.h"

#include <QFont>

#include <algorithm>
#include <iterator>
#include <utility>

/// A file with its matches.
struct SearchResultsModel::File {
    QString key;
    QString text;
    FileMatches matches;
    std::vector<bool> checkedMatches;  ///< empty when none is checked, else one for each match
    int row = 0;
    bool isChecked = false;

    int count() const { return static_cast<int>(matches.matches().size()); }
    bool isMatchChecked(int match) const {
        return !checkedMatches.empty() && checkedMatches[static_cast<std::size_t>(match)];
    }
    void checkMatch(int match, bool on) {
        checkedMatches.resize(matches.matches().size());
        checkedMatches[static_cast<std::size_t>(match)] = on;
    }
    void checkAllMatches(bool on) {
        checkedMatches.clear();
        if (on)
            checkedMatches.resize(matches.matches().size(), true);
    }
    bool isAnyMatchChecked() const { return std::ranges::find(checkedMatches, true) != checkedMatches.end(); }
};

namespace {

/// In front of the text of a match's line.
QString numberColumn(qint64 line) {
    constexpr int Columns = 4;
    return (u"     "_qs + QString::number(line)).right(Columns) + u" : "_qs;
}

QString tagOf(const FileMatches& matches, const FileMatches::Match& match) {
    return u"%1,%2,%3"_qs.arg(matches.lineNumber(match)).arg(match.start).arg(match.length);
}

/// Where a match stands in the text of its node.
struct Mark {
    int start = 0;
    int length = 0;
};

Mark markOf(const FileMatches& matches, const FileMatches::Match& match) {
    const qint64 kept = matches.lineText(match).size();
    if (match.column < 0 || match.column >= kept)
        return {};
    const qint64 length = std::min<qint64>(match.textLength, kept - match.column);
    const auto before = static_cast<int>(numberColumn(matches.lineNumber(match)).size());
    return {before + match.column, static_cast<int>(std::max<qint64>(length, 0))};
}

QVariant checkState(bool on) {
    return on ? Qt::Checked : Qt::Unchecked;
}

QFont boldFont() {
    QFont font;
    font.setBold(true);
    return font;
}

}  // namespace

SearchResultsModel::SearchResultsModel(QObject* parent)
    : QAbstractItemModel(parent), m_fileIcon(Icons::named("filetext")), m_matchIcon(Icons::named("matchline")) {
    connect(&m_nextRelease, &QTimer::timeout, this, &SearchResultsModel::releaseSome);
}

SearchResultsModel::~SearchResultsModel() = default;

void SearchResultsModel::addMatches(const QString& file, FileMatches matches) {
    if (file.isEmpty() || matches.empty())
        return;
    if (File* known = m_byKey.value(file))
        addTo(*known, matches);
    else
        addFile(file, std::move(matches));
}

void SearchResultsModel::addFile(const QString& path, FileMatches matches) {
    auto file = std::make_unique<File>();
    file->key = path;
    file->text = path;
    file->matches = std::move(matches);
    file->matches.squeeze();
    file->row = rowCount();
    beginInsertRows({}, file->row, file->row);
    m_byKey.insert(path, file.get());
    m_files.push_back(std::move(file));
    endInsertRows();
}

void SearchResultsModel::addTo(File& file, const FileMatches& matches) {
    const int before = file.count();
    beginInsertRows(indexOf(file), before, before + static_cast<int>(matches.matches().size()) - 1);
    file.matches.append(matches);
    if (!file.checkedMatches.empty())
        file.checkedMatches.resize(file.matches.matches().size());
    endInsertRows();
}

void SearchResultsModel::setText(const QString& key, const QString& text) {
    File* file = m_byKey.value(key);
    if (file == nullptr)
        return;
    file->text = text;
    const QModelIndex index = indexOf(*file);
    Q_EMIT dataChanged(index, index, {Qt::DisplayRole});
}

void SearchResultsModel::clear() {
    if (m_files.empty())
        return;
    beginResetModel();
    releaseLater(std::exchange(m_files, {}));
    m_byKey.clear();
    endResetModel();
}

void SearchResultsModel::checkAll(bool on) {
    if (m_files.empty())
        return;
    for (const auto& file : m_files) {
        file->isChecked = on;
        file->checkAllMatches(on);
        const QModelIndex above = indexOf(*file);
        Q_EMIT dataChanged(index(0, 0, above), index(file->count() - 1, 0, above), {Qt::CheckStateRole});
    }
    Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::CheckStateRole});
}

bool SearchResultsModel::isAnyChecked() const {
    return std::ranges::any_of(m_files, [](const auto& file) { return file->isChecked || file->isAnyMatchChecked(); });
}

void SearchResultsModel::removeChecked() {
    if (!isAnyChecked())
        return;
    Q_EMIT layoutAboutToBeChanged();
    const std::vector<int> rows = rowsAfterRemoval();
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex& each : before)
        after.append(afterRemoval(each, rows));
    releaseLater(takeChecked());
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged();
}

/// By the row of a file: the row that it will have; -1: it will be removed.
std::vector<int> SearchResultsModel::rowsAfterRemoval() const {
    std::vector<int> rows;
    rows.reserve(m_files.size());
    int next = 0;
    for (const auto& file : m_files)
        rows.push_back(file->isChecked ? -1 : next++);
    return rows;
}

QModelIndex SearchResultsModel::afterRemoval(const QModelIndex& index, const std::vector<int>& rows) const {
    File* file = fileOfMatch(index);
    const int fileRow = rows[static_cast<std::size_t>(file == nullptr ? index.row() : file->row)];
    if (fileRow < 0 || isChecked(index))
        return {};
    if (file == nullptr)
        return indexOfFile(fileRow);
    int row = index.row();
    for (int above = 0; above < index.row(); ++above)
        row -= file->isMatchChecked(above) ? 1 : 0;
    return createIndex(row, 0, file);
}

/// The records of the removed files.
SearchResultsModel::Files SearchResultsModel::takeChecked() {
    Files gone;
    Files kept;
    for (auto& file : m_files) {
        if (file->isChecked) {
            m_byKey.remove(file->key);
            gone.push_back(std::move(file));
            continue;
        }
        if (file->isAnyMatchChecked())
            file->matches.remove(file->checkedMatches);
        file->checkedMatches = {};
        file->row = static_cast<int>(kept.size());
        kept.push_back(std::move(file));
    }
    m_files = std::move(kept);
    return gone;
}

/// Views hold indexes of the records until they have been notified, and the release of a hundred thousand of them takes
/// as long as all else in a removal.
void SearchResultsModel::releaseLater(Files files) {
    std::ranges::move(files, std::back_inserter(m_removed));
    m_nextRelease.start(0);
}

void SearchResultsModel::releaseSome() {
    constexpr std::size_t Portion = 2'000;
    if (m_removed.size() > Portion) {
        m_removed.resize(m_removed.size() - Portion);
        return;
    }
    m_removed = Files();
    m_nextRelease.stop();
}

QModelIndex SearchResultsModel::neighbourToRemain(const QModelIndex& index) const {
    if (!index.isValid())
        return {};
    const QModelIndex above = index.parent();
    if (above.isValid() && isChecked(above))
        return neighbourToRemain(above);
    for (int row = index.row(); row < rowCount(above); ++row) {
        if (const QModelIndex below = this->index(row, 0, above); !isChecked(below))
            return below;
    }
    for (int row = index.row() - 1; row >= 0; --row) {
        if (const QModelIndex before = this->index(row, 0, above); !isChecked(before))
            return before;
    }
    return above;
}

QModelIndex SearchResultsModel::find(const QString& key) const {
    const File* file = m_byKey.value(key);
    return file == nullptr ? QModelIndex() : indexOf(*file);
}

QModelIndex SearchResultsModel::findName(const QString& beginning, int fromRow) const {
    const int rows = rowCount();
    fromRow = std::max(fromRow, 0);
    for (int step = 0; step < rows; ++step) {
        const File& file = *m_files[static_cast<std::size_t>((fromRow + step) % rows)];
        const QStringView path = file.key;
        if (path.mid(path.lastIndexOf(u'/') + 1).startsWith(beginning, Qt::CaseInsensitive))
            return indexOf(file);
    }
    return {};
}

QModelIndex SearchResultsModel::indexOf(const File& file) const {
    return indexOfFile(file.row);
}

QModelIndex SearchResultsModel::index(int row, int column, const QModelIndex& parent) const {
    if (row < 0 || column != 0 || row >= rowCount(parent))
        return {};
    if (!parent.isValid())
        return indexOfFile(row);
    return createIndex(row, column, m_files[static_cast<std::size_t>(parent.row())].get());
}

QModelIndex SearchResultsModel::parent(const QModelIndex& index) const {
    return isMatch(index) ? indexOf(*fileOfMatch(index)) : QModelIndex();
}

int SearchResultsModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid())
        return static_cast<int>(m_files.size());
    return isMatch(parent) ? 0 : m_files[static_cast<std::size_t>(parent.row())]->count();
}

int SearchResultsModel::columnCount(const QModelIndex&) const {
    return 1;
}

Qt::ItemFlags SearchResultsModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    constexpr Qt::ItemFlags Both = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable;
    return isMatch(index) ? Both | Qt::ItemNeverHasChildren : Both;
}

QVariant SearchResultsModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount(parent(index)))
        return {};
    if (isMatch(index))
        return matchData(*fileOfMatch(index), index.row(), role);
    return fileData(*m_files[static_cast<std::size_t>(index.row())], role);
}

QVariant SearchResultsModel::fileData(const File& file, int role) const {
    static const QFont bold = boldFont();
    switch (role) {
        case Qt::DisplayRole:
            return file.text;
        case Qt::CheckStateRole:
            return checkState(file.isChecked);
        case Qt::DecorationRole:
            return m_fileIcon;
        case Qt::FontRole:
            return bold;
        case Qt::ToolTipRole:
        case Key:
            return file.key;
        case Image:
            return FileImage;
        default:
            return {};
    }
}

QVariant SearchResultsModel::matchData(const File& file, int row, int role) const {
    const FileMatches::Match& match = file.matches.matches()[static_cast<std::size_t>(row)];
    switch (role) {
        case Qt::DisplayRole:
            return QString(numberColumn(file.matches.lineNumber(match)) + file.matches.lineText(match));
        case Qt::CheckStateRole:
            return checkState(file.isMatchChecked(row));
        case Qt::DecorationRole:
            return m_matchIcon;
        case Tag:
            return tagOf(file.matches, match);
        case Image:
            return MatchImage;
        case MarkStart:
            return markOf(file.matches, match).start;
        case MarkLength:
            return markOf(file.matches, match).length;
        default:
            return {};
    }
}

bool SearchResultsModel::isChecked(const QModelIndex& index) const {
    const File* file = fileOfMatch(index);
    return file == nullptr ? m_files[static_cast<std::size_t>(index.row())]->isChecked
                           : file->isMatchChecked(index.row());
}

bool SearchResultsModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !index.isValid())
        return false;
    const bool on = value.toInt() == Qt::Checked;
    if (File* file = fileOfMatch(index))
        file->checkMatch(index.row(), on);
    else
        m_files[static_cast<std::size_t>(index.row())]->isChecked = on;
    Q_EMIT dataChanged(index, index, {role});
    return true;
}
