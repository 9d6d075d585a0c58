#pragma once

#include <QtGlobal>

#include <atomic>
#include <optional>
#include <string_view>
#include <vector>

/// What has to be changed in one text to get another one, in whole lines. Plain functions, for any thread. Texts are
/// UTF-8; a line ends behind CR LF, LF or CR, and lines with different ends differ.
namespace LineDiff {

/// Lines `oldFirst` up to `oldFirst + oldCount` of the old text are replaced by those of the new one. Counted from 0.
struct Change {
    qint64 oldFirst = 0;
    qint64 oldCount = 0;
    qint64 newFirst = 0;
    qint64 newCount = 0;

    bool operator==(const Change&) const = default;
};

/// The limit of the work for one stretch without a line in common: beyond so many differing lines, the stretch is
/// divided at lines that either text has once, and where there are none, it is replaced as a whole.
constexpr int MostDifferences = 1000;

/// A text's lines with their ends; the last one may have none. They refer to the text.
std::vector<std::string_view> linesOf(std::string_view text);

/// The changes in ascending order, with at least one equal line between two of them. They always lead from one text to
/// the other; they are the fewest possible below `mostDifferences`. Nothing when `cancelled` has become true.
std::optional<std::vector<Change>> compare(const std::vector<std::string_view>& oldLines,
                                           const std::vector<std::string_view>& newLines,
                                           const std::atomic<bool>& cancelled, int mostDifferences = MostDifferences);

}  // namespace LineDiff
