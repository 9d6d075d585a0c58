#pragma once

#include <QObject>

class CommandEntries;
class KeptList;
class MenuSlots;
class ProjectLists;
class QAction;

/// Shows the recent files, the recent projects and the favourites in the slots of their menus. Owned by the frame; the
/// lists outlive it.
class ListMenus : public QObject {
    Q_OBJECT

 public:
    ListMenus(const CommandEntries& entries, const MenuSlots& menuSlots, const KeptList& recentFiles,
              ProjectLists& projects);

 private:
    /// Sets caption and tag of a slot to those of a path.
    using Fill = void (*)(QAction& slot, const QString& path);

    void keepShown(const char* array, QAction& placeholder, const KeptList& list, Fill fill);
    void show(const char* array, const KeptList& list, Fill fill);

    const MenuSlots& m_menuSlots;
};
