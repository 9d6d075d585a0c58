#pragma once

#include "workspace/host/WorkspaceServices.h"

#include <QWidget>

/// The file explorer tab of the side panel: a tree of volumes and folders, and below it the files of the selected
/// folder. Owned by the panel. Runs the event loop while it reads volumes and folders.
class ucFileExplorer : public QWidget {
    Q_OBJECT

 public:
    explicit ucFileExplorer(const WorkspaceServices& services, QWidget* parent = nullptr);
    ~ucFileExplorer() override;

    /// Fills the tree, and selects the folder of the last run where the settings want that.
    void InitObjects();
    /// The lists of favourite and recent folders, from their files.
    void LoadFavorites();
    void LoadRecent();
    void RefreshView();
    /// Opens the tree down to a folder tree key and selects it.
    void GotoPath(const QString& pKey);
    /// The same for the folder of a file.
    void GotoFilePath(const QString& pFile);
    void OpenSelectedFiles();
    void DeleteSelectedFiles();
    /// The key of the selected node, empty without one.
    QString selectedKey() const;
    void ClearFileExplorer();
    void mySetFocus();
    void myLostFocus();
    /// Icons of the files' types in the list.
    void setDefaultSysIcon(bool on);

 signals:
    void openFile(const QString& path);
    /// `type` is "FILE" or "FOLDER"; `name` is the path of a file or a folder tree key.
    void addToProject(const QString& name, const QString& type);
    /// A drag of rows out of the list.
    void dragStarted();
    void dragEnded();

 private:
    WorkspaceServices m_services;
};
