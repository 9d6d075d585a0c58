#include "editor/commands/ControlCommands.h"

#include "editor/commands/CaseCommands.h"
#include "editor/commands/LineCommands.h"
#include "editor/control/TextControl.h"
#include "editor/windows/ControlPrompts.h"
#include "editor/windows/ControlProperties.h"
#include "editor/windows/MatchHighlight.h"
#include "editor/windows/SearchWindows.h"

#include <QCoreApplication>
#include <QPointer>

#include <algorithm>

namespace {

using ControlCommands::Kind;
using ControlCommands::Row;
using Sci = QsciScintillaBase;
using Text = const QString&;

void goToLine(TextControl& control, const QString& argument) {
    if (argument.isEmpty())
        ControlPrompts::askLine(control);
    else
        control.GotoTextLine(argument.toLongLong() - 1);
}

void setRepeatCount(TextControl& control, const QString& argument) {
    if (argument.isEmpty())
        ControlPrompts::askRepeatCount(control);
    else
        control.setRepeatCount(argument.toInt());
}

/// What a person searches for without a window of its own stays marked.
void findAndMark(TextControl& control, SearchOutcome (TextControl::*find)()) {
    const QPointer<TextControl> alive(&control);
    (control.*find)();
    if (alive)
        MatchHighlight::of(control).keep();
}

constexpr Row Rows[] = {
    // Of words, lines and the selection
    {100, Kind::Edits, QT_TRANSLATE_NOOP("ControlCommands", "Word to upper case"),
     [](TextControl& control, Text) { CaseCommands::changeWord(control, TextCase::upper); }},
    {106, Kind::Edits, QT_TRANSLATE_NOOP("ControlCommands", "Word to lower case"),
     [](TextControl& control, Text) { CaseCommands::changeWord(control, TextCase::lower); }},
    {113, Kind::Edits, QT_TRANSLATE_NOOP("ControlCommands", "Capitalize word"),
     [](TextControl& control, Text) { CaseCommands::changeWord(control, TextCase::capitalised); }},
    {125, Kind::Edits, QT_TRANSLATE_NOOP("ControlCommands", "Selection to upper case"),
     [](TextControl& control, Text) { CaseCommands::changeSelection(control, TextCase::upper); }},
    {147, Kind::Edits, QT_TRANSLATE_NOOP("ControlCommands", "Selection to lower case"),
     [](TextControl& control, Text) { CaseCommands::changeSelection(control, TextCase::lower); }},
    {158, Kind::Edits, QT_TRANSLATE_NOOP("ControlCommands", "Delete to start of line"),
     [](TextControl& control, Text) { LineCommands::deleteToStart(control); }},
    {159, Kind::Edits, QT_TRANSLATE_NOOP("ControlCommands", "Delete to end of line"),
     [](TextControl& control, Text) { LineCommands::deleteToEnd(control); }},
    {160, Kind::Edits, QT_TRANSLATE_NOOP("ControlCommands", "Delete line"),
     [](TextControl& control, Text) { LineCommands::deleteLines(control); }},
    {161, Kind::Edits, QT_TRANSLATE_NOOP("ControlCommands", "Cut line"),
     [](TextControl& control, Text) { LineCommands::cutLines(control); }},
    {135, Kind::Looks, QT_TRANSLATE_NOOP("ControlCommands", "Select paragraph"),
     [](TextControl& control, Text) { LineCommands::selectParagraph(control); }},
    {136, Kind::Looks, QT_TRANSLATE_NOOP("ControlCommands", "Select line"),
     [](TextControl& control, Text) { LineCommands::selectLines(control); }},
    {137, Kind::Looks, QT_TRANSLATE_NOOP("ControlCommands", "Select all"),
     [](TextControl& control, Text) { control.SelectAll(); }},
    {267, Kind::Looks, QT_TRANSLATE_NOOP("ControlCommands", "Select word"),
     [](TextControl& control, Text) { LineCommands::selectWord(control); }},
    {163, Kind::Edits, QT_TRANSLATE_NOOP("ControlCommands", "Indent"),
     [](TextControl& control, Text) { LineCommands::indent(control); }},
    {127, Kind::Edits, QT_TRANSLATE_NOOP("ControlCommands", "Unindent"),
     [](TextControl& control, Text) { LineCommands::unindent(control); }},
    {253, Kind::Edits, QT_TRANSLATE_NOOP("ControlCommands", "Sort lines ascending"),
     [](TextControl& control, Text) { LineCommands::sort(control, LineSort::Order::Ascending); }},
    {254, Kind::Edits, QT_TRANSLATE_NOOP("ControlCommands", "Sort lines descending"),
     [](TextControl& control, Text) { LineCommands::sort(control, LineSort::Order::Descending); }},
    {187, Kind::Asks, QT_TRANSLATE_NOOP("ControlCommands", "Set repeat count"), setRepeatCount},
    {192, Kind::Asks, QT_TRANSLATE_NOOP("ControlCommands", "Go to line"), goToLine},
    {224, Kind::Asks, QT_TRANSLATE_NOOP("ControlCommands", "Properties"),
     [](TextControl& control, Text) { ControlProperties::show(control); }},
    // Searching
    {178, Kind::Asks, QT_TRANSLATE_NOOP("ControlCommands", "Find"),
     [](TextControl& control, Text) { SearchWindows::openFind(control); }},
    {169, Kind::Asks, QT_TRANSLATE_NOOP("ControlCommands", "Replace"),
     [](TextControl& control, Text) { SearchWindows::openReplace(control); }},
    {257, Kind::Asks, QT_TRANSLATE_NOOP("ControlCommands", "Incremental search"),
     [](TextControl& control, Text) { SearchWindows::openIncremental(control, false); }},
    {258, Kind::Asks, QT_TRANSLATE_NOOP("ControlCommands", "Reverse incremental search"),
     [](TextControl& control, Text) { SearchWindows::openIncremental(control, true); }},
    {176, Kind::Searches, QT_TRANSLATE_NOOP("ControlCommands", "Find next"),
     [](TextControl& control, Text) { findAndMark(control, &TextControl::findNext); }},
    {174, Kind::Searches, QT_TRANSLATE_NOOP("ControlCommands", "Find previous"),
     [](TextControl& control, Text) { findAndMark(control, &TextControl::findPrevious); }},
    {170, Kind::Searches, QT_TRANSLATE_NOOP("ControlCommands", "Replace next match"),
     [](TextControl& control, Text) { control.replaceNext(); }},
    {173, Kind::Searches, QT_TRANSLATE_NOOP("ControlCommands", "Replace match and find next"),
     [](TextControl& control, Text) { control.replaceSelectedMatch(); }},
    {171, Kind::Searches, QT_TRANSLATE_NOOP("ControlCommands", "Replace all matches"),
     [](TextControl& control, Text) { control.replaceAll(); }},
    {172, Kind::Searches, QT_TRANSLATE_NOOP("ControlCommands", "Replace all matches in selection"),
     [](TextControl& control, Text) { control.replaceAllIn(control.selectedBytes()); }},
    {179, Kind::Sets, QT_TRANSLATE_NOOP("ControlCommands", "Set text to find"),
     [](TextControl& control, Text text) { control.setSearchText(text); }},
    {180, Kind::Sets, QT_TRANSLATE_NOOP("ControlCommands", "Set replacement text"),
     [](TextControl& control, Text text) { control.setReplacementText(text); }},
    {230, Kind::Sets, QT_TRANSLATE_NOOP("ControlCommands", "Regular expressions on"),
     [](TextControl& control, Text) { control.setSearchRegExp(true); }},
    {231, Kind::Sets, QT_TRANSLATE_NOOP("ControlCommands", "Regular expressions off"),
     [](TextControl& control, Text) { control.setSearchRegExp(false); }},
    {232, Kind::Sets, QT_TRANSLATE_NOOP("ControlCommands", "Whole words on"),
     [](TextControl& control, Text) { control.setSearchWholeWord(true); }},
    {233, Kind::Sets, QT_TRANSLATE_NOOP("ControlCommands", "Whole words off"),
     [](TextControl& control, Text) { control.setSearchWholeWord(false); }},
    {234, Kind::Sets, QT_TRANSLATE_NOOP("ControlCommands", "Preserve case on"),
     [](TextControl& control, Text) { control.setPreserveCase(true); }},
    {235, Kind::Sets, QT_TRANSLATE_NOOP("ControlCommands", "Preserve case off"),
     [](TextControl& control, Text) { control.setPreserveCase(false); }},
    {236, Kind::Sets, QT_TRANSLATE_NOOP("ControlCommands", "Match case on"),
     [](TextControl& control, Text) { control.setSearchCaseSensitive(true); }},
    {237, Kind::Sets, QT_TRANSLATE_NOOP("ControlCommands", "Match case off"),
     [](TextControl& control, Text) { control.setSearchCaseSensitive(false); }},
    // Bookmarks
    {204, Kind::Looks, QT_TRANSLATE_NOOP("ControlCommands", "Toggle bookmark"),
     [](TextControl& control, Text) { control.ToggleBookmark(); }},
    {205, Kind::Looks, QT_TRANSLATE_NOOP("ControlCommands", "Previous bookmark"),
     [](TextControl& control, Text) { control.PrevBookmark(); }},
    {206, Kind::Looks, QT_TRANSLATE_NOOP("ControlCommands", "Next bookmark"),
     [](TextControl& control, Text) { control.NextBookmark(); }},
    {207, Kind::Looks, QT_TRANSLATE_NOOP("ControlCommands", "Clear all bookmarks"),
     [](TextControl& control, Text) { control.ClearAllBookmarks(); }},
    {208, Kind::Looks, QT_TRANSLATE_NOOP("ControlCommands", "First bookmark"),
     [](TextControl& control, Text) { control.FirstBookmark(); }},
    {209, Kind::Looks, QT_TRANSLATE_NOOP("ControlCommands", "Last bookmark"),
     [](TextControl& control, Text) { control.LastBookmark(); }},
    // Macros
    {213, Kind::Records, QT_TRANSLATE_NOOP("ControlCommands", "Record macro"), nullptr},
    {214, Kind::Plays, QT_TRANSLATE_NOOP("ControlCommands", "Play macro 1"), nullptr},
    {215, Kind::Plays, QT_TRANSLATE_NOOP("ControlCommands", "Play macro 2"), nullptr},
    {216, Kind::Plays, QT_TRANSLATE_NOOP("ControlCommands", "Play macro 3"), nullptr},
    {217, Kind::Plays, QT_TRANSLATE_NOOP("ControlCommands", "Play macro 4"), nullptr},
    {218, Kind::Plays, QT_TRANSLATE_NOOP("ControlCommands", "Play macro 5"), nullptr},
    {219, Kind::Plays, QT_TRANSLATE_NOOP("ControlCommands", "Play macro 6"), nullptr},
    {220, Kind::Plays, QT_TRANSLATE_NOOP("ControlCommands", "Play macro 7"), nullptr},
    {221, Kind::Plays, QT_TRANSLATE_NOOP("ControlCommands", "Play macro 8"), nullptr},
    {222, Kind::Plays, QT_TRANSLATE_NOOP("ControlCommands", "Play macro 9"), nullptr},
    {223, Kind::Plays, QT_TRANSLATE_NOOP("ControlCommands", "Play macro 10"), nullptr},
    // The clipboard, and back
    {Sci::SCI_UNDO, Kind::TakesBack, QT_TRANSLATE_NOOP("ControlCommands", "Undo"), nullptr},
    {Sci::SCI_REDO, Kind::TakesBack, QT_TRANSLATE_NOOP("ControlCommands", "Redo"), nullptr},
    {Sci::SCI_CUT, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Cut"), nullptr},
    {Sci::SCI_COPY, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Copy"), nullptr},
    {Sci::SCI_PASTE, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Paste"), nullptr},
    // Typing
    {Sci::SCI_NEWLINE, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "New line"), nullptr},
    {Sci::SCI_TAB, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Tab"), nullptr},
    {Sci::SCI_BACKTAB, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Tab back"), nullptr},
    {Sci::SCI_CLEAR, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Delete character"), nullptr},
    {Sci::SCI_DELETEBACK, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Delete character before"), nullptr},
    {Sci::SCI_DELWORDRIGHT, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Delete word"), nullptr},
    {Sci::SCI_DELWORDLEFT, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Delete word before"), nullptr},
    {Sci::SCI_EDITTOGGLEOVERTYPE, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Insert or overtype"), nullptr},
    {Sci::SCI_CANCEL, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Cancel"), nullptr},
    // The caret
    {Sci::SCI_CHARLEFT, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Left"), nullptr},
    {Sci::SCI_CHARRIGHT, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Right"), nullptr},
    {Sci::SCI_WORDLEFT, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Word left"), nullptr},
    {Sci::SCI_WORDRIGHT, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Word right"), nullptr},
    {Sci::SCI_LINEUP, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Line up"), nullptr},
    {Sci::SCI_LINEDOWN, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Line down"), nullptr},
    {Sci::SCI_PAGEUP, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Page up"), nullptr},
    {Sci::SCI_PAGEDOWN, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Page down"), nullptr},
    {Sci::SCI_VCHOME, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Start of line"), nullptr},
    {Sci::SCI_LINEEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "End of line"), nullptr},
    {Sci::SCI_DOCUMENTSTART, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Start of text"), nullptr},
    {Sci::SCI_DOCUMENTEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "End of text"), nullptr},
    {189, Kind::Looks, QT_TRANSLATE_NOOP("ControlCommands", "Go to start of text"),
     [](TextControl& control, Text) { control.runCommand(Sci::SCI_DOCUMENTSTART); }},
    {191, Kind::Looks, QT_TRANSLATE_NOOP("ControlCommands", "Go to end of text"),
     [](TextControl& control, Text) { control.runCommand(Sci::SCI_DOCUMENTEND); }},
    // The caret with the selection
    {Sci::SCI_CHARLEFTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Select left"), nullptr},
    {Sci::SCI_CHARRIGHTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Select right"), nullptr},
    {Sci::SCI_WORDLEFTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Select word left"), nullptr},
    {Sci::SCI_WORDRIGHTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Select word right"), nullptr},
    {Sci::SCI_LINEUPEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Select line up"), nullptr},
    {Sci::SCI_LINEDOWNEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Select line down"), nullptr},
    {Sci::SCI_PAGEUPEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Select page up"), nullptr},
    {Sci::SCI_PAGEDOWNEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Select page down"), nullptr},
    {Sci::SCI_VCHOMEEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Select to start of line"), nullptr},
    {Sci::SCI_LINEENDEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Select to end of line"), nullptr},
    {Sci::SCI_DOCUMENTSTARTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Select to start of text"),
     nullptr},
    {Sci::SCI_DOCUMENTENDEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Select to end of text"), nullptr},
    {Sci::SCI_CHARLEFTRECTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Rectangle left"), nullptr},
    {Sci::SCI_CHARRIGHTRECTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Rectangle right"), nullptr},
    {Sci::SCI_LINEUPRECTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Rectangle up"), nullptr},
    {Sci::SCI_LINEDOWNRECTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Rectangle down"), nullptr},
    {Sci::SCI_PAGEUPRECTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Rectangle page up"), nullptr},
    {Sci::SCI_PAGEDOWNRECTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Rectangle page down"), nullptr},
    {Sci::SCI_VCHOMERECTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Rectangle to start of line"),
     nullptr},
    {Sci::SCI_LINEENDRECTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Rectangle to end of line"),
     nullptr},
    // What is shown
    {Sci::SCI_LINESCROLLUP, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Scroll up"), nullptr},
    {Sci::SCI_LINESCROLLDOWN, Kind::Keyed, QT_TRANSLATE_NOOP("ControlCommands", "Scroll down"), nullptr},
    {Sci::SCI_ZOOMIN, Kind::Zooms, QT_TRANSLATE_NOOP("ControlCommands", "Zoom in"), nullptr},
    {Sci::SCI_ZOOMOUT, Kind::Zooms, QT_TRANSLATE_NOOP("ControlCommands", "Zoom out"), nullptr},
    {Sci::SCI_SETZOOM, Kind::Zooms, QT_TRANSLATE_NOOP("ControlCommands", "Zoom back to normal"), nullptr},
};

}  // namespace

std::span<const Row> ControlCommands::all() {
    return Rows;
}

const Row* ControlCommands::find(int number) {
    const auto* row = std::ranges::find(Rows, number, &Row::number);
    return row == std::end(Rows) ? nullptr : row;
}

bool ControlCommands::canBePlayed(const Row& row, const QString& argument) {
    switch (row.kind) {
        case Kind::Asks:
            return !argument.isEmpty() && (row.number == RepeatCount || row.number == GoToLine);
        case Kind::Records:
        case Kind::TakesBack:
        case Kind::Zooms:
            return false;
        default:
            return true;
    }
}

QString ControlCommands::captionOf(int number) {
    const Row* row = find(number);
    return row == nullptr ? QString() : QCoreApplication::translate("ControlCommands", row->caption);
}
