#pragma once

#include <QString>

#include <span>

/// The commands of the control by number: their captions, and how they are treated by locking, repeating and recording.
/// The numbers are public: stored hot keys and macros contain them, and programs that control this one from outside use
/// them. A number of four digits is the Scintilla message that carries the command out.
namespace Command {

enum Number : int {
    // Of words, lines and the selection
    WordToUpper = 100,
    WordToLower = 106,
    CapitalizeWord = 113,
    SelectionToUpper = 125,
    SelectionToLower = 147,
    DeleteToStartOfLine = 158,
    DeleteToEndOfLine = 159,
    DeleteLine = 160,
    CutLine = 161,
    SelectParagraph = 135,
    SelectLine = 136,
    SelectAll = 137,
    SelectWord = 267,
    Indent = 163,
    Unindent = 127,
    SortLinesAscending = 253,
    SortLinesDescending = 254,
    SetRepeatCount = 187,
    GoToLine = 192,
    Properties = 224,
    // Searching
    Find = 178,
    Replace = 169,
    IncrementalSearch = 257,
    ReverseIncrementalSearch = 258,
    FindNext = 176,
    FindPrevious = 174,
    ReplaceNext = 170,
    ReplaceSelected = 173,
    ReplaceAll = 171,
    ReplaceAllInSelection = 172,
    SetSearchText = 179,
    SetReplacementText = 180,
    RegExpOn = 230,
    RegExpOff = 231,
    WholeWordOn = 232,
    WholeWordOff = 233,
    PreserveCaseOn = 234,
    PreserveCaseOff = 235,
    MatchCaseOn = 236,
    MatchCaseOff = 237,
    // Bookmarks
    ToggleBookmark = 204,
    PreviousBookmark = 205,
    NextBookmark = 206,
    ClearAllBookmarks = 207,
    FirstBookmark = 208,
    LastBookmark = 209,
    // Macros
    RecordMacro = 213,
    // The caret
    GoToStartOfText = 189,
    GoToEndOfText = 191,
};

/// Macro n is played by the command MacroBase + n, from 1 to Macros.
constexpr int MacroBase = RecordMacro;
constexpr int Macros = 10;
constexpr bool isMacro(int number) {
    return number > MacroBase && number <= MacroBase + Macros;
}
/// Numbers from here on are Scintilla messages.
constexpr int FirstMessage = 2000;

enum class Kind {
    Looks,
    Edits,      ///< does nothing while the text is locked
    EditsOnce,  ///< the same, for an edit that carries out its repeat count itself
    Searches,   ///< uses the control's search text and flags
    Sets,       ///< something for a later command, to which a repeat count is left
    Asks,       ///< opens a window, unless the argument has the answer; a repeat count is left alone
    Records,    ///< begins or ends the recording of a macro
    Plays,      ///< a macro
    Keyed,      ///< a Scintilla message
    TakesBack,  ///< a Scintilla message that moves in the undo history
    Zooms       ///< a Scintilla message that changes only the size of the letters
};

struct Info {
    int number;
    Kind kind;
    const char* caption;  ///< untranslated, see captionOf()
};

std::span<const Info> all();
/// Null for an unknown number.
const Info* infoOf(int number);
/// Whether a macro can contain the command: it opens no window and records nothing.
bool canBePlayed(const Info& info, const QString& argument);
/// The translated caption; empty for an unknown number.
QString captionOf(int number);

}  // namespace Command
