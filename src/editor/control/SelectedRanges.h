#pragma once

#include <QtGlobal>

#include <vector>

class EditView;

/// All that is selected in a control, range by range; those of a rectangle line by line. Valid until the next edit.
class SelectedRanges {
 public:
    explicit SelectedRanges(const EditView& view);

    /// Selects them as separate ranges: a former rectangle is none any more.
    void select(const EditView& view) const;

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
