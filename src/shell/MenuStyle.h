#pragma once

#include <QProxyStyle>

class QMenu;

/// Draws the picture of the chosen entry of a menu in the colour of its text: our pictures are grey and blue, and would
/// be lost on the highlight. Owned by its menu.
class MenuStyle : public QProxyStyle {
    Q_OBJECT

 public:
    /// Without effect where the desktop's style isn't the one whose highlight is known.
    static void giveTo(QMenu& menu);

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;

 private:
    explicit MenuStyle(QMenu& menu);
};
