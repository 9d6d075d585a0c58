#pragma once

class FindBar;
class HelpPages;
class MacroMenu;
class ProgramProperties;
class QString;
class QWidget;
class RegistryStore;
class SearchToggles;
class frmDocument;
struct DocumentServices;

/// The commands that search, use macros and languages, or open a form, and the requests of documents to the frame.
/// Owned by the frame; forwards the calls and decides nothing.
class FrameCommands {
 public:
    /// `window` is the frame.
    FrameCommands(QWidget& window, const DocumentServices& services, const HelpPages& help, RegistryStore& registry,
                  FindBar& findBar, SearchToggles& searchToggles, MacroMenu& macroMenu, ProgramProperties& properties);

    void FindNext();
    void FindPrevious();
    void ToggleWholeWord();
    void ToggleCase();
    void ToggleRegExp();
    void ToggleContinueSearch();

    /// The page set-up of all texts; a document need not be open.
    void SetUpPage();
    /// Has no behaviour yet but its message; its entry is not shown.
    void PreviewPrint();
    /// The settings of the program.
    void ShowProperties();
    void OrganizeLanguages();
    void OrganizeMacros();
    void ResetKey();
    void SaveMacros();

    void ShowAnsiTable();
    void ShowConvertor();

    /// From now on the requests of a new document are handled.
    void answerRequests(const frmDocument& document);

 private:
    /// Of a file; a document without a file has none.
    void showFileProperties(const QString& path);

    QWidget& m_window;
    const DocumentServices& m_services;
    const HelpPages& m_help;
    RegistryStore& m_registry;
    FindBar& m_findBar;
    SearchToggles& m_searchToggles;
    MacroMenu& m_macroMenu;
    ProgramProperties& m_properties;
};
