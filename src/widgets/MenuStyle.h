#pragma once

#include <QProxyStyle>

class QMenu;

/// Draws the picture of the selected entry of a menu in one colour that is visible there: the program's pictures are
/// grey and blue, and would not be visible on the highlight, nor on the background of a checked one. One for all menus,
/// the application's.
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
