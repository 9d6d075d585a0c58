#pragma once

/// The margins of the editing control, from the left.
namespace Margins {

inline constexpr int Bookmarks = 0;
inline constexpr int Numbers = 1;
inline constexpr int Count = 3;

/// Pixels of the bookmark margin.
inline constexpr int BookmarksWidth = 25;

}  // namespace Margins

/// Numbers of the marks of lines.
namespace Markers {

inline constexpr int Bookmark = 1;

}  // namespace Markers
