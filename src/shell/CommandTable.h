#pragma once

#include "shell/CommandRules.h"

#include <span>

class FrameCommands;
class frmDocument;

/// Where a command goes: to a procedure of the frame, or by name to the active document, without one to nowhere. Both
/// empty: a sub-menu or a separator.
struct CommandTarget {
    void (FrameCommands::*frame)() = nullptr;
    void (frmDocument::*document)() = nullptr;
};

/// One entry of the menus, in the order in which they stand there.
struct CommandRow {
    const char* parent;   ///< name of the menu it stands in; empty: the menu bar
    const char* name;     ///< also the entry's object name
    const char* caption;  ///< "-": a separator
    const char* key;      ///< portable form of the shortcut; empty: none
    const char* icon;     ///< name of the picture; empty: none
    CommandTarget target;
    Enabled when = Enabled::Always;
    bool checkable = false;
};

/// One button of the tool bar; an empty key is a gap. It runs the target of the command it names, but has its own rule:
/// some buttons stay enabled where their menu entry does not.
struct ToolRow {
    const char* key;
    const char* command;
    const char* icon;
    const char* tip;
    Enabled when = Enabled::Always;
    bool checkable = false;
};

std::span<const CommandRow> commandTable();
std::span<const ToolRow> toolTable();

/// The row of that name; null when there is none.
const CommandRow* findCommand(const char* name);
