#pragma once

#include "editor/control/SelectedRanges.h"

#include <QtGlobal>

class EditView;

/// The selection of a control, several ranges or a rectangle too, and its scroll position, to restore them later. Valid
/// until the next edit or load; after that it restores nothing.
class KeptView {
 public:
    explicit KeptView(const EditView& view);

    /// For ControlSelection, which emits the signal of the move.
    void giveBackTo(EditView& view) const;

 private:
    /// One end of a range, in bytes, and how far after the end of its line it is.
    struct End {
        qint64 byte;
        qint64 beyond;
    };
    void giveBackRectangle(EditView& view) const;

    quint64 m_changes;
    bool m_rectangle;
    SelectedRanges m_ranges;
    End m_anchor;  ///< of the rectangle, where there is one
    End m_caret;
    qint64 m_firstLine;
    qint64 m_left;
};
