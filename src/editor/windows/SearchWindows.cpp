#include "editor/windows/SearchWindows.h"

#include "editor/control/TextControl.h"
#include "editor/windows/FindDialog.h"
#include "editor/windows/IncrementalSearchBar.h"

namespace {

FindDialog& dialogOf(TextControl& control, FindDialog::Kind kind) {
    auto* dialog = control.findChild<FindDialog*>(FindDialog::nameOf(kind), Qt::FindDirectChildrenOnly);
    return dialog != nullptr ? *dialog : *new FindDialog(control, kind);
}

}  // namespace

namespace SearchWindows {

void openFind(TextControl& control) {
    dialogOf(control, FindDialog::Kind::Find).begin();
}

void openReplace(TextControl& control) {
    dialogOf(control, FindDialog::Kind::Replace).begin();
}

void openIncremental(TextControl& control, bool backwards) {
    auto* bar = control.findChild<IncrementalSearchBar*>(QString(), Qt::FindDirectChildrenOnly);
    if (bar == nullptr)
        bar = new IncrementalSearchBar(control);
    bar->begin(backwards);
}

}  // namespace SearchWindows
