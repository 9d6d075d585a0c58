#pragma once

#include <QString>

#include <atomic>
#include <optional>
#include <string_view>
#include <vector>

/// One row of a list of differences: a line of the file as it is now, of the recovered text, or of both.
struct DifferenceRow {
    enum class Kind {
        Same,
        Removed,  ///< only in the file
        Added,    ///< only in the recovered text
        Gap       ///< equal lines that are left out
    };

    Kind kind = Kind::Same;
    qint64 oldLine = 0;  ///< in the file, from 1; 0: not there
    qint64 newLine = 0;  ///< in the recovered text, from 1; 0: not there
    QString text;        ///< of the line, without its end

    bool operator==(const DifferenceRow&) const = default;
};

/// The differences of two texts in the unified form: the changed lines with a few equal lines around them.
struct DifferenceRows {
    std::vector<DifferenceRow> rows;
    qint64 removed = 0;
    qint64 added = 0;
    /// How many rows with changed lines are missing at the end, because the list would be too long for a person.
    qint64 leftOut = 0;

    bool areEqual() const { return removed == 0 && added == 0; }
    /// The list in characters, a row a line: line numbers, sign, text.
    QString toText() const;
    /// The row of toText().
    static QString textOf(const DifferenceRow& row, int digits);
    /// The width of the line numbers.
    int digits() const;

    static constexpr qint64 Around = 3;
    static constexpr qint64 MostRows = 20'000;
    /// Longer lines are cut, in characters.
    static constexpr qint64 LongestLine = 2'000;

    /// Of two texts in UTF-8. Where lines differ in their ends, the ends are named. Nothing when `cancelled` has become
    /// true. For any thread.
    static std::optional<DifferenceRows> between(std::string_view fileText, std::string_view recoveredText,
                                                 const std::atomic<bool>& cancelled);
};
