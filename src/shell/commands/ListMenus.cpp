#include "shell/commands/ListMenus.h"

#include "shell/commands/CommandEntries.h"
#include "shell/commands/MenuSlots.h"
#include "shell/commands/MenuText.h"
#include "shell/session/KeptList.h"
#include "shell/session/ProjectLists.h"

#include <QAction>

namespace {

void fillPath(QAction& slot, const QString& path) {
    MenuText::setCaption(slot, path);
}

void fillProject(QAction& slot, const QString& path) {
    MenuText::setCaption(slot, ProjectDisplayName(path));
    slot.setData(path);
}

}  // namespace

ListMenus::ListMenus(const CommandEntries& entries, const MenuSlots& menuSlots, const KeptList& recentFiles,
                     ProjectLists& projects)
    : m_menuSlots(menuSlots) {
    keepShown("mnuFiles", *menuSlots.slot("mnuFiles", 0), recentFiles, fillPath);
    keepShown("mnuWorkspaces", *menuSlots.slot("mnuWorkspaces", 0), projects.recent(), fillPath);
    keepShown("mnuFavoriteProject", *entries.entry("mnuProjects"), projects.favorites(), fillProject);
}

void ListMenus::keepShown(const char* array, QAction& placeholder, const KeptList& list, Fill fill) {
    connect(&list, &KeptList::changed, this, [this, array, &placeholder, &list, fill] {
        show(array, list, fill);
        placeholder.setVisible(list.hasPlaceholder());
    });
}

void ListMenus::show(const char* array, const KeptList& list, Fill fill) {
    const QStringList& paths = list.paths();
    for (int number = 1; number <= list.capacity(); ++number) {
        QAction& slot = *m_menuSlots.slot(array, number);
        const bool isInUse = number <= paths.size();
        if (isInUse)
            fill(slot, paths.at(number - 1));
        slot.setVisible(isInUse);
    }
}
