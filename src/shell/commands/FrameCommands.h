#pragma once

class FindBar;
class HelpPages;
class MacroMenu;
class QWidget;
class RoomsToCome;
class SearchToggles;
class frmDocument;
struct DocumentServices;

/// The commands that search, concern macros and languages, or open a tool, and what documents ask of the frame. Owned
/// by the frame; passes them on, and decides nothing.
class FrameCommands {
 public:
    /// `window` is the frame.
    FrameCommands(QWidget& window, const DocumentServices& services, const HelpPages& help, RoomsToCome& rooms,
                  FindBar& findBar, SearchToggles& searchToggles, MacroMenu& macroMenu);

    void FindNext();
    void FindPrevious();
    void FindInFiles();
    void ToggleWholeWord();
    void ToggleCase();
    void ToggleRegExp();
    void ToggleContinueSearch();

    void OrganizeLanguages();
    void OrganizeMacros();
    void ResetKey();
    void SaveMacros();

    void ShowAnsiTable();
    void ShowConvertor();
    void StartCalculator();

    /// From now on a new document gets what it asks for.
    void answerRequests(const frmDocument& document);

 private:
    QWidget& m_window;
    const DocumentServices& m_services;
    const HelpPages& m_help;
    RoomsToCome& m_rooms;
    FindBar& m_findBar;
    SearchToggles& m_searchToggles;
    MacroMenu& m_macroMenu;
};
