// The numbered commands of the control.

#include "editor/CodeMax.h"
#include "editor/EditScope.h"

#include <algorithm>

namespace {

/// Whether a command changes the text and so keeps still while it is locked.
enum class Kind { Looks, Edits };

struct CommandRow {
    int number;
    Kind kind;
    void (*run)(CodeMax& control, const QString& argument);
};

/// In the order of the numbers. The macros (213 to 223) have theirs reserved.
constexpr CommandRow Commands[] = {
    {137, Kind::Looks, [](CodeMax& control, const QString&) { control.SelectAll(); }},
};

}  // namespace

void CodeMax::ExecuteCmd(int number, const QString& argument) {
    const auto* row = std::ranges::find(Commands, number, &CommandRow::number);
    if (row == std::end(Commands) || (row->kind == Kind::Edits && Locked()))
        return;
    const EditScope scope(*this, EditScope::Grouped);
    row->run(*this, argument);
}
