#pragma once

#include "text/search/MatchScan.h"

#include <QString>

#include <vector>

class EditView;
class KeptView;

/// The selection of a control. Lines and columns from 0, positions in UTF-16 units; functions with bytes in their names
/// use held bytes. Owned by the control.
class ControlSelection {
 public:
    /// The view outlives this object.
    explicit ControlSelection(EditView& view) : m_view(view) {}

    /// First and last place that is selected, as positions.
    qint64 SelStart() const;
    qint64 SelEnd() const;
    QString SelText() const;
    void select(qint64 anchor, qint64 caret);
    void SelectAll();
    /// Returns to where the control was, as long as the text is the same.
    void giveBack(const KeptView& kept);

    qint64 AnchorPosition() const;
    qint64 CaretPosition() const;
    /// Lines of anchor and caret.
    qint64 StartLineNo() const;
    qint64 EndLineNo() const;
    /// Column of the caret.
    qint64 EndColNo() const;
    /// From the first byte selected to the last, with what lies between several ranges.
    TextMatch selectedBytes() const;
    /// Of a rectangle its part of each line, of several ranges each of them, from the top and apart from each other.
    /// Those that are empty are left out, unless all are: then it is the place of the first.
    std::vector<TextMatch> selectedRanges() const;
    bool isSelected(qint64 byte) const;
    /// The line at a place of the control, the last one for a place below it.
    qint64 lineAtPoint(int x, int y) const;

    /// Whether the selection is one run of text, not a rectangle and not several.
    bool isStream() const;
    /// Called before each edit: from there on the lines of a rectangle are ranges like any other.
    void loosenRectangle();
    /// The same for a text inserted as a whole: it begins at the topmost of the lines.
    void loosenAtTop();
    /// Called after an edit of lines that a rectangle crosses.
    void cutRectangleAnew();

    /// Called after and before a step up or down, which keeps to the column of the last step sideways.
    void knowColumn();
    void chooseColumn();

 private:
    struct Place {
        qint64 caret = -1;
        quint64 changes = 0;
        bool operator==(const Place&) const = default;
    };

    EditView& m_view;
    Place m_columnKnownAt;  ///< the caret when Scintilla last knew the column that it keeps to
};
