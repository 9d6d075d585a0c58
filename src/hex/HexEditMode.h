#pragma once

#include <QtGlobal>

class QWidget;

/// Shows which edit mode is on, "Hex" or "Text", by the colours of their two labels. Owned by the view, like the
/// labels, which outlive it.
class HexEditMode {
 public:
    /// Hex is in use at first.
    HexEditMode(QWidget* hexLabel, QWidget* textLabel);

    bool isHex() const { return m_hexMode; }
    void toggle();
    /// Sets the colours again, for another palette of the window.
    void paint() const;

 private:
    QWidget* m_hexLabel;
    QWidget* m_textLabel;
    bool m_hexMode = true;
};
