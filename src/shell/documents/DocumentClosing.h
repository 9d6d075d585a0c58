#pragma once

#include <QPointer>

class ActiveDocument;
class DocumentOpening;
class DocumentSaving;
class MdiChildren;
class Prompts;
class QWidget;
class frmDocument;

/// The work of the frame when documents close. Owned by the frame. A changed document asks whether to save it, which
/// runs the event loop; no file is opened meanwhile.
class DocumentClosing {
 public:
    /// `window` is the parent of boxes.
    DocumentClosing(QWidget& window, Prompts& prompts, MdiChildren& children, ActiveDocument& active,
                    DocumentOpening& opening, DocumentSaving& saving);

    void CloseActive();
    /// Every document from the newest to the oldest, but for `except`; null: all.
    void CloseAll(const frmDocument* except);

    /// The two steps of a document that ends, in this order.
    void DocClose(frmDocument* document);
    void DelTab(frmDocument* document);

 private:
    void settleChanges(const QPointer<frmDocument>& document);

    QWidget& m_window;
    Prompts& m_prompts;
    MdiChildren& m_children;
    ActiveDocument& m_active;
    DocumentOpening& m_opening;
    DocumentSaving& m_saving;
};
