#pragma once

#include <QString>

/// One thing that was done while a macro was recorded: a numbered command with its argument, or typed text.
struct MacroStep {
    enum class Kind { Command, Text };

    Kind kind = Kind::Command;
    qint32 command = 0;
    QString text;  ///< the argument of the command (none: empty), or what was typed

    bool operator==(const MacroStep&) const = default;
};
