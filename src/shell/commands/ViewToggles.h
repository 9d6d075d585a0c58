#pragma once

#include <span>

class frmDocument;

/// A property of the view of a document that can be switched: its menu entry, its button ("" for none), and where the
/// document stores it. Entry and button show the document's state and have none of their own.
struct ViewToggle {
    const char* entry;
    const char* button;
    bool (frmDocument::*isOn)() const;
    void (frmDocument::*turn)(bool on);
};

std::span<const ViewToggle> viewToggles();

/// The option of that entry, which is one of the table.
const ViewToggle& viewToggle(const char* entry);
