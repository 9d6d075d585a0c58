#pragma once

#include <QtGlobal>

#include <string_view>

/// How many UTF-16 units a run of valid UTF-8 makes: one a character, two for those above U+FFFF. A run may begin or
/// end inside a character: each is counted where its first byte stands.
qint64 countUtf16Units(std::string_view utf8);

/// The number of bytes of `utf8` that make `units` UTF-16 units; ends before a character of two units of which only one
/// is asked for. Everything when there are fewer.
qint64 bytesForUtf16Units(std::string_view utf8, qint64 units);
