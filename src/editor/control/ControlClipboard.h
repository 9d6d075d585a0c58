#pragma once

#include <QByteArray>
#include <QString>

class ControlMacros;
class ControlSelection;
class EditView;
class QMimeData;

/// Copies between a control and the clipboard, the X11 primary selection, and drags. Owned by the control.
class ControlClipboard {
 public:
    /// All three outlive this object.
    ControlClipboard(EditView& view, ControlSelection& selection, ControlMacros& macros)
        : m_view(view), m_selection(selection), m_macros(macros) {}

    void Cut();
    void Copy();
    void Paste();
    /// Puts a text on the clipboard that is not what is selected.
    void put(const QString& text);

    /// What a selection that is no rectangle offers to the clipboard, to the primary selection and to a drag alike.
    QMimeData* selectedText(const QByteArray& text, bool dragged) const;

 private:
    QString textOfRanges() const;

    EditView& m_view;
    ControlSelection& m_selection;
    ControlMacros& m_macros;
    bool m_copying = false;
};
