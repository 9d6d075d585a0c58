#pragma once

#include "keys/HotKey.h"

#include <QString>

#include <functional>

class HotKeys;
class MacroStore;

/// Whether a hot key can be assigned to a command, and the message to show. A plain value.
struct HotKeyVerdict {
    bool accepted = false;
    QString sentence;  ///< the reason for a refusal, or which commands lose the hot key; empty: no message

    /// Returns the name of the enabled menu command or shortcut that this stroke runs; empty if there is none.
    using MenuCommand = std::function<QString(const HotKeyStroke& stroke)>;

    /// Checks a hot key for a command. `macros` supplies the names of the macros.
    static HotKeyVerdict of(const HotKey& hotKey, int command, const HotKeys& hotKeys, const MacroStore& macros,
                            const MenuCommand& menuCommand);
};

/// Returns the name of a command for the user: the name of a macro if it has one, otherwise the caption.
QString commandName(int command, const MacroStore& macros);
