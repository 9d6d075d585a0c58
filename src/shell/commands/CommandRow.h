#pragma once

#include "shell/commands/CommandRules.h"

class FavoriteCommands;
class FileCommands;
class FileSearches;
class FrameCommands;
class OutsideCommands;
class ProjectCommands;
class ViewCommands;
class frmDocument;

/// The target of a command: a procedure of the frame, or one of the active document (without a document nothing). All
/// empty: a sub-menu or a separator.
struct CommandTarget {
    void (FileCommands::*file)() = nullptr;
    void (ViewCommands::*view)() = nullptr;
    void (FrameCommands::*frame)() = nullptr;
    void (OutsideCommands::*outside)() = nullptr;
    void (FavoriteCommands::*favorite)() = nullptr;
    void (ProjectCommands::*project)() = nullptr;
    void (FileSearches::*search)() = nullptr;
    void (frmDocument::*document)() = nullptr;

    constexpr bool isEmpty() const {
        return file == nullptr && view == nullptr && frame == nullptr && outside == nullptr && favorite == nullptr &&
               project == nullptr && search == nullptr && document == nullptr;
    }
};

/// One entry of the menus.
struct CommandRow {
    const char* parent;   ///< name of its menu; empty: the menu bar
    const char* name;     ///< also the entry's object name
    const char* caption;  ///< "-": a separator
    const char* key;      ///< portable form of the shortcut; empty: none
    const char* icon;     ///< name of the picture; empty: none
    CommandTarget target;
    Enabled when = Enabled::Always;
    bool checkable = false;
    bool visible = true;
};
