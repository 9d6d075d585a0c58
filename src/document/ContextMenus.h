#pragma once

class QMenu;
class QPoint;
class frmDocument;

/// The two context menus of a document: "EditText" for its text view, "HEX" for its hex view. Built once, with the
/// document, and owned by it. An entry calls the operation of its name on the document; what would change the file is
/// enabled, and ReadOnly checked, by the document each time a menu is shown.
class ContextMenus {
 public:
    explicit ContextMenus(frmDocument& document);

    /// Brings the menu in line with the document and shows it there; does not wait for the choice.
    void showText(const QPoint& globalPosition);
    void showHex(const QPoint& globalPosition);

 private:
    frmDocument& m_document;
    QMenu* m_text;
    QMenu* m_hex;
};
