#pragma once

#include <span>

class ActiveDocument;
class DocumentOpening;
class MdiChildren;
class MenuSlots;
class ProjectCommands;
struct SlotArray;

/// The commands of the entries that are filled while the program runs; each function is passed the number of the slot.
/// Owned by the frame.
class SlotCommands {
 public:
    SlotCommands(const MenuSlots& menuSlots, ProjectCommands& projects, MdiChildren& children, ActiveDocument& active,
                 DocumentOpening& opening);

    /// The arrays of such entries.
    static std::span<const SlotArray> table();

    void OpenRecentFile(int slot);
    void OpenRecentProject(int slot);
    void OpenFavorite(int slot);
    void ExecMacro(int slot);
    void SelectOpenWindow(int slot);

 private:
    const MenuSlots& m_menuSlots;
    ProjectCommands& m_projects;
    MdiChildren& m_children;
    ActiveDocument& m_active;
    DocumentOpening& m_opening;
};
