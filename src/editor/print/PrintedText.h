#pragma once

#include "text/search/MatchScan.h"

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <optional>
#include <vector>

class TextControl;

/// A place in the text to be printed: a held byte in one of its ranges.
struct PrintPlace {
    std::size_t range = 0;
    qint64 byte = 0;

    bool operator==(const PrintPlace&) const = default;
};

/// The part of a control's text that is to be printed, read line by line while the pages are laid out, without joints.
/// Owned by the print job; the control outlives it. It must not be used after the text has changed. Offsets and lengths
/// count held bytes.
class PrintedText {
 public:
    /// A stretch of one line: the line up to its end, or as much of it as is laid out at once.
    struct Extent {
        qint64 from = 0;
        qint64 to = 0;
        bool endsLine = false;
        bool endsPage = false;  ///< a form feed follows
        PrintPlace next;        ///< the first place after it and after what ends it

        /// A form feed alone occupies no row.
        bool hasRow() const { return to > from || !endsPage; }
    };
    /// The text of an extent. Control characters other than the tab are replaced by their names in a style of their
    /// own.
    struct Stretch {
        QString text;
        QByteArray styles;          ///< the style of each UTF-16 unit
        std::vector<qint64> bytes;  ///< the held byte that each UTF-16 unit comes from, and the end
    };
    /// The maximum length of a stretch: more than fits on a row, short enough to be laid out in no time.
    static constexpr qint64 LongestExtent = 2048;

    PrintedText(const TextControl& control, std::vector<TextMatch> ranges);

    PrintPlace begin() const;
    bool isAtEnd(const PrintPlace& place) const { return place.range >= m_ranges.size(); }
    /// How much of the text lies before a place, from 0 to 1.
    double partBefore(const PrintPlace& place) const;
    /// The line's number as the margin shows it, if the line or the printed part of it begins at this place.
    std::optional<qint64> numberAt(const PrintPlace& place) const;
    qint64 largestNumber() const;

    Extent extentAt(const PrintPlace& place) const;
    /// The number of columns that an extent of visible ASCII characters cannot exceed; nothing for other extents.
    std::optional<qint64> mostColumns(const Extent& extent, int tabWidth) const;
    Stretch read(const Extent& extent) const;

 private:
    PrintPlace placeAt(std::size_t range, qint64 byte) const;

    const TextControl& m_control;
    std::vector<TextMatch> m_ranges;
};
