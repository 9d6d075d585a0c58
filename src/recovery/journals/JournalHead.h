#pragma once

#include "recovery/journals/JournalBase.h"

#include <optional>
#include <string>
#include <string_view>

/// The base of a journal as the payload of its first frame.
std::string payloadOf(const JournalBase& base);
/// Nothing when it is damaged or of no form that is known.
std::optional<JournalBase> baseOf(std::string_view payload);
