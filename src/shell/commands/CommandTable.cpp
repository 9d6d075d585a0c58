#include "shell/commands/CommandTable.h"

#include "document/frmDocument.h"
#include "shell/commands/FavoriteCommands.h"
#include "shell/commands/FileCommands.h"
#include "shell/commands/FileSearches.h"
#include "shell/commands/FrameCommands.h"
#include "shell/commands/OutsideCommands.h"
#include "shell/commands/ProjectCommands.h"
#include "shell/commands/ViewCommands.h"

#include <algorithm>
#include <cstring>

namespace {

using File = FileCommands;
using View = ViewCommands;
using Frame = FrameCommands;
using Outside = OutsideCommands;
using Favorite = FavoriteCommands;
using Project = ProjectCommands;
using Search = FileSearches;
using Document = frmDocument;

constexpr auto Always = Enabled::Always;
constexpr auto InText = Enabled::InText;
constexpr auto Unlocked = Enabled::Unlocked;
constexpr auto InUnlockedText = Enabled::InUnlockedText;
constexpr auto InHex = Enabled::InHex;

constexpr CommandTarget on(void (FileCommands::*procedure)()) {
    return {.file = procedure};
}

constexpr CommandTarget on(void (ViewCommands::*procedure)()) {
    return {.view = procedure};
}

constexpr CommandTarget on(void (FrameCommands::*procedure)()) {
    return {.frame = procedure};
}

constexpr CommandTarget on(void (OutsideCommands::*procedure)()) {
    return {.outside = procedure};
}

constexpr CommandTarget on(void (FavoriteCommands::*procedure)()) {
    return {.favorite = procedure};
}

constexpr CommandTarget on(void (ProjectCommands::*procedure)()) {
    return {.project = procedure};
}

constexpr CommandTarget on(void (FileSearches::*procedure)()) {
    return {.search = procedure};
}

constexpr CommandTarget on(void (frmDocument::*method)()) {
    return {.document = method};
}

constexpr CommandRow menu(const char* parent, const char* name, const char* caption, Enabled when = Always) {
    return {parent, name, caption, "", "", {}, when};
}

constexpr CommandRow gap(const char* parent, const char* name) {
    return {parent, name, "-", "", "", {}};
}

constexpr CommandRow mark(const char* parent, const char* name, const char* caption, const char* icon,
                          CommandTarget toggle, Enabled when = Always) {
    return {parent, name, caption, "", icon, toggle, when, true};
}

constexpr CommandRow Commands[] = {
    menu("", "mnuFile", "&File"),
    {"mnuFile", "mnuFileNew", "&New", "Ctrl+N", "new", on(&File::New)},
    {"mnuFile", "mnuFileOpen", "&Open...", "Ctrl+O", "open", on(&File::Open)},
    {"mnuFile", "mnuFileClose", "&Close", "", "close", on(&File::Close)},
    {"mnuFile", "mnuAllFileClose", "Close All Files", "", "closeall", on(&File::CloseAll)},
    {"mnuFile", "mnuFileCloseExcept", "Close All Files Except This", "", "", on(&File::CloseExcept)},
    gap("mnuFile", "mnuFileBar10"),
    {"mnuFile", "mnuFileSave", "&Save", "Ctrl+S", "save", on(&File::Save), Unlocked},
    {"mnuFile", "mnuFileSaveAs", "Save &As...", "", "saveas", on(&File::SaveAs)},
    menu("mnuFile", "mnuSaveEncoding", "Save (Encoding)...", InText),
    {"mnuSaveEncoding", "mnuANSI", "ANSI", "", "", on(&File::SaveAnsi)},
    {"mnuSaveEncoding", "mnuUnicode", "Unicode", "", "", on(&File::SaveUnicode)},
    {"mnuSaveEncoding", "mnuUTF8", "UTF-8", "", "", on(&File::SaveUtf8)},
    {"mnuSaveEncoding", "mnuNoBOM", "No Byte Order Mark (BOM)", "", "", on(&File::SaveNoBom)},
    {"mnuFile", "mnuFileSaveAll", "Save A&ll", "", "saveall", on(&File::SaveAll)},
    gap("mnuFile", "mnuSep06"),
    {"mnuFile", "mnuFileProperties", "Propert&ies", "", "prop", on(&Frame::ShowProperties)},
    gap("mnuFile", "mnuFileBar1"),
    {"mnuFile", "mnuFilePageSetup", "Page Set&up...", "", "", on(&Frame::SetUpPage)},
    {"mnuFile", "mnuFilePrintPreview", "Print Preview", "", "", on(&Frame::PreviewPrint), Always, false, false},
    {"mnuFile", "mnuFilePrint", "&Print...", "Ctrl+P", "", on(&Document::PrintContent), InText},
    gap("mnuFile", "mnuFileSep03"),
    menu("mnuFile", "mnuRecentFiles", "Recent File(s)"),
    menu("mnuFile", "mnuRecentWorkspace", "Recent Project(s)"),
    gap("mnuFile", "mnuFileBar5"),
    {"mnuFile", "mnuFileExit", "E&xit", "", "", on(&File::Exit)},

    menu("", "mnuEdit", "&Edit"),
    {"mnuEdit", "mnuEditUndo", "Undo", "", "undo", on(&Document::Undo), Unlocked},
    {"mnuEdit", "mnuEditRedo", "Redo", "", "redo", on(&Document::Redo), InUnlockedText},
    gap("mnuEdit", "mnuEditBar0"),
    {"mnuEdit", "mnuEditCut", "Cut", "", "cut", on(&Document::Cut), InUnlockedText},
    {"mnuEdit", "mnuEditCopy", "Copy", "", "copy", on(&Document::Copy), Unlocked},
    {"mnuEdit", "mnuEditPaste", "Paste", "", "paste", on(&Document::Paste), InUnlockedText},
    gap("mnuEdit", "mnuEditSep03"),
    {"mnuEdit", "mnuSelectAll", "Select All", "Ctrl+A", "selectall", on(&Document::SelectAll), InText},
    {"mnuEdit", "mnuSelectLine", "Select Line", "", "selectline", on(&Document::SelectLine), InText},
    {"mnuEdit", "mnuSelectWord", "Select Word", "", "", on(&Document::SelectWord), InText},
    {"mnuEdit", "SelectPara", "Select Paragraph", "", "", on(&Document::SelectPara), InText},
    {"mnuEdit", "mnuSelectBlock", "Select Block", "", "", on(&Document::SelectBlock), InHex},
    gap("mnuEdit", "mnuEditSep006"),
    {"mnuEdit", "mnuToUppercase", "Selection To Uppercase", "", "toupper", on(&Document::ToUppercaseSel),
     InUnlockedText},
    {"mnuEdit", "mnuToLowercase", "Selection To Lowercase", "", "tolower", on(&Document::ToLowercaseSel),
     InUnlockedText},
    {"mnuEdit", "mnuWordUppercase", "Word To Uppercase", "", "", on(&Document::ToUppercase), InUnlockedText},
    {"mnuEdit", "mnuWordToLowercase", "Word To Lowercase", "", "", on(&Document::ToLowercase), InUnlockedText},
    {"mnuEdit", "mnuCapitalize", "Word To Capitalize", "", "", on(&Document::ToCapitalize), InUnlockedText},
    gap("mnuEdit", "mnuEditSep15"),
    menu("mnuEdit", "mnuDelete", "Line Delete", InUnlockedText),
    {"mnuDelete", "mnuCutLine", "Cut Line", "", "", on(&Document::LineCut)},
    {"mnuDelete", "mnuDeleteLine", "Delete Line", "Ctrl+L", "", on(&Document::LineDelete)},
    {"mnuDelete", "mnuDeleteToStart", "Delete to start of line", "", "", on(&Document::LineDeleteToStart)},
    {"mnuDelete", "mnuDeleteToEnd", "Delete to end of line", "", "", on(&Document::LineDeleteToEnd)},
    gap("mnuEdit", "mnuEditSep11"),
    menu("mnuEdit", "mnuAlign", "Align", InUnlockedText),
    {"mnuAlign", "mnuAliftLeft", "Align - Left", "", "", on(&Document::AlignLeft)},
    {"mnuAlign", "mnuAlignRight", "Align - Right", "", "", on(&Document::AlignRight)},
    {"mnuAlign", "mnuAlignCenter", "Align - Center", "", "", on(&Document::AlignCenter)},
    menu("mnuEdit", "mnuSortLine", "Sort Line", InUnlockedText),
    {"mnuSortLine", "mnuSortLineAscending", "Sort Line Ascending", "", "", on(&Document::SortLineAscending)},
    {"mnuSortLine", "mnuSortLineDescending", "Sort Line Descending", "", "", on(&Document::SortLineDescending)},
    gap("mnuEdit", "mnuEditSep08"),
    {"mnuEdit", "mnuIndent", "Indent", "", "indent", on(&Document::Indent), InUnlockedText},
    {"mnuEdit", "mnuUnindent", "Unindent", "", "unindent", on(&Document::Unindent), InUnlockedText},
    gap("mnuEdit", "mnuEditSep10"),
    {"mnuEdit", "mnuTrimTailedSpaces", "Trim Tailed Spaces", "", "", on(&Document::TrimTailed), InUnlockedText},
    {"mnuEdit", "mnuTabsToSpaces", "Tabs To Spaces", "", "", on(&Document::TabsToSpaces), InUnlockedText},
    // Stays enabled for a locked text, unlike its sibling.
    {"mnuEdit", "mnuSpacesToTabAll", "Spaces To Tabs", "", "", on(&Document::SpacesToTabs), InText},
    gap("mnuEdit", "mnuEditSep8"),
    {"mnuEdit", "mnuSetRepeat", "Set Repeat Count", "", "", on(&Document::SetRepeatCount), InUnlockedText},
    gap("mnuEdit", "mnuEditSep12"),
    mark("mnuEdit", "mnuReadonly", "ReadOnly", "readonly", on(&File::ChangeReadOnly)),

    menu("", "mnuSearch", "Search"),
    {"mnuSearch", "mnuFind", "Find", "Ctrl+F", "search", on(&Document::Find)},
    {"mnuSearch", "mnuFindNext", "Find Next", "F3", "searchnext", on(&Frame::FindNext)},
    {"mnuSearch", "mnuFindPrevious", "Find Previous", "Shift+F3", "searchprev", on(&Frame::FindPrevious)},
    gap("mnuSearch", "mnuSearchSep07"),
    {"mnuSearch", "mnuReplace", "Replace", "Ctrl+H", "", on(&Document::ReplaceText)},
    gap("mnuSearch", "mnuEditSep02"),
    {"mnuSearch", "mnuIncrementalSearch", "Incremental Search", "Ctrl+I", "", on(&Document::IncrementalSearch), InText},
    {"mnuSearch", "mnuReverseIncrementalSearch", "Reverse Incremental Search", "", "",
     on(&Document::ReverseIncrementalSearch), InText},
    gap("mnuSearch", "mnuFindSep07"),
    {"mnuSearch", "mnuFindInFiles", "Find in Files", "", "", on(&Search::FindInFiles)},
    {"mnuSearch", "mnuReplaceInFiles", "Replace in Files", "", "", on(&Search::ReplaceInFiles)},
    gap("mnuSearch", "mnuSearchSep01"),
    {"mnuSearch", "mnuToggleBookmark", "Toggle Bookmark", "Ctrl+F2", "bookmark", on(&Document::ToggleBookmark)},
    {"mnuSearch", "mnuPreviousBookmark", "Previous Bookmark", "Shift+F2", "bookprev", on(&Document::PrevBookmark)},
    {"mnuSearch", "mnuNextBookmark", "Next Bookmark", "F2", "booknext", on(&Document::NextBookmark)},
    {"mnuSearch", "mnuBookmarkFirst", "First Bookmark", "", "", on(&Document::FirstBookmark)},
    {"mnuSearch", "mnuBookmarkLast", "Last Bookmark", "", "", on(&Document::LastBookmark)},
    {"mnuSearch", "mnuClearAllBookmarks", "Clear All Bookmarks", "", "bookclear", on(&Document::ClearAllBookmark)},
    gap("mnuSearch", "mnuSearchSep06"),
    {"mnuSearch", "mnuGotoLine", "Goto Line", "Ctrl+G", "", on(&Document::GotoLine), InText},
    {"mnuSearch", "mnuGotoPage", "Goto Page", "", "", on(&Document::GotoPage), InHex},
    {"mnuSearch", "mnuGotoOffset", "Goto Offset", "", "", on(&Document::GotoOffset), InHex},
    gap("mnuSearch", "mnuSearchSep08"),
    mark("mnuSearch", "mnuWholeWord", "Match Whole Word Only", "", on(&Frame::ToggleWholeWord), InText),
    // Stays enabled for bytes, unlike the toggles around it.
    mark("mnuSearch", "mnuCaseSensitive", "Match Case", "", on(&Frame::ToggleCase)),
    mark("mnuSearch", "mnuRegExp", "Regular Expressions", "", on(&Frame::ToggleRegExp), InText),
    mark("mnuSearch", "mnuSearchContinue", "Continue at (Start/End)", "", on(&Frame::ToggleContinueSearch)),
    gap("mnuSearch", "mnuSearchSep05"),
    {"mnuSearch", "mnuCountAll", "Count All", "", "countall", on(&Document::CountAll), InText},

    menu("", "mnuLanguages", "Languages", InText),
    {"mnuLanguages", "mnuOrgLanguages", "Organize Languages", "", "lang", on(&Frame::OrganizeLanguages)},
    gap("mnuLanguages", "mnuLangSep01"),

    menu("", "mnuFavorites", "Projects"),
    {"mnuFavorites", "mnuAddFavorite", "Add to Favorite Projects", "", "projects", on(&Favorite::AddFavorite)},
    {"mnuFavorites", "mnuDeleteFavorite", "Remove from Favorite Projects", "", "", on(&Favorite::DeleteFavorite)},
    gap("mnuFavorites", "mnuFavoritesSep02"),
    {"mnuFavorites", "mnuNewProject", "New Project", "", "newproj", on(&Project::NewProject)},
    {"mnuFavorites", "mnuOpenProject", "Open Project", "", "openproj", on(&Project::ChooseProjectToOpen)},
    {"mnuFavorites", "mnuCloseProject", "Close Project", "", "", on(&Project::CloseProject)},
    gap("mnuFavorites", "mnuFavoritesSep03"),
    {"mnuFavorites", "mnuSaveProject", "Save Project", "", "saveproj", on(&Project::SaveProject)},
    {"mnuFavorites", "mnuSaveProjectAs", "Save Project As..", "", "", on(&Project::SaveProjectFileAs)},
    gap("mnuFavorites", "mnuFavoritesSep"),

    menu("", "mnuTools", "Tools"),
    {"mnuTools", "mnuAnsiTable", "ANSI Table", "", "", on(&Frame::ShowAnsiTable)},
    {"mnuTools", "mnuConvertor", "Data Convertor", "", "", on(&Frame::ShowConvertor)},
    {"mnuTools", "mnuCalculator", "Calculator", "", "calc", on(&Outside::StartCalculator)},
    {"mnuTools", "mnuSpelling", "Spelling", "", "spell", on(&Document::Spelling), InText},
    gap("mnuTools", "mnuToolsSep01"),
    {"mnuTools", "mnuWindowDirectory", "Windows Directory", "", "", on(&Outside::OpenWindowsDirectory)},
    {"mnuTools", "mnuSystemDirectory", "System Directory", "", "", on(&Outside::OpenSystemDirectory)},
    {"mnuTools", "mnuDesktop", "Desktop", "", "", on(&Outside::OpenDesktop)},
    {"mnuTools", "mnuMyDocuments", "My Documents", "", "", on(&Outside::OpenMyDocuments)},

    menu("", "mnuView", "View"),
    mark("mnuView", "mnuShowLineNumber", "Line Number", "linenumber", on(&View::ToggleLineNumber), InText),
    mark("mnuView", "mnuShowLeftMargin", "Left Margin", "margin", on(&View::ToggleLeftMargin), InText),
    mark("mnuView", "mnuShowTabSpace", "Tabs/Spaces", "showspace", on(&View::ToggleTabSpace), InText),
    mark("mnuView", "mnuBraceMatching", "Brace Matching", "brace", on(&View::ToggleBraceMatching), InText),
    mark("mnuView", "mnuHighlightRow", "Row Highlight", "rowhigh", on(&View::ToggleRowHighlight), InText),
    gap("mnuView", "mnuViewSep01"),
    {"mnuView", "mnuIncreaseFontSize", "Increase font size", "", "", on(&Document::IncreaseFontSize), InText},
    {"mnuView", "mnuDecreaseFontSize", "Decrease font size", "", "", on(&Document::DecreaseFontSize), InText},
    {"mnuView", "mnuDefaultFontSize", "Default Font Size", "", "", on(&Document::DefaultFontSize), InText},
    mark("mnuView", "mnuToggleHex", "Hex Mode", "", on(&View::ToggleHex)),
    gap("mnuView", "mnuViewSep02"),
    mark("mnuView", "mnuEditExplorer", "Quillmark Explorer", "", on(&View::ToggleExplorer)),
    mark("mnuView", "mnulFindReplacePanel", "Find/Replace Panel", "", on(&View::ToggleSearchPanel)),
    mark("mnuView", "mnuShowEditToolbar", "Edit Toolbar", "", on(&View::ToggleToolBand)),
    mark("mnuView", "mnuShowFilesTab", "Files Tab", "", on(&View::ToggleTabBand)),

    menu("", "mnuMacro", "Macro", InText),
    {"mnuMacro", "mnuOrganizeMarco", "Organize Marco", "", "macroorg", on(&Frame::OrganizeMacros)},
    {"mnuMacro", "mnuResetKey", "Reset All Hot Keys", "", "", on(&Frame::ResetKey)},
    {"mnuMacro", "mnuSaveMarco", "Save Marco(s)", "", "", on(&Frame::SaveMacros), Always, false, false},
    gap("mnuMacro", "mnuMacroSep01"),
    {"mnuMacro", "mnuRecordMarco", "Record Marco", "", "macrorec", on(&Document::RecordMarco)},
    gap("mnuMacro", "mnuMacroSep02"),

    menu("", "mnuWindow", "&Window"),
    {"mnuWindow", "mnuWindowCascade", "&Cascade", "", "arrange", on(&View::Cascade)},
    {"mnuWindow", "mnuWindowTileHorizontal", "Tile &Horizontal", "", "hori", on(&View::TileHorizontal)},
    {"mnuWindow", "mnuWindowTileVertical", "Tile &Vertical", "", "vert", on(&View::TileVertical)},
    {"mnuWindow", "mnuWindowArrangeIcons", "&Arrange Icons", "", "", on(&View::ArrangeIcons)},

    menu("", "mnuHelp", "&Help"),
    {"mnuHelp", "mnuHelpContents", "Contents", "", "help", on(&Outside::ShowHelp)},
    {"mnuHelp", "mnuHelpSearchForHelpOn", "Web Site", "", "", on(&Outside::OpenWebSite)},
    {"mnuHelp", "mnuSendEmail", "Send us Email", "", "", on(&Outside::SendEmail)},
    gap("mnuHelp", "mnuHelpBar0"),
    {"mnuHelp", "mnuHelpAbout", "&About ", "", "", on(&Outside::ShowAbout)},
};

}  // namespace

std::span<const CommandRow> commandTable() {
    return Commands;
}

const CommandRow* findCommand(const char* name) {
    const auto* row =
        std::ranges::find_if(Commands, [name](const CommandRow& each) { return std::strcmp(each.name, name) == 0; });
    return row == std::end(Commands) ? nullptr : row;
}
