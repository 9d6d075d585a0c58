#pragma once

#include <QProxyStyle>

class QMenu;

/// Draws the picture of the chosen entry of a menu in one colour that is seen there: our pictures are grey and blue,
/// and would be lost on the highlight, and on the plate that a checked one stands on. One for all menus, the
/// application's.
class MenuStyle : public QProxyStyle {
    Q_OBJECT

 public:
    /// Without effect where the desktop's style isn't the one whose highlight is known.
    static void giveTo(QMenu& menu);

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;

 private:
    MenuStyle();
};
