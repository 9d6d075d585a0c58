#pragma once

#include <QList>
#include <QObject>

class QMenu;
class QPoint;
class QString;
class frmDocument;

/// The context menus of a document by their keys: "EditText" for its text view, "HEX" for the panes of its hex view,
/// "BOOK" for the list of bookmarks there. Built once, with the document, and owned by it. An entry calls the operation
/// of its name on the document; each time a menu is shown, the document enables what would change the file, and checks
/// ReadOnly.
class ContextMenus : public QObject {
    Q_OBJECT

 public:
    explicit ContextMenus(frmDocument& document);

    /// Updates the menu from the document and shows it there; does not wait for the choice. An unknown key shows
    /// nothing.
    void show(const QString& key, const QPoint& globalPosition);

 private:
    frmDocument& m_document;
    QList<QMenu*> m_menus;
};
