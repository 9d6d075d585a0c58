#pragma once

#include "shell/commands/CommandRules.h"

#include <span>

/// One button of the tool bar; an empty key is a gap. It runs the target of the command it names, but has its own rule:
/// some buttons stay enabled where their menu entry does not. The one button without a command is the place of the find
/// bar.
struct ToolRow {
    const char* key;
    const char* command;
    const char* icon;
    const char* tip;
    Enabled when = Enabled::Always;
    bool checkable = false;

    constexpr bool isGap() const { return *key == '\0'; }
    constexpr bool isPlace() const { return !isGap() && *command == '\0'; }
};

std::span<const ToolRow> toolTable();
