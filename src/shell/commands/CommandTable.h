#pragma once

#include "shell/commands/CommandRow.h"

#include <span>

/// All commands, in the order of the menus.
std::span<const CommandRow> commandTable();

/// The row of that name; null when there is none.
const CommandRow* findCommand(const char* name);
