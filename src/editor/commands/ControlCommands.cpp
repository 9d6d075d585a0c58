#include "editor/commands/ControlCommands.h"

#include "editor/commands/CaseCommands.h"
#include "editor/commands/LineCommands.h"
#include "editor/control/CommandNumbers.h"
#include "editor/control/TextControl.h"
#include "editor/windows/ControlPrompts.h"
#include "editor/windows/ControlProperties.h"
#include "editor/windows/MatchHighlight.h"
#include "editor/windows/SearchWindows.h"

#include <QPointer>

#include <algorithm>
#include <iterator>

namespace {

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

struct Row {
    int number;
    void (*run)(TextControl& control, const QString& argument);
};

constexpr Row Rows[] = {
    {Command::WordToUpper, [](TextControl& control, Text) { CaseCommands::changeWord(control, TextCase::upper); }},
    {Command::WordToLower, [](TextControl& control, Text) { CaseCommands::changeWord(control, TextCase::lower); }},
    {Command::CapitalizeWord,
     [](TextControl& control, Text) { CaseCommands::changeWord(control, TextCase::capitalised); }},
    {Command::SelectionToUpper,
     [](TextControl& control, Text) { CaseCommands::changeSelection(control, TextCase::upper); }},
    {Command::SelectionToLower,
     [](TextControl& control, Text) { CaseCommands::changeSelection(control, TextCase::lower); }},
    {Command::DeleteToStartOfLine, [](TextControl& control, Text) { LineCommands::deleteToStart(control); }},
    {Command::DeleteToEndOfLine, [](TextControl& control, Text) { LineCommands::deleteToEnd(control); }},
    {Command::DeleteLine, [](TextControl& control, Text) { LineCommands::deleteLines(control); }},
    {Command::CutLine, [](TextControl& control, Text) { LineCommands::cutLines(control); }},
    {Command::SelectParagraph, [](TextControl& control, Text) { LineCommands::selectParagraph(control); }},
    {Command::SelectLine, [](TextControl& control, Text) { LineCommands::selectLines(control); }},
    {Command::SelectAll, [](TextControl& control, Text) { control.SelectAll(); }},
    {Command::SelectWord, [](TextControl& control, Text) { LineCommands::selectWord(control); }},
    {Command::Indent, [](TextControl& control, Text) { LineCommands::indent(control); }},
    {Command::Unindent, [](TextControl& control, Text) { LineCommands::unindent(control); }},
    {Command::SortLinesAscending,
     [](TextControl& control, Text) { LineCommands::sort(control, LineSort::Order::Ascending); }},
    {Command::SortLinesDescending,
     [](TextControl& control, Text) { LineCommands::sort(control, LineSort::Order::Descending); }},
    {Command::SetRepeatCount, setRepeatCount},
    {Command::GoToLine, goToLine},
    {Command::Properties, [](TextControl& control, Text) { ControlProperties::show(control); }},
    {Command::Find, [](TextControl& control, Text) { SearchWindows::openFind(control); }},
    {Command::Replace, [](TextControl& control, Text) { SearchWindows::openReplace(control); }},
    {Command::IncrementalSearch, [](TextControl& control, Text) { SearchWindows::openIncremental(control, false); }},
    {Command::ReverseIncrementalSearch,
     [](TextControl& control, Text) { SearchWindows::openIncremental(control, true); }},
    {Command::FindNext, [](TextControl& control, Text) { findAndMark(control, &TextControl::findNext); }},
    {Command::FindPrevious, [](TextControl& control, Text) { findAndMark(control, &TextControl::findPrevious); }},
    {Command::ReplaceNext, [](TextControl& control, Text) { control.replaceNext(); }},
    {Command::ReplaceSelected, [](TextControl& control, Text) { control.replaceSelectedMatch(); }},
    {Command::ReplaceAll, [](TextControl& control, Text) { control.replaceAll(); }},
    {Command::ReplaceAllInSelection, [](TextControl& control, Text) { control.replaceAllIn(control.selectedBytes()); }},
    {Command::SetSearchText, [](TextControl& control, Text text) { control.setSearchText(text); }},
    {Command::SetReplacementText, [](TextControl& control, Text text) { control.setReplacementText(text); }},
    {Command::RegExpOn, [](TextControl& control, Text) { control.setSearchRegExp(true); }},
    {Command::RegExpOff, [](TextControl& control, Text) { control.setSearchRegExp(false); }},
    {Command::WholeWordOn, [](TextControl& control, Text) { control.setSearchWholeWord(true); }},
    {Command::WholeWordOff, [](TextControl& control, Text) { control.setSearchWholeWord(false); }},
    {Command::PreserveCaseOn, [](TextControl& control, Text) { control.setPreserveCase(true); }},
    {Command::PreserveCaseOff, [](TextControl& control, Text) { control.setPreserveCase(false); }},
    {Command::MatchCaseOn, [](TextControl& control, Text) { control.setSearchCaseSensitive(true); }},
    {Command::MatchCaseOff, [](TextControl& control, Text) { control.setSearchCaseSensitive(false); }},
    {Command::ToggleBookmark, [](TextControl& control, Text) { control.ToggleBookmark(); }},
    {Command::PreviousBookmark, [](TextControl& control, Text) { control.PrevBookmark(); }},
    {Command::NextBookmark, [](TextControl& control, Text) { control.NextBookmark(); }},
    {Command::ClearAllBookmarks, [](TextControl& control, Text) { control.ClearAllBookmarks(); }},
    {Command::FirstBookmark, [](TextControl& control, Text) { control.FirstBookmark(); }},
    {Command::LastBookmark, [](TextControl& control, Text) { control.LastBookmark(); }},
    {Command::GoToStartOfText, [](TextControl& control, Text) { control.runCommand(Sci::SCI_DOCUMENTSTART); }},
    {Command::GoToEndOfText, [](TextControl& control, Text) { control.runCommand(Sci::SCI_DOCUMENTEND); }},
};

}  // namespace

bool ControlCommands::run(TextControl& control, int number, const QString& argument) {
    const auto* row = std::ranges::find(Rows, number, &Row::number);
    if (row == std::end(Rows))
        return false;
    row->run(control, argument);
    return true;
}
