#pragma once

#include <QString>

/// Calls of the frame into rooms that are not built yet, each in its final place. Every one does nothing until its room
/// implements it and it is removed from this list.
class RoomsToCome {
 public:
    virtual ~RoomsToCome() = default;

    // Recent lists and the session.
    virtual void LoadRecentFiles() {}
    virtual void LoadRecentProjects() {}
    virtual void LoadFavProjects() {}
    virtual void SaveRecentFiles() {}
    virtual void SaveRecentProjects() {}
    virtual void SaveFavProjects() {}
    /// Adds a path at the top of the recent files.
    virtual void AddLRUFile(const QString&) {}
    virtual void RestoreSession() {}
    virtual void SaveSession() {}

    // Projects.
    virtual void OpenProject(const QString&) {}
    /// Asks for the project to open.
    virtual void AskProject() {}
    virtual void NewProject() {}
    virtual void CloseProject() {}
    virtual void SaveProject() {}
    virtual void SaveProjectAs() {}
    virtual void AddFavorite() {}
    virtual void DeleteFavorite() {}

    // Search across files: the dialogs, the first with a list of folders.
    virtual void ShowSearchInFiles(const QString&) {}
    virtual void ReplaceInFiles() {}

    // The side panel and the bottom panel, and their layout.
    virtual bool isExplorerVisible() { return false; }
    virtual bool isSearchPanelVisible() { return false; }
    virtual void ToggleExplorer() {}
    virtual void ToggleSearchPanel() {}
    virtual void resetSplitters() {}
    virtual void ArrangePanels() {}
    virtual void layOutSearchPanel() {}

    // Dialogs.
    virtual void ShowProperties() {}
    virtual void ShowAbout() {}
    /// Has the user choose the language of the program, and stores it.
    virtual void ChooseLanguage() {}

    // Things outside the program.
    virtual void OpenWindowsDirectory() {}
    virtual void OpenSystemDirectory() {}
    virtual void OpenDesktop() {}
    virtual void OpenMyDocuments() {}
    /// The desktop's properties of a file; without a path nothing is shown.
    virtual void ShowFileProperties(const QString&) {}
    virtual void ShowHelp() {}
    virtual void OpenWebSite() {}
    virtual void SendEmail() {}
};
