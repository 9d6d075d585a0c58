#include "shell/commands/ToolTable.h"

namespace {

constexpr ToolRow Gap = {"", "", "", ""};

constexpr ToolRow Tools[] = {
    {"New", "mnuFileNew", "new", "New"},
    {"Open", "mnuFileOpen", "open", "Open"},
    {"Save", "mnuFileSave", "save", "Save", Enabled::Unlocked},
    {"SaveAs", "mnuFileSaveAs", "saveas", "Save As"},
    {"SaveAll", "mnuFileSaveAll", "saveall", "Save All"},
    {"Print", "mnuFilePrint", "print", "Print"},
    Gap,
    {"Find", "mnuFind", "search", "Find"},
    {"SearchHistory", "", "", ""},
    {"FindPrev", "mnuFindPrevious", "searchprev", "Find Previous"},
    {"FindNext", "mnuFindNext", "searchnext", "Find Next"},
    Gap,
    {"Bookmark", "mnuToggleBookmark", "bookmark", "Toggle Bookmark"},
    {"BookmarkPrev", "mnuPreviousBookmark", "bookprev", "Previous Bookmark"},
    {"BookmarkNext", "mnuNextBookmark", "booknext", "Next Bookmark"},
    {"BookmarkClear", "mnuClearAllBookmarks", "bookclear", "Clear All Bookmarks"},
    Gap,
    {"Undo", "mnuEditUndo", "undo", "Undo", Enabled::Unlocked},
    {"Redo", "mnuEditRedo", "redo", "Redo", Enabled::InUnlockedText},
    Gap,
    {"Cut", "mnuEditCut", "cut", "Cut", Enabled::InUnlockedText},
    {"Copy", "mnuEditCopy", "copy", "Copy"},
    {"Paste", "mnuEditPaste", "paste", "Paste", Enabled::InUnlockedText},
    Gap,
    {"UnIndent", "mnuUnindent", "unindent", "Unindent", Enabled::InUnlockedText},
    {"Indent", "mnuIndent", "indent", "Indent", Enabled::InUnlockedText},
    Gap,
    {"ShowSpace", "mnuShowTabSpace", "showspace", "Tabs/Spaces", Enabled::InText, true},
    {"BraceMatching", "mnuBraceMatching", "brace", "Brace Matching", Enabled::InText, true},
    {"ShowLineNumber", "mnuShowLineNumber", "linenumber", "Line Number", Enabled::InText, true},
    {"ShowLeftMargin", "mnuShowLeftMargin", "margin", "Left Margin", Enabled::InText, true},
    {"ShowHex", "mnuToggleHex", "hex", "Hex Mode", Enabled::Always, true},
    Gap,
    {"WindowCascade", "mnuWindowCascade", "arrange", "Cascade"},
    {"WindowH", "mnuWindowTileHorizontal", "hori", "Tile Horizontal"},
    {"WindowV", "mnuWindowTileVertical", "vert", "Tile Vertical"},
};

}  // namespace

std::span<const ToolRow> toolTable() {
    return Tools;
}
