#include "editor/commands/ControlCommands.h"

#include "editor/commands/CaseCommands.h"
#include "editor/commands/LineCommands.h"
#include "editor/commands/SearchCommands.h"
#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlBookmarks.h"
#include "editor/control/ControlReplace.h"
#include "editor/control/ControlSearch.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/TextControl.h"
#include "editor/windows/ControlPrompts.h"
#include "editor/windows/ControlProperties.h"
#include "editor/windows/SearchWindows.h"

#include <algorithm>
#include <iterator>

namespace {

using SearchCommands::Direction;
using SearchCommands::findAndMark;
using Sci = QsciScintillaBase;
using Wrap = ControlSearch::Wrap;
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

struct Row {
    int number;
    void (*run)(TextControl& control, const QString& argument);
};

constexpr Row Rows[] = {
    {Command::WordToUpper, [](TextControl& control, Text) { CaseCommands::changeWords(control, TextCase::upper); }},
    {Command::WordToLower, [](TextControl& control, Text) { CaseCommands::changeWords(control, TextCase::lower); }},
    {Command::CapitalizeWord,
     [](TextControl& control, Text) { CaseCommands::changeWords(control, TextCase::capitalised); }},
    {Command::SelectionToUpper,
     [](TextControl& control, Text) { CaseCommands::changeSelection(control, TextCase::upper); }},
    {Command::SelectionToLower,
     [](TextControl& control, Text) { CaseCommands::changeSelection(control, TextCase::lower); }},
    {Command::DeleteToStartOfLine, [](TextControl& control, Text) { LineCommands::deleteToStart(control); }},
    {Command::DeleteToEndOfLine, [](TextControl& control, Text) { LineCommands::deleteToEnd(control); }},
    {Command::DeleteLine, [](TextControl& control, Text) { LineCommands::deleteLines(control); }},
    {Command::CutLine, [](TextControl& control, Text) { LineCommands::cutLines(control, control.clipboard()); }},
    {Command::SelectParagraph, [](TextControl& control, Text) { LineCommands::selectParagraphs(control); }},
    {Command::SelectLine, [](TextControl& control, Text) { LineCommands::selectLines(control); }},
    {Command::SelectAll, [](TextControl& control, Text) { control.SelectAll(); }},
    {Command::SelectWord, [](TextControl& control, Text) { LineCommands::selectWords(control); }},
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
    {Command::FindNext, [](TextControl& control, Text) { findAndMark(control, Direction::Forwards, Wrap::Around); }},
    {Command::FindPrevious,
     [](TextControl& control, Text) { findAndMark(control, Direction::Backwards, Wrap::Around); }},
    {Command::ReplaceNext, [](TextControl& control, Text) { control.replacing().replaceNext(); }},
    {Command::ReplaceSelected, [](TextControl& control, Text) { control.replacing().replaceSelectedMatch(); }},
    {Command::ReplaceAll, [](TextControl& control, Text) { control.replacing().replaceAll(); }},
    {Command::ReplaceAllInSelection,
     [](TextControl& control, Text) { control.replacing().replaceAllIn(control.selected().selectedRanges()); }},
    {Command::SetSearchText, [](TextControl& control, Text text) { control.search().setSearchText(text); }},
    {Command::SetReplacementText, [](TextControl& control, Text text) { control.search().setReplacementText(text); }},
    {Command::RegExpOn, [](TextControl& control, Text) { control.setSearchRegExp(true); }},
    {Command::RegExpOff, [](TextControl& control, Text) { control.setSearchRegExp(false); }},
    {Command::WholeWordOn, [](TextControl& control, Text) { control.setSearchWholeWord(true); }},
    {Command::WholeWordOff, [](TextControl& control, Text) { control.setSearchWholeWord(false); }},
    {Command::PreserveCaseOn, [](TextControl& control, Text) { control.search().setPreserveCase(true); }},
    {Command::PreserveCaseOff, [](TextControl& control, Text) { control.search().setPreserveCase(false); }},
    {Command::MatchCaseOn, [](TextControl& control, Text) { control.setSearchCaseSensitive(true); }},
    {Command::MatchCaseOff, [](TextControl& control, Text) { control.setSearchCaseSensitive(false); }},
    {Command::ToggleBookmark, [](TextControl& control, Text) { control.bookmarks().ToggleBookmark(); }},
    {Command::PreviousBookmark, [](TextControl& control, Text) { control.bookmarks().PrevBookmark(); }},
    {Command::NextBookmark, [](TextControl& control, Text) { control.bookmarks().NextBookmark(); }},
    {Command::ClearAllBookmarks, [](TextControl& control, Text) { control.bookmarks().ClearAllBookmarks(); }},
    {Command::FirstBookmark, [](TextControl& control, Text) { control.bookmarks().FirstBookmark(); }},
    {Command::LastBookmark, [](TextControl& control, Text) { control.bookmarks().LastBookmark(); }},
    {Command::GoToStartOfText, [](TextControl& control, Text) { control.runCommand(Sci::SCI_DOCUMENTSTART); }},
    {Command::GoToEndOfText, [](TextControl& control, Text) { control.runCommand(Sci::SCI_DOCUMENTEND); }},
};

}  // namespace

void ControlCommands::run(TextControl& control, int number, const QString& argument) {
    if (number == Command::RecordMacro)
        return m_macros.record(control);
    if (number > Command::MacroBase && number <= Command::MacroBase + Command::Macros)
        return m_macros.play(control, number - Command::MacroBase);
    const auto* row = std::ranges::find(Rows, number, &Row::number);
    if (row != std::end(Rows))
        row->run(control, argument);
}
