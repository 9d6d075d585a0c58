#pragma once

#include <QtGlobal>

class QWidget;

/// Which of the two labels of the edit mode is the one in use: "Hex" or "Text". Their colours show it. Belongs to the
/// view, like the labels, which outlive it.
class HexEditMode {
 public:
    /// Hex is in use at first.
    HexEditMode(QWidget* hexLabel, QWidget* textLabel);

    bool isHex() const { return m_hexMode; }
    void toggle();
    /// Anew, for another palette of the window.
    void paint() const;

 private:
    QWidget* m_hexLabel;
    QWidget* m_textLabel;
    bool m_hexMode = true;
};
