#pragma once

#include "keys/HotKey.h"

#include <QString>

#include <functional>

class HotKeys;
class MacroStore;

/// What is to be said to somebody who has pressed a hot key for a command.
struct HotKeyVerdict {
    bool accepted = false;
    QString sentence;  ///< why not, or what it costs; empty: nothing to say

    /// The command of the program's menus that an enabled shortcut of one stroke stands for; empty: none.
    using MenuCommand = std::function<QString(const HotKeyStroke& stroke)>;

    /// `macros` has the names of the macros.
    static HotKeyVerdict of(const HotKey& hotKey, int command, const HotKeys& hotKeys, const MacroStore& macros,
                            const MenuCommand& menuCommand);
};

/// What a command is called towards a person: a macro by its name, if it has one.
QString commandName(int command, const MacroStore& macros);
