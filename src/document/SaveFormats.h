#pragma once

#include <QString>

/// The ways a document can be saved, as one table: number in the document layer, the end of a dialog's title, and the
/// flag word of the editing control.
struct SaveFormat {
    int number;
    QString titleSuffix;
    int flagWord;
};

namespace SaveFormats {

inline constexpr int AsLoaded = 1;
inline constexpr int Ansi = 2;
inline constexpr int Utf8 = 3;
inline constexpr int Unicode = 4;
inline constexpr int NoByteOrderMark = 5;

/// The row of that number; any other number counts as AsLoaded.
const SaveFormat& row(int number);

/// Flag word of a save, with the bit that drops the undo history when `clearHistory` is set.
int flagWord(int number, bool clearHistory);

}  // namespace SaveFormats
