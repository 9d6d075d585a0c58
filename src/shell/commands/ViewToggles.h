#pragma once

#include <span>

class frmDocument;

/// What can be switched on and off in the view of a document: its menu entry, its button ("" for none), and where the
/// document keeps it. Entry and button show the document's state and keep none of their own.
struct ViewToggle {
    const char* entry;
    const char* button;
    bool (frmDocument::*isOn)() const;
    void (frmDocument::*turn)(bool on);
};

std::span<const ViewToggle> viewToggles();

/// The option of that entry, which is one of the table.
const ViewToggle& viewToggle(const char* entry);
