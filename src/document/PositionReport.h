#pragma once

#include <QtGlobal>

#include <optional>

class TextControl;

/// Whether a move of the caret is worth a report. An edit changes the number of lines even where the caret stays, so it
/// is reported itself; where it moves the caret, the control reports that next, and by then the new position is known.
/// Owned by the document.
class PositionReport {
 public:
    /// The text was edited, and the position is reported.
    void edited(const TextControl& control);
    /// The caret was moved: whether the position is another than the one that was reported with an edit just now.
    bool isNewAfterMove(const TextControl& control);

 private:
    struct Place {
        quint64 change = 0;  ///< counts the edits of the text
        qint64 start = 0;
        qint64 end = 0;
        bool operator==(const Place&) const = default;
    };
    static Place placeIn(const TextControl& control);

    std::optional<Place> m_reported;
};
