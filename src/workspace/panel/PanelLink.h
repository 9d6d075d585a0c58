#pragma once

#include <QString>
#include <QStringList>

class QWidget;

/// What the side panel offers to the frame. Documents are identified by their key. Owned by the frame's window.
class PanelLink {
 public:
    virtual ~PanelLink() = default;

    /// What the window shows of it; may be null.
    virtual QWidget* widget() = 0;

    /// First call only: shows the list of open files.
    virtual void InitObjects() = 0;
    /// A document was created.
    virtual void AddFile(const QString& caption, const QString& key) = 0;
    /// Its file or state changed; `image` is that of its tab. An empty file leaves the row's text unchanged.
    virtual void SetFile(const QString& file, const QString& key, int image) = 0;
    virtual void RemoveFile(const QString& key) = 0;
    /// The document was chosen by its tab.
    virtual void FileSelected(const QString& key) = 0;

    /// A drag of rows out of the panel's own file list is under way.
    virtual bool Busy() const = 0;
    virtual void OpenSelectedFiles() = 0;
    /// Icons of the files' types in the lists.
    virtual void setDefaultSysIcon(bool on) = 0;

    // Tabs by index: 0 project, 1 file explorer, 2 open files. Another index does nothing.
    virtual void OpenTab(int pTab) = 0;
    virtual void CloseTab(int pTab) = 0;
    /// Opens every tab, whatever the flag, each with a third of the height.
    virtual void OpenAllTabs(bool pOpen = true) = 0;
    /// Empties all tabs. Runs the event loop.
    virtual void ClearExplorer() = 0;

    /// Title and tool tip of the project's tab.
    virtual void SetProjectName(const QString& pPath, const QString& pName) = 0;
    /// `pType` is "FILE" or "FOLDER".
    virtual void AddProjectItem(const QString& pName, const QString& pType) = 0;
    /// Counted from 1; both texts are empty when there is no such row.
    virtual void PjtItem(int pIndex, QString& pName, QString& pType) const = 0;
    virtual int PjtItemCount() const = 0;

    /// Selects a folder by its folder tree key, and opens the tab for that. Runs the event loop.
    virtual void GotoPath(const QString& pKey) = 0;
    /// The lines of a project file for the panel: its items (with `pIsProject`), the selected folder, the tabs.
    virtual QStringList SaveItem(bool pIsProject = true) const = 0;
    /// Open flags and tops of the tabs, from the last of these lines.
    virtual void RestoreItem(const QString& pLine) = 0;
};
