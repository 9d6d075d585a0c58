#pragma once

#include <QString>

#include <span>

class TextControl;

/// The commands of the control by their numbers, those that keys stand for among them: a number of four digits is the
/// Scintilla message that carries the command out.
namespace ControlCommands {

enum class Kind {
    Looks,
    Edits,      ///< keeps still while the text is locked
    Searches,   ///< goes by the control's search text and flags
    Sets,       ///< something for a later command, to which a repeat count is left
    Asks,       ///< opens a window, unless the argument has the answer; a repeat count is left alone
    Records,    ///< begins or ends the recording of a macro
    Plays,      ///< a macro
    Keyed,      ///< a Scintilla message
    TakesBack,  ///< a Scintilla message that moves in the undo history
    Zooms       ///< a Scintilla message that changes nothing but the size of the letters
};

struct Row {
    int number;
    Kind kind;
    const char* caption;
    void (*run)(TextControl& control, const QString& argument);  ///< null where the control itself carries it out
};

constexpr int RepeatCount = 187;
constexpr int GoToLine = 192;
constexpr int SearchText = 179;
constexpr int ReplacementText = 180;
constexpr int FindPrevious = 174;
constexpr int FindNext = 176;
constexpr int ReplaceNext = 170;
constexpr int ReplaceAll = 171;
constexpr int ReplaceAllInSelection = 172;
constexpr int ReplaceSelected = 173;
constexpr int SelectAll = 137;
constexpr int RecordMacro = 213;
/// Macro n is played by this and n, from 1 to Macros.
constexpr int MacroBase = RecordMacro;
constexpr int Macros = 10;
/// Numbers from here on are Scintilla messages.
constexpr int FirstMessage = 2000;

std::span<const Row> all();
/// Null for a number that stands for none.
const Row* find(int number);
/// Whether a macro can do it by itself: nobody is asked, nothing is recorded.
bool canBePlayed(const Row& row, const QString& argument);
/// Empty for a number that stands for none.
QString captionOf(int number);

}  // namespace ControlCommands
