#pragma once

#include <QtGlobal>

#include <string_view>

/// Counts the UTF-16 units of a run of valid UTF-8: one a character, two for those above U+FFFF. A run may begin or end
/// inside a character: each is counted where its first byte is.
qint64 countUtf16Units(std::string_view utf8);

/// The number of bytes of `utf8` that make `units` UTF-16 units; ends before a character of two units if only one of
/// them is wanted. All bytes when there are fewer units.
qint64 bytesForUtf16Units(std::string_view utf8, qint64 units);
