#pragma once

#include "shell/commands/CommandRules.h"

#include <span>

class FrameCommands;
class RoomsToCome;
class frmDocument;

/// Where a command goes: to a procedure of the frame, by name to the active document (without one to nowhere), or to a
/// room that is not built yet. All empty: a sub-menu or a separator.
struct CommandTarget {
    void (FrameCommands::*frame)() = nullptr;
    void (frmDocument::*document)() = nullptr;
    void (RoomsToCome::*room)() = nullptr;

    constexpr bool isEmpty() const { return frame == nullptr && document == nullptr && room == nullptr; }
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
    bool visible = true;
};

std::span<const CommandRow> commandTable();

/// The row of that name; null when there is none.
const CommandRow* findCommand(const char* name);
