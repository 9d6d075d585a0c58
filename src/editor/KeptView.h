#pragma once

#include <QtGlobal>

#include <vector>

class CodeMax;

/// Where a control stands: all that is selected in it, several ranges or a rectangle too, and what of the text is in
/// sight. Good until the next edit or load; after that it gives nothing back.
class KeptView {
 public:
    explicit KeptView(const CodeMax& control);

    /// For the control itself, which tells of the move.
    void giveBackTo(CodeMax& control) const;

 private:
    /// One end of a range, in bytes, and how far behind the end of its line it lies.
    struct End {
        qint64 byte;
        qint64 beyond;
    };
    struct Range {
        End anchor;
        End caret;
    };

    void giveBackRanges(CodeMax& control) const;
    void giveBackRectangle(CodeMax& control) const;

    quint64 m_changes;
    bool m_rectangle;
    std::vector<Range> m_ranges;  ///< the rectangle's corners alone where there is one
    qint64 m_main;
    qint64 m_firstLine;
    qint64 m_left;
};
