#pragma once

class DocumentClosing;
class DocumentOpening;
class DocumentSaving;
struct FrameParts;

/// The procedures of the frame that commands aim at: each works on the active document or on the frame. Owned by the
/// frame; forwards, and decides nothing.
class FrameCommands {
 public:
    FrameCommands(FrameParts& parts, DocumentOpening& files, DocumentSaving& saving, DocumentClosing& closing);

    void New();
    void Open();
    void Close();
    void CloseAll();
    void CloseExcept();
    void Save();
    void SaveAs();
    void SaveAnsi();
    void SaveUtf8();
    void SaveUnicode();
    void SaveNoBom();
    void SaveAll();
    void Exit();

    void ChangeReadOnly();
    void FindNext();
    void FindPrevious();
    void FindInFiles();
    void ToggleWholeWord();
    void ToggleCase();
    void ToggleRegExp();
    void ToggleContinueSearch();

    void ToggleHex();
    void ToggleLineNumber();
    void ToggleLeftMargin();
    void ToggleTabSpace();
    void ToggleBraceMatching();
    void ToggleRowHighlight();
    void ToggleExplorer();
    void ToggleSearchPanel();
    void ToggleToolBand();
    void ToggleTabBand();

    void OrganizeLanguages();
    void OrganizeMacros();
    void ResetKey();
    void SaveMacros();

    void ShowAnsiTable();
    void ShowConvertor();
    void StartCalculator();

    void Cascade();
    void TileHorizontal();
    void TileVertical();
    void ArrangeIcons();

    // A slot of the entries that are filled while the program runs.
    void OpenRecentFile(int slot);
    void OpenRecentProject(int slot);
    void OpenFavorite(int slot);
    void ExecMacro(int slot);
    void SelectOpenWindow(int slot);

 private:
    void saveAs(int format);
    void toggleView(const char* entry);
    void arrange(int mode);

    FrameParts& m_parts;
    DocumentOpening& m_files;
    DocumentSaving& m_saving;
    DocumentClosing& m_closing;
};
