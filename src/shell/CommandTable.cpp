#include "shell/CommandTable.h"

#include "document/frmDocument.h"
#include "shell/FrameCommands.h"

#include <algorithm>
#include <cstring>

namespace {

using Frame = FrameCommands;

constexpr CommandTarget on(void (FrameCommands::*procedure)()) {
    return {procedure, nullptr};
}

constexpr CommandTarget on(void (frmDocument::*method)()) {
    return {nullptr, method};
}

constexpr CommandRow menu(const char* parent, const char* name, const char* caption, Enabled when = Enabled::Always) {
    return {parent, name, caption, "", "", {}, when, false};
}

constexpr CommandRow gap(const char* parent, const char* name) {
    return {parent, name, "-", "", "", {}, Enabled::Always, false};
}

constexpr CommandRow commands[] = {
    menu("", "mnuFile", "&File"),
    {"mnuFile", "mnuFileNew", "&New", "Ctrl+N", "new", on(&Frame::New)},
    {"mnuFile", "mnuFileOpen", "&Open...", "Ctrl+O", "open", on(&Frame::Open)},
    {"mnuFile", "mnuFileClose", "&Close", "", "close", on(&Frame::Close)},
    {"mnuFile", "mnuAllFileClose", "Close All Files", "", "closeall", on(&Frame::CloseAll)},
    {"mnuFile", "mnuFileCloseExcept", "Close All Files Except This", "", "", on(&Frame::CloseExcept)},
    gap("mnuFile", "mnuFileBar10"),
    {"mnuFile", "mnuFileSave", "&Save", "Ctrl+S", "save", on(&Frame::Save), Enabled::Unlocked},
    {"mnuFile", "mnuFileSaveAs", "Save &As...", "", "saveas", on(&Frame::SaveAs)},
    menu("mnuFile", "mnuSaveEncoding", "Save (Encoding)...", Enabled::InText),
    {"mnuSaveEncoding", "mnuANSI", "ANSI", "", "", on(&Frame::SaveAnsi)},
    {"mnuSaveEncoding", "mnuUnicode", "Unicode", "", "", on(&Frame::SaveUnicode)},
    {"mnuSaveEncoding", "mnuUTF8", "UTF-8", "", "", on(&Frame::SaveUtf8)},
    {"mnuSaveEncoding", "mnuNoBOM", "No Byte Order Mark (BOM)", "", "", on(&Frame::SaveNoBom)},
    {"mnuFile", "mnuFileSaveAll", "Save A&ll", "", "saveall", on(&Frame::SaveAll)},
    gap("mnuFile", "mnuFileBar5"),
    {"mnuFile", "mnuFileExit", "E&xit", "", "", on(&Frame::Exit)},

    menu("", "mnuEdit", "&Edit"),
    {"mnuEdit", "mnuEditUndo", "Undo", "", "undo", on(&frmDocument::Undo), Enabled::Unlocked},
    {"mnuEdit", "mnuEditRedo", "Redo", "", "redo", on(&frmDocument::Redo), Enabled::InUnlockedText},
    gap("mnuEdit", "mnuEditBar0"),
    {"mnuEdit", "mnuEditCut", "Cut", "", "cut", on(&frmDocument::Cut), Enabled::InUnlockedText},
    {"mnuEdit", "mnuEditCopy", "Copy", "", "copy", on(&frmDocument::Copy), Enabled::Unlocked},
    {"mnuEdit", "mnuEditPaste", "Paste", "", "paste", on(&frmDocument::Paste), Enabled::InUnlockedText},
    gap("mnuEdit", "mnuEditSep03"),
    {"mnuEdit", "mnuSelectAll", "Select All", "Ctrl+A", "selectall", on(&frmDocument::SelectAll), Enabled::InText},
    gap("mnuEdit", "mnuEditSep006"),
    {"mnuEdit", "mnuReadonly", "ReadOnly", "", "readonly", on(&Frame::ChangeReadOnly), Enabled::Always, true},

    menu("", "mnuView", "View"),
    {"mnuView", "mnuToggleHex", "Hex Mode", "", "", on(&Frame::ToggleHex), Enabled::Always, true},
    gap("mnuView", "mnuViewSep02"),
    {"mnuView", "mnuShowEditToolbar", "Edit Toolbar", "", "", on(&Frame::ToggleToolBand), Enabled::Always, true},
    {"mnuView", "mnuShowFilesTab", "Files Tab", "", "", on(&Frame::ToggleTabBand), Enabled::Always, true},

    menu("", "mnuWindow", "&Window"),
    {"mnuWindow", "mnuWindowCascade", "&Cascade", "", "arrange", on(&Frame::Cascade)},
    {"mnuWindow", "mnuWindowTileHorizontal", "Tile &Horizontal", "", "hori", on(&Frame::TileHorizontal)},
    {"mnuWindow", "mnuWindowTileVertical", "Tile &Vertical", "", "vert", on(&Frame::TileVertical)},
    {"mnuWindow", "mnuWindowArrangeIcons", "&Arrange Icons", "", "", on(&Frame::ArrangeIcons)},
};

constexpr ToolRow noButton = {"", "", "", ""};

constexpr ToolRow tools[] = {
    {"New", "mnuFileNew", "new", "New"},
    {"Open", "mnuFileOpen", "open", "Open"},
    {"Save", "mnuFileSave", "save", "Save", Enabled::Unlocked},
    {"SaveAs", "mnuFileSaveAs", "saveas", "Save As"},
    {"SaveAll", "mnuFileSaveAll", "saveall", "Save All"},
    noButton,
    {"Undo", "mnuEditUndo", "undo", "Undo", Enabled::Unlocked},
    {"Redo", "mnuEditRedo", "redo", "Redo", Enabled::InUnlockedText},
    noButton,
    {"Cut", "mnuEditCut", "cut", "Cut", Enabled::InUnlockedText},
    {"Copy", "mnuEditCopy", "copy", "Copy"},
    {"Paste", "mnuEditPaste", "paste", "Paste", Enabled::InUnlockedText},
    noButton,
    {"ShowHex", "mnuToggleHex", "hex", "Hex Mode", Enabled::Always, true},
    noButton,
    {"WindowCascade", "mnuWindowCascade", "arrange", "Cascade"},
    {"WindowH", "mnuWindowTileHorizontal", "hori", "Tile Horizontal"},
    {"WindowV", "mnuWindowTileVertical", "vert", "Tile Vertical"},
};

}  // namespace

std::span<const CommandRow> commandTable() {
    return commands;
}

std::span<const ToolRow> toolTable() {
    return tools;
}

const CommandRow* findCommand(const char* name) {
    const auto* row =
        std::ranges::find_if(commands, [name](const CommandRow& each) { return std::strcmp(each.name, name) == 0; });
    return row == std::end(commands) ? nullptr : row;
}
