#pragma once

#include "workspace/host/WorkspaceServices.h"
#include "workspace/project/ProjectItems.h"

#include <QWidget>

class QMenu;
class QTreeView;

/// The project tab of the side panel: a flat list of the files and folders of the project. A double-click or Enter
/// opens a row, Delete removes it after a question. Owned by the panel.
class ucProject : public QWidget {
    Q_OBJECT

 public:
    explicit ucProject(const WorkspaceServices& services, QWidget* parent = nullptr);
    ~ucProject() override;

    /// Adds a row. `pType` is "FILE" or "FOLDER" in any letter case; `pName` is the path of a file or a folder tree
    /// key. A key that is there already gives a message.
    void AddProjectItem(const QString& pName, const QString& pType);
    /// Counted from 1; both texts are empty when there is no such row.
    void PjtItem(int pIndex, QString& pName, QString& pType) const;
    int PjtItemCount() const;
    void ClearProject();
    /// Icons of the files' types in rows that are added from now on.
    void setDefaultSysIcon(bool on);

 signals:
    void openFile(const QString& path);
    /// By folder tree key.
    void gotoFolder(const QString& key);
    void gotoFile(const QString& path);

 private:
    struct MenuEntry;
    static const MenuEntry MenuEntries[];

    void buildMenu();
    void showMenu(const QPoint& globalPosition);
    /// Calls the command with the selected row; without one only the command that needs none runs.
    void run(void (ucProject::*command)(int row));

    void open(int row);
    void gotoPath(int row);
    void openFolder(int row);
    void removeRow(int row);
    void removeAll(int row);

    WorkspaceServices m_services;
    ProjectItems m_items;
    QTreeView* m_list;
    QMenu* m_menu;
};
