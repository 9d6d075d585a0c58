#pragma once

class DocumentSaving;
class frmDocument;
struct FrameParts;

/// What the frame does when documents close. Owned by the frame.
class DocumentClosing {
 public:
    DocumentClosing(FrameParts& parts, DocumentSaving& saving);

    void CloseActive();
    /// Every document from the last tab to the first, but for `except`; null: all.
    void CloseAll(const frmDocument* except);

    /// The two steps of a document that unloads, in this order.
    void DocClose(frmDocument* document);
    void DelTab(frmDocument* document);

 private:
    void askToSave(const frmDocument& document);

    FrameParts& m_parts;
    DocumentSaving& m_saving;
};
