#pragma once

#include <QString>

class QWidget;

/// A view of a document's file: what the document calls on its visible view. Text and hex view implement it, so that a
/// document need not distinguish them. The document owns its views.
///
/// load() and save() report failures to the user and then return false; the view is unchanged.
class DocumentView {
 public:
    virtual ~DocumentView() = default;

    virtual QWidget* viewWidget() = 0;

    virtual bool load(const QString& path) = 0;
    /// `format` is one of SaveFormats and concerns text alone; `force` (write even when nothing was edited) hex alone.
    virtual bool save(const QString& path, int format, bool force) = 0;
    /// Whether a save may begin. Otherwise the view has said in the status bar why not.
    virtual bool maySave() { return true; }
    /// Edited since the view's last load or save.
    virtual bool isModified() const = 0;

    /// Whether there is anything that a save could write.
    virtual bool hasContent() const = 0;
    /// What a user has to know of how the content is shown or saved, for the status bar; mostly empty.
    virtual QString limitations() const = 0;

    virtual bool Locked() const = 0;
    virtual void setLocked(bool locked) = 0;

    virtual void Undo() = 0;
    virtual void Redo() = 0;
    virtual void Cut() = 0;
    virtual void Copy() = 0;
    virtual void Paste() = 0;
    virtual void SelectAll() = 0;

    virtual void Find() = 0;
    virtual void ReplaceText() = 0;
    virtual void IncrementalSearch() = 0;
    virtual void ReverseIncrementalSearch() = 0;
    /// These return whether a match was found; if not, they have run the event loop.
    virtual bool FindNext(const QString& text) = 0;
    virtual bool FindPrev(const QString& text) = 0;
    virtual bool FindText(const QString& text, bool regExp, bool caseSensitive, bool wholeWord) = 0;
    /// Whether the user has ended the last of them, so that it is not known whether there is a match.
    virtual bool wasSearchStopped() const { return false; }

    virtual void ToggleBookmark() = 0;
    virtual void NextBookmark() = 0;
    virtual void PrevBookmark() = 0;
    virtual void BookmarkFirst() = 0;
    virtual void BookmarkLast() = 0;
    virtual void ClearAllBookmark() = 0;

    /// Where the cursor is, as the status bar shows it.
    virtual QString GetCursorPos() const = 0;
};
