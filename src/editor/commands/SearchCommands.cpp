#include "editor/commands/SearchCommands.h"

#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlMacros.h"
#include "editor/control/EditScope.h"
#include "editor/control/TextControl.h"
#include "editor/windows/MatchHighlight.h"

#include <QPointer>

namespace SearchCommands {

SearchOutcome findAndMark(TextControl& control, Direction direction, ControlSearch::Wrap wrap) {
    const QPointer<TextControl> alive(&control);
    ControlSearch& search = control.search();
    const SearchOutcome outcome = direction == Direction::Backwards ? search.findPrevious(wrap) : search.findNext(wrap);
    if (alive)
        MatchHighlight::of(control, search).keep();
    return outcome;
}

SearchOutcome find(TextControl& control, Direction direction, ControlSearch::Wrap wrap) {
    const QPointer<TextControl> alive(&control);
    const EditScope scope(control, EditScope::Grouped);
    control.state().typing = false;
    const int times = control.state().takeRepeatCount();
    SearchOutcome outcome = SearchOutcome::Found;
    for (int done = 0; done < times && outcome != SearchOutcome::Failed; ++done) {
        outcome = findAndMark(control, direction, wrap);
        if (!alive)
            return SearchOutcome::Failed;
    }
    const int number = direction == Direction::Backwards ? Command::FindPrevious : Command::FindNext;
    control.macros().noteCommand(number, {}, times);
    return outcome;
}

}  // namespace SearchCommands
