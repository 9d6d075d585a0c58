#pragma once

#include "workspace/host/WorkspaceServices.h"
#include "workspace/lists/SortedRows.h"

#include <QModelIndex>
#include <QPointer>
#include <QWidget>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>

class Disk;
class FileListModel;
class FileListView;
class FolderPlaces;
class FolderSplitter;
class FolderTree;
class FolderTreeView;
class QAction;
class QMenu;
struct SystemError;

/// The file explorer tab of the side panel: a tree of volumes and folders, and below it the files of the selected
/// folder. Owned by the panel. Runs the event loop while a disk does not answer at once, and while it asks. It fills
/// its tree when it is first shown, unless that was done before.
class ucFileExplorer : public QWidget {
    Q_OBJECT
    /// Icons of the files' types in the list, instead of one for all.
    Q_PROPERTY(bool DefaultSysIcon READ hasDefaultSysIcon WRITE setDefaultSysIcon)

 public:
    explicit ucFileExplorer(const WorkspaceServices& services, QWidget* parent = nullptr);
    ucFileExplorer(const WorkspaceServices& services, std::shared_ptr<const Disk> disk, QWidget* parent);
    ~ucFileExplorer() override;

    /// The key of the selected node, empty without one.
    Q_INVOKABLE QString selectedKey() const;
    bool hasDefaultSysIcon() const;
    void setDefaultSysIcon(bool on);

 public Q_SLOTS:
    /// Fills the tree, and selects the folder of the last run where the settings want that.
    void InitObjects();
    /// The lists of favourite and recent folders, from their files. The constructor has read them.
    void LoadFavorites();
    void LoadRecent();
    void RefreshView();
    /// Opens the tree down to a folder tree key and selects it.
    void GotoPath(const QString& pKey);
    /// The same for the folder of a file.
    void GotoFilePath(const QString& pFile);
    void OpenSelectedFiles();
    void DeleteSelectedFiles();
    void ClearFileExplorer();
    void mySetFocus();
    void myLostFocus();

 Q_SIGNALS:
    void openFile(const QString& path);
    /// `type` is "FILE" or "FOLDER"; `name` is the path of a file or a folder tree key.
    void addToProject(const QString& name, const QString& type);
    /// A drag of rows out of the list.
    void dragStarted();
    void dragEnded();

 protected:
    void showEvent(QShowEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

 private:
    struct Entry;
    using FileWork = std::function<SystemError(const std::atomic<bool>& cancelled)>;

    void fillOnce();
    void buildList();
    void connectTree();
    void clickNode(const QModelIndex& index);
    void fillList(const QModelIndex& index);
    void refillList();
    void sortBy(int column);
    void restoreLayout();

    QString pathOfRow() const;
    QStringList selectedPaths() const;
    void openFiles(const QStringList& paths);
    std::optional<SystemError> run(FileWork work);
    void deleteFiles(const QStringList& paths);
    void selectLoaded();

    void buildMenus();
    QMenu* buildMenu(const QString& key);
    void addEntry(QMenu& menu, const Entry& entry);
    void showFolderMenu(const QPoint& place);
    void showFileMenu(const QPoint& place);
    void followState();

    void setAsRoot();
    void openFolder();
    void showFolderProperties();
    void showFileProperties();
    void flipModifiedDate();
    void addFolderToProject();
    void addFilesToProject();
    void addFavorite();
    void removeFavorite();
    void renameFile();
    void duplicateFile();
    void setFilter();
    void clearFilter();
    void applyFilter(const QString& filter);

    WorkspaceServices m_services;
    FolderSplitter* m_splitter;
    FolderTreeView* m_treeView;
    FileListView* m_list;
    FolderTree* m_tree;
    FileListModel* m_files;
    QMenu* m_folderMenu = nullptr;
    QMenu* m_fileMenu = nullptr;
    FolderPlaces* m_places = nullptr;
    SortDirections m_directions;
    QString m_filter;
    QString m_listed;      ///< the folder whose files are shown
    QString m_selectNext;  ///< the file to select once the list is loaded
    int m_nameWidth;       ///< of the column "Filename" beside "Modified", in pixels
    bool m_isInitialised = false;
    bool m_isBusy = false;  ///< files are being changed
};
