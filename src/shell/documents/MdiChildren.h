#pragma once

#include "shell/documents/ChildPlace.h"

#include <QList>
#include <QObject>

class ChildWindow;
class QMdiArea;
class QMdiSubWindow;
class frmDocument;

/// The open documents as child windows of the frame, and which of them is the active one. Owned by the frame. The
/// active child is stored here and does not change when the application loses the focus; there is always one while
/// there is a document. Documents are owned by their windows and are destroyed from the event loop after they were
/// closed.
class MdiChildren : public QObject {
    Q_OBJECT

 public:
    explicit MdiChildren(QMdiArea& area);

    /// Shows the document in a window of its own and activates it.
    void add(frmDocument* document);
    /// The document closes: from now on it is not among the others.
    void remove(frmDocument* document);

    /// In the order of their creation.
    const QList<frmDocument*>& documents() const { return m_documents; }
    frmDocument* active() const { return m_active; }
    frmDocument* byKey(const QString& key) const;
    QMdiSubWindow* windowOf(const frmDocument* document) const;
    /// All windows in the order of their last activation, the active one last.
    QList<QMdiSubWindow*> windowsByOrder() const;
    QMdiArea& area() const { return m_area; }

    /// These two leave the keyboard to another program if it is there.
    void bringToFront(frmDocument* document);
    void maximise(const frmDocument* document);
    ChildPlace placeOf(const frmDocument* document) const;
    void setPlace(const frmDocument* document, const ChildPlace& place);
    void setState(const frmDocument* document, ChildState state) const;
    /// Closes the document's window, which asks about changes. Without effect while the document loads.
    void unload(frmDocument* document);
    /// The next child in the order of documents(), or with -1 the one before; round at the ends.
    void activateNeighbour(int step);

 Q_SIGNALS:
    /// The document has become the active child.
    void activated(frmDocument* document);

 private:
    ChildWindow* childOf(const frmDocument* document) const;
    void windowActivated(QMdiSubWindow* window);
    void setActive(frmDocument* document);

    QMdiArea& m_area;
    QList<frmDocument*> m_documents;
    frmDocument* m_active = nullptr;
};
