#pragma once

class ActiveDocument;
class CommandEntries;
class CoolBar;
class MdiChildren;
class SearchPanel;
class SidePanel;

/// The commands that change the display: of the active document, of the frame, and of the arrangement of the child
/// windows. Owned by the frame.
class ViewCommands {
 public:
    ViewCommands(CommandEntries& entries, CoolBar& coolBar, SidePanel& sidePanel, SearchPanel& searchPanel,
                 MdiChildren& children, ActiveDocument& active);

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

    void Cascade();
    void TileHorizontal();
    void TileVertical();
    void ArrangeIcons();

 private:
    void toggleView(const char* entry);

    CommandEntries& m_entries;
    CoolBar& m_coolBar;
    SidePanel& m_sidePanel;
    SearchPanel& m_searchPanel;
    MdiChildren& m_children;
    ActiveDocument& m_active;
};
