#pragma once

#include <QObject>
#include <QPointer>

class ActiveDocument;
class DocumentOpening;
class DocumentSaving;
class MdiChildren;
class Prompts;
class QWidget;
class frmDocument;

/// The work of the frame when documents close. Owned by the frame. A changed document asks whether to save it, which
/// runs the event loop; no file is opened meanwhile. Changes that were not saved after a Yes stay for the next start.
class DocumentClosing : public QObject {
    Q_OBJECT

 public:
    /// `window` is the parent of boxes.
    DocumentClosing(QWidget& window, Prompts& prompts, MdiChildren& children, ActiveDocument& active,
                    DocumentOpening& opening, DocumentSaving& saving);

    void CloseActive();
    /// Every document from the newest to the oldest, but for `except`; null: all.
    void CloseAll(const frmDocument* except);

    /// From now on documents close because the program ends: those that were recovered and not touched since are not
    /// asked about, and stay for the next start.
    void beginEnd() { m_programEnds = true; }

    /// The two steps of a document that ends, in this order.
    void DocClose(frmDocument* document);
    void DelTab(frmDocument* document);

 Q_SIGNALS:
    /// A sentence for the status bar.
    void noticed(const QString& sentence);

 private:
    void settleChanges(const QPointer<frmDocument>& document);
    void reportKept(const QPointer<frmDocument>& document);

    QWidget& m_window;
    Prompts& m_prompts;
    MdiChildren& m_children;
    ActiveDocument& m_active;
    DocumentOpening& m_opening;
    DocumentSaving& m_saving;
    bool m_programEnds = false;
};
