#pragma once

/// Flag words of a save. ClearHistory is added to one of the others.
namespace SaveFlags {
inline constexpr int AsLoaded = 0;
inline constexpr int ClearHistory = 1;  ///< drop undo and redo with the save
inline constexpr int Ansi = 16;
inline constexpr int Utf8WithMark = 32;
inline constexpr int Utf16WithMark = 64;
inline constexpr int Utf8 = 128;
}  // namespace SaveFlags
