#pragma once

#include <QtGlobal>

#include <cstddef>
#include <vector>

class EditView;
struct ByteSelection;

/// All that is selected in a control, range by range; those of a rectangle line by line. Valid until the next edit.
class SelectedRanges {
 public:
    explicit SelectedRanges(const EditView& view);

    /// Selects them as separate ranges: a former rectangle is none any more.
    void select(const EditView& view) const;

    /// Selects these ranges, of which there is at least one. None of them is brought into view.
    static void set(const EditView& view, const std::vector<ByteSelection>& ranges, std::size_t main);

 private:
    /// One end of a range, in bytes, and how far after the end of its line it is.
    struct End {
        qint64 byte;
        qint64 beyond;
    };
    struct Range {
        End anchor;
        End caret;
    };

    std::vector<Range> m_ranges;
    qint64 m_main;
};
