#pragma once

#include <QtGlobal>

#include <string_view>

/// Is notified of every edit of a control's text, in the order in which they are made, whatever made them: keys,
/// commands, undo, replacements. Whoever carries the edits out on a copy of the text has the same text. Set with
/// EditReport::observe(); owned by its caller. Offsets and lengths are bytes of the text in UTF-8 without joints. It
/// must not edit the text.
class EditObserver {
 public:
    virtual ~EditObserver() = default;

    /// The text is about to be edited and still as all edits reported so far have left it.
    virtual void aboutToEdit() = 0;
    /// The bytes are in the text, and are valid during the call. Called after the edit, before the next one and before
    /// the control reports the change.
    virtual void inserted(qint64 at, std::string_view bytes) = 0;
    /// Called before the bytes are removed.
    virtual void removed(qint64 at, qint64 length) = 0;

    /// The control holds another text, which was read from a file. Earlier edits are no part of it.
    virtual void loaded() = 0;
    /// The text was written to a file.
    virtual void saved() = 0;
};
