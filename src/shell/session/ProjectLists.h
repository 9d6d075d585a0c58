#pragma once

#include "shell/session/KeptList.h"

/// The projects opened lately, and those that the user keeps as favourites. Owned by the frame.
class ProjectLists {
 public:
    explicit ProjectLists(const QString& programFolder);

    KeptList& recent() { return m_recent; }
    KeptList& favorites() { return m_favorites; }

    void AddLRUProject(const QString& pFile) { m_recent.add(pFile); }
    /// Moves a favourite to the top of its list. A blank path is ignored.
    void AddFavProject(const QString& pFile) { m_favorites.add(pFile); }
    /// When the list is full, its last project then stands twice.
    void DeleteFavProject(const QString& pFile) { m_favorites.remove(pFile); }

 private:
    KeptList m_recent;
    KeptList m_favorites;
};

/// Name of a project that was not saved yet, in place of its path.
inline constexpr QLatin1String NewProjectName("[New Project]");

/// The name of the file without ".qmp", in any letter case, at its end; empty for an empty path.
QString ProjectDisplayName(const QString& pFile);
