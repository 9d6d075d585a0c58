#include "shell/session/KeptList.h"

#include "settings/files/OwnTextFile.h"

#include <algorithm>
#include <iterator>

constexpr KeptList::Kind KeptList::RecentFiles{.file = "lastfiles.idx", .rule = {.capacity = 10}};
constexpr KeptList::Kind KeptList::RecentProjects{.file = "lastprojects.idx", .rule = {.capacity = 10}};
constexpr KeptList::Kind KeptList::FavoriteProjects{
    .file = "favprojects.idx", .rule = {.capacity = 30}, .trimmed = true, .mostLines = 30, .anyLineCounts = false};

KeptList::KeptList(const Kind& kind, const QString& programFolder)
    : m_kind(kind), m_file(programFolder + u'/' + QLatin1String(kind.file)), m_list(kind.rule) {}

void KeptList::add(const QString& path) {
    if (take(path))
        Q_EMIT changed();
}

bool KeptList::take(const QString& path) {
    const QString added = named(path);
    if (m_kind.trimmed && added.isEmpty())
        return false;
    m_list.add(added);
    m_hasPlaceholder = false;
    return true;
}

void KeptList::remove(const QString& path) {
    const QString removed = named(path);
    if (m_kind.trimmed && removed.isEmpty())
        return;
    m_list.remove(removed);
    Q_EMIT changed();
}

void KeptList::load() {
    const QStringList lines =
        OwnTextFile::readLines(m_file, OwnTextFile::MostListBytes).value_or(QStringList()).mid(0, m_kind.mostLines);
    for (const QString& line : lines) {
        if (!line.isEmpty())
            take(line);
    }
    if (m_kind.anyLineCounts)
        m_hasPlaceholder = lines.isEmpty();
    Q_EMIT changed();
}

void KeptList::save() const {
    QStringList lines;
    std::ranges::copy_if(m_list.oldestFirst(), std::back_inserter(lines),
                         [](const QString& path) { return !path.isEmpty() && OwnTextFile::isOneField(path); });
    OwnTextFile::writeLines(m_file, lines);
}
