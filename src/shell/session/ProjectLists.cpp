#include "shell/session/ProjectLists.h"

#include "platform/Paths.h"

ProjectLists::ProjectLists(const QString& programFolder)
    : m_recent(KeptList::RecentProjects, programFolder), m_favorites(KeptList::FavoriteProjects, programFolder) {}

QString ProjectDisplayName(const QString& pFile) {
    static const QString suffix = u".QMP"_qs;
    const QString name = FileNameOf(pFile);
    return name.right(suffix.size()).toUpper() == suffix ? name.chopped(suffix.size()) : name;
}
