#pragma once

#include "workspace/host/WorkspaceServices.h"
#include "workspace/panel/BandPlaces.h"
#include "workspace/panel/PanelLink.h"

#include <QWidget>

class BandArea;
class QAction;
class QToolBar;
class ucFileExplorer;
class ucOpen;
class ucProject;

/// The side panel: three tabs stacked on top of each other, each a band with a title, and a tool bar with a button for
/// each tab that is closed. The one connection between the frame and the tabs: forwards calls to them, and their events
/// to the host. Owned by the frame's window. What reads folders runs the event loop.
class ucExplorer : public QWidget, public PanelLink {
    Q_OBJECT
    Q_PROPERTY(int TabCount READ TabCount CONSTANT)
    Q_PROPERTY(int Busy READ busyNumber)
    Q_PROPERTY(bool Initialised READ Initialised)
    Q_PROPERTY(bool DefaultSysIcon READ DefaultSysIcon WRITE setDefaultSysIcon)

 public:
    explicit ucExplorer(const WorkspaceServices& services, QWidget* parent = nullptr);
    ~ucExplorer() override;

    static int TabCount() { return BandPlaces::TabCount; }
    bool Initialised() const { return m_initialised; }
    bool DefaultSysIcon() const { return m_systemIcons; }
    bool isTabOpen(int pTab) const;

    QWidget* widget() override { return this; }
    Q_INVOKABLE void InitObjects() override;
    Q_INVOKABLE void AddFile(const QString& caption, const QString& key) override;
    Q_INVOKABLE void SetFile(const QString& file, const QString& key, int image) override;
    Q_INVOKABLE void RemoveFile(const QString& key) override;
    Q_INVOKABLE void FileSelected(const QString& key) override;
    bool Busy() const override { return m_busy; }
    Q_INVOKABLE void OpenSelectedFiles() override;
    void setDefaultSysIcon(bool on) override;

    Q_INVOKABLE void OpenTab(int pTab) override;
    Q_INVOKABLE void CloseTab(int pTab) override;
    Q_INVOKABLE void OpenAllTabs(bool pOpen = true) override;
    /// One tab from a line of index, "True" or "False", and top, with tabs between them.
    Q_INVOKABLE void SetTab(const QString& pLine);
    /// Shows the bands, their contents and the buttons after any change.
    Q_INVOKABLE void ResizeBar();
    Q_INVOKABLE void ClearExplorer() override;
    Q_INVOKABLE void SetProjectName(const QString& pPath, const QString& pName) override;
    Q_INVOKABLE void AddProjectItem(const QString& pName, const QString& pType) override;
    void PjtItem(int pIndex, QString& pName, QString& pType) const override;
    Q_INVOKABLE int PjtItemCount() const override;
    Q_INVOKABLE void GotoPath(const QString& pKey) override;
    Q_INVOKABLE QStringList SaveItem(bool pIsProject = true) const override;
    Q_INVOKABLE void RestoreItem(const QString& pLine) override;

 protected:
    void focusInEvent(QFocusEvent* event) override;

 private:
    enum Tab { Project, Files, Open };

    int busyNumber() const { return m_busy ? 1 : 0; }
    void connectButtons();
    QAction* buttonOf(int tab) const;
    void connectTabs();
    void openAndEnter(int tab);
    void keepKeyboard();
    void enterToolBar();
    void enlarge(int tab);
    void gotoFilePath(const QString& path);
    void showFiles();
    void setBusy(bool busy);

    WorkspaceServices m_services;
    QToolBar& m_toolBar;
    BandArea& m_area;
    ucProject& m_project;
    ucFileExplorer& m_files;
    ucOpen& m_open;
    bool m_initialised = false;
    bool m_busy = false;
    bool m_systemIcons = false;
};
