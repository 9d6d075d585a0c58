#pragma once

#include <QString>

class frmDocument;

/// Calls of the frame into rooms that are not built yet, each in its final place. Every one does nothing until its room
/// takes it over and it leaves this list.
class RoomsToCome {
 public:
    virtual ~RoomsToCome() = default;

    // The control's global object: macros, hot keys, language colours.
    virtual void createEditorGlobals() {}
    /// Every "N.dem" of the macros folder into slot N.
    virtual void loadMacroFiles() {}
    /// Makes the macros folder when it is missing and writes the slots.
    virtual void saveMacroFiles() {}
    virtual void PropertiesLoad() {}
    virtual void PropertiesSave() {}
    /// The macro menu from hot keys and stored names.
    virtual void UpdateMacroMenu() {}

    // The language table.
    virtual void loadLanguages() {}
    virtual void LoadLanguageMenu() {}
    /// Marks the document's language in the language menu.
    virtual void CheckLangMenu(frmDocument*) {}
    /// Gives a document without a language the frame's default one.
    virtual void setDefaultLanguage(frmDocument*) {}

    // Recent lists and the session.
    virtual void LoadRecentFiles() {}
    virtual void LoadRecentProjects() {}
    virtual void LoadFavProjects() {}
    virtual void LoadSearchKeys() {}
    virtual void SaveRecentFiles() {}
    virtual void SaveRecentProjects() {}
    virtual void SaveFavProjects() {}
    virtual void SaveSearchKeys() {}
    /// Puts a path on top of the recent files.
    virtual void AddLRUFile(const QString&) {}
    virtual void RestoreSession() {}
    virtual void SaveSession() {}

    // Projects.
    virtual void OpenProject(const QString&) {}
    virtual void SetProjectMenus() {}

    // The find in files dialog with a list of folders.
    virtual void ShowSearchInFiles(const QString&) {}

    // The find box in the tool bar and the layout of the two panels.
    virtual void placeSearchBox() {}
    virtual void resetSplitters() {}
    virtual void ArrangePanels() {}
    virtual void layOutSearchPanel() {}
};
