#pragma once

#include <QtGlobal>

#include <optional>

/// Whether a move of the caret is worth a report. An edit changes the number of lines even where the caret stays, so it
/// is reported itself; where it moves the caret, the control reports that next, and by then the new position is known.
/// Owned by the document.
class PositionReport {
 public:
    /// Where the caret is, in which state of the text.
    struct Place {
        quint64 change = 0;  ///< counts the edits of the text
        qint64 start = 0;    ///< positions
        qint64 end = 0;
        bool operator==(const Place&) const = default;
    };

    /// The text was edited, and the position is reported.
    void edited(const Place& now) { m_reported = now; }
    /// The caret was moved: whether the position is another than the one that was reported with an edit just now.
    bool isNewAfterMove(const Place& now);

 private:
    std::optional<Place> m_reported;
};
