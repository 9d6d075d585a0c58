// The numbered commands of the control, and the count by which the next of them is repeated.

#include "editor/CaseCommands.h"
#include "editor/CodeMax.h"
#include "editor/ControlPrompts.h"
#include "editor/ControlProperties.h"
#include "editor/EditScope.h"
#include "editor/LineCommands.h"
#include "editor/SearchWindows.h"

#include <algorithm>

namespace {

using Sci = QsciScintillaBase;

enum class Kind {
    Looks,
    Edits,  ///< keeps still while the text is locked
    Sets    ///< something for a later command, to which a repeat count is left
};

struct CommandRow {
    int number;
    Kind kind;
    void (*run)(CodeMax& control, const QString& argument);
};

using Text = const QString&;

/// The macros (213 to 223) have their numbers reserved.
constexpr CommandRow Commands[] = {
    {100, Kind::Edits, [](CodeMax& control, Text) { CaseCommands::changeWord(control, TextCase::upper); }},
    {106, Kind::Edits, [](CodeMax& control, Text) { CaseCommands::changeWord(control, TextCase::lower); }},
    {113, Kind::Edits, [](CodeMax& control, Text) { CaseCommands::changeWord(control, TextCase::capitalised); }},
    {125, Kind::Edits, [](CodeMax& control, Text) { CaseCommands::changeSelection(control, TextCase::upper); }},
    {147, Kind::Edits, [](CodeMax& control, Text) { CaseCommands::changeSelection(control, TextCase::lower); }},
    {158, Kind::Edits, [](CodeMax& control, Text) { LineCommands::deleteToStart(control); }},
    {159, Kind::Edits, [](CodeMax& control, Text) { LineCommands::deleteToEnd(control); }},
    {160, Kind::Edits, [](CodeMax& control, Text) { LineCommands::deleteLines(control); }},
    {161, Kind::Edits, [](CodeMax& control, Text) { LineCommands::cutLines(control); }},
    {135, Kind::Looks, [](CodeMax& control, Text) { LineCommands::selectParagraph(control); }},
    {136, Kind::Looks, [](CodeMax& control, Text) { LineCommands::selectLines(control); }},
    {137, Kind::Looks, [](CodeMax& control, Text) { control.SelectAll(); }},
    {267, Kind::Looks, [](CodeMax& control, Text) { LineCommands::selectWord(control); }},
    {163, Kind::Edits, [](CodeMax& control, Text) { LineCommands::indent(control); }},
    {127, Kind::Edits, [](CodeMax& control, Text) { LineCommands::unindent(control); }},
    {187, Kind::Looks, [](CodeMax& control, Text) { ControlPrompts::askRepeatCount(control); }},
    {192, Kind::Looks, [](CodeMax& control, Text) { ControlPrompts::askLine(control); }},
    {224, Kind::Looks, [](CodeMax& control, Text) { ControlProperties::show(control); }},
    {253, Kind::Edits, [](CodeMax& control, Text) { LineCommands::sort(control, LineSort::Order::Ascending); }},
    {254, Kind::Edits, [](CodeMax& control, Text) { LineCommands::sort(control, LineSort::Order::Descending); }},
    {169, Kind::Looks, [](CodeMax& control, Text) { SearchWindows::openReplace(control); }},
    {170, Kind::Looks, [](CodeMax& control, Text) { control.replaceNext(); }},
    {174, Kind::Looks, [](CodeMax& control, Text) { control.findPrevious(); }},
    {176, Kind::Looks, [](CodeMax& control, Text) { control.findNext(); }},
    {178, Kind::Looks, [](CodeMax& control, Text) { SearchWindows::openFind(control); }},
    {179, Kind::Sets, [](CodeMax& control, Text text) { control.setSearchText(text); }},
    {180, Kind::Sets, [](CodeMax& control, Text text) { control.setReplacementText(text); }},
    {189, Kind::Looks, [](CodeMax& control, Text) { control.runCommand(Sci::SCI_DOCUMENTSTART); }},
    {191, Kind::Looks, [](CodeMax& control, Text) { control.runCommand(Sci::SCI_DOCUMENTEND); }},
    {257, Kind::Looks, [](CodeMax& control, Text) { SearchWindows::openIncremental(control, false); }},
    {258, Kind::Looks, [](CodeMax& control, Text) { SearchWindows::openIncremental(control, true); }},
    {204, Kind::Looks, [](CodeMax& control, Text) { control.ToggleBookmark(); }},
    {205, Kind::Looks, [](CodeMax& control, Text) { control.PrevBookmark(); }},
    {206, Kind::Looks, [](CodeMax& control, Text) { control.NextBookmark(); }},
    {207, Kind::Looks, [](CodeMax& control, Text) { control.ClearAllBookmarks(); }},
    {208, Kind::Looks, [](CodeMax& control, Text) { control.FirstBookmark(); }},
    {209, Kind::Looks, [](CodeMax& control, Text) { control.LastBookmark(); }},
    {230, Kind::Sets, [](CodeMax& control, Text) { control.setSearchRegExp(true); }},
    {231, Kind::Sets, [](CodeMax& control, Text) { control.setSearchRegExp(false); }},
    {232, Kind::Sets, [](CodeMax& control, Text) { control.setSearchWholeWord(true); }},
    {233, Kind::Sets, [](CodeMax& control, Text) { control.setSearchWholeWord(false); }},
    {234, Kind::Sets, [](CodeMax& control, Text) { control.setPreserveCase(true); }},
    {235, Kind::Sets, [](CodeMax& control, Text) { control.setPreserveCase(false); }},
    {236, Kind::Sets, [](CodeMax& control, Text) { control.setSearchCaseSensitive(true); }},
    {237, Kind::Sets, [](CodeMax& control, Text) { control.setSearchCaseSensitive(false); }},
};

}  // namespace

void CodeMax::ExecuteCmd(int number, const QString& argument) {
    const auto* row = std::ranges::find(Commands, number, &CommandRow::number);
    if (row == std::end(Commands) || (row->kind == Kind::Edits && Locked()))
        return;
    const EditScope scope(*this, EditScope::Grouped);
    m_typing = false;
    const int times = row->kind == Kind::Sets ? 1 : takeRepeatCount();
    for (int done = 0; done < times; ++done)
        row->run(*this, argument);
}

void CodeMax::setRepeatCount(int times) {
    m_repeatCount = std::clamp(times, 1, LargestRepeatCount);
}

/// What stands for more than one is used up by being asked for.
int CodeMax::takeRepeatCount() {
    return std::exchange(m_repeatCount, 1);
}
