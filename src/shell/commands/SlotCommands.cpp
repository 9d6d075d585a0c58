#include "shell/commands/SlotCommands.h"

#include "document/frmDocument.h"
#include "shell/commands/MenuSlots.h"
#include "shell/commands/MenuText.h"
#include "shell/commands/ProjectCommands.h"
#include "shell/documents/ActiveDocument.h"
#include "shell/documents/DocumentOpening.h"
#include "shell/documents/MdiChildren.h"

#include <QAction>

namespace {

using Commands = SlotCommands;

constexpr SlotArray Arrays[] = {
    {"mnuRecentFiles", "mnuFiles", 0, 10, "Files(s)", &Commands::OpenRecentFile},
    {"mnuRecentWorkspace", "mnuWorkspaces", 0, 10, "Project(s)", &Commands::OpenRecentProject},
    {"mnuFavorites", "mnuFavoriteProject", 1, 30, "", &Commands::OpenFavorite},
    {"mnuMacro", "mnuExecMacro", 0, 10, "Macro(s)", &Commands::ExecMacro},
    {"mnuWindow", "mnuOpenWindows", 0, 0, "-", &Commands::SelectOpenWindow},
};

}  // namespace

SlotCommands::SlotCommands(const MenuSlots& menuSlots, ProjectCommands& projects, MdiChildren& children,
                           ActiveDocument& active, DocumentOpening& opening)
    : m_menuSlots(menuSlots), m_projects(projects), m_children(children), m_active(active), m_opening(opening) {}

std::span<const SlotArray> SlotCommands::table() {
    return Arrays;
}

void SlotCommands::OpenRecentFile(int slot) {
    m_opening.OpenFile(MenuText::captionOf(*m_menuSlots.slot("mnuFiles", slot)), 0, true, true);
}

void SlotCommands::OpenRecentProject(int slot) {
    m_projects.OpenProject(MenuText::captionOf(*m_menuSlots.slot("mnuWorkspaces", slot)));
}

void SlotCommands::OpenFavorite(int slot) {
    m_projects.OpenProject(m_menuSlots.slot("mnuFavoriteProject", slot)->data().toString());
}

void SlotCommands::ExecMacro(int slot) {
    frmDocument* document = m_active.get();
    if (slot > 0 && document != nullptr)
        document->ExecMacro(slot);
}

void SlotCommands::SelectOpenWindow(int slot) {
    m_active.activate(m_children.byKey(m_menuSlots.slot("mnuOpenWindows", slot)->data().toString()));
}
