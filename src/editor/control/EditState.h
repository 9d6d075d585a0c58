#pragma once

#include <QtGlobal>

#include <functional>
#include <utility>

/// Both ends of the main selection, as offsets into the held text.
struct ByteSelection {
    qint64 anchor = 0;
    qint64 caret = 0;
    bool operator==(const ByteSelection&) const = default;
};

/// The state of the action that a control carries out, shared by its parts. EditScope opens and closes it; a plain
/// value that EditView owns. Offsets are bytes of the held text.
struct EditState {
    // The scope that is open, see EditScope
    int scopes = 0;        ///< open within each other
    bool grouped = false;  ///< its edits become one undo step
    bool changed = false;  ///< the text was edited in it
    qint64 touchedFrom = 0;
    qint64 touchedTo = 0;
    bool scrollDue = false;  ///< the caret is scrolled into view when it closes
    bool failed = false;     ///< its command had nothing to do
    ByteSelection reported;  ///< the selection that SelChange has reported last

    // Recording
    bool noted = false;  ///< the scope was recorded as a step
    int unrecorded = 0;  ///< how many objects of Unrecorded exist

    quint64 changes = 0;  ///< edits and loads since the control was created
    bool typing = false;  ///< the next typed text belongs to the undo step of the last one
    bool locked = false;
    bool forcedLock = false;  ///< the text is read-only, whatever the user sets
    int repeatCount = 1;      ///< of the next command, key or typed text
    int reportedCount = 1;    ///< the repeat count that RepeatCountChanged has reported last
    /// Set while a macro is played: runs the event loop, and returns whether playing continues. Called by operations
    /// that take long.
    std::function<bool()> playGoesOn;

    bool isPlaying() const { return playGoesOn != nullptr; }
    int takeRepeatCount() { return std::exchange(repeatCount, 1); }
};
