#pragma once

#include "document/DocumentView.h"

class Prompts;
class QScrollArea;
class ucHex;
struct DocumentServices;

/// The hex view as a document sees it: passes each request to one `ucHex`. Requests that make no sense for bytes do
/// nothing. Owned by the document, like the control, which is one of the document's widgets. The control has a minimum
/// size; in a smaller window it is scrolled so that its cursor stays visible.
class HexView : public DocumentView {
 public:
    HexView(const DocumentServices& services, QWidget* parent);

    ucHex& control() const { return *m_control; }
    /// A byte of which only the first digit was typed is complete from now on.
    void finishTyping();

    QWidget* viewWidget() override;
    bool load(const QString& path) override;
    bool save(const QString& path, int format, bool force) override;
    bool maySave() override;
    bool isModified() const override;
    bool hasContent() const override;
    QString limitations() const override;
    bool Locked() const override;
    void setLocked(bool locked) override;

    void Undo() override;
    void Redo() override {}
    void Cut() override {}
    void Copy() override;
    void Paste() override {}
    void SelectAll() override {}

    void Find() override;
    void ReplaceText() override;
    void IncrementalSearch() override {}
    void ReverseIncrementalSearch() override {}
    bool FindNext(const QString& text) override;
    bool FindPrev(const QString& text) override;
    /// In the pane of digits the text is a byte sequence, and the flags are ignored; in the other only the flag for the
    /// case is used.
    bool FindText(const QString& text, bool regExp, bool caseSensitive, bool wholeWord) override;
    bool wasSearchStopped() const override;

    void ToggleBookmark() override;
    void NextBookmark() override;
    void PrevBookmark() override;
    void BookmarkFirst() override;
    void BookmarkLast() override;
    void ClearAllBookmark() override;

    /// Empty while no file is loaded.
    QString GetCursorPos() const override;

 private:
    Prompts& m_prompts;
    QScrollArea* m_area;
    ucHex* m_control;
};
