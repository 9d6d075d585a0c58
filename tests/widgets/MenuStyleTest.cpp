#include "widgets/Icons.h"
#include "widgets/MenuStyle.h"

#include <QAction>
#include <QMenu>

#include <gtest/gtest.h>

namespace {

/// The picture of the first entry as it is painted in the menu.
QImage pictureIn(QMenu& menu) {
    const QRect entry = menu.actionGeometry(menu.actions().first());
    return menu.grab(QRect(entry.x(), entry.y(), entry.height(), entry.height())).toImage();
}

int pixelsOf(const QColor& colour, const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y) == colour ? 1 : 0;
    }
    return count;
}

}  // namespace

TEST(MenuStyle, DrawsThePictureOfTheChosenEntryInTheColourOfItsText) {
    QMenu menu;
    MenuStyle::giveTo(menu);
    QPalette palette = menu.palette();
    palette.setColor(QPalette::Highlight, Qt::red);
    palette.setColor(QPalette::HighlightedText, Qt::green);
    menu.setPalette(palette);
    QAction* entry = menu.addAction(Icons::named("selectline"), u"Entry"_qs);
    EXPECT_EQ(pixelsOf(Qt::green, pictureIn(menu)), 0);
    menu.setActiveAction(entry);
    EXPECT_GT(pixelsOf(Qt::green, pictureIn(menu)), 0);
    entry->setEnabled(false);
    EXPECT_EQ(pixelsOf(Qt::green, pictureIn(menu)), 0);
}

TEST(MenuStyle, DrawsACheckedOneInTheColourThatStandsOutFromItsPlate) {
    struct Row {
        QColor window;
        QColor text;
        QColor highlight;
        QColor lit;
        QColor expected;
    };
    const QColor white(0xFD, 0xFE, 0xFC);
    const QColor black(1, 2, 3);
    const Row rows[] = {{white, black, QColor(0x30, 0x8C, 0xC6), white, black},
                        {QColor(0x31, 0x36, 0x3B), white, QColor(0x3D, 0x5A, 0x80), white, white}};
    for (const Row& row : rows) {
        QMenu menu;
        MenuStyle::giveTo(menu);
        QPalette palette = menu.palette();
        palette.setColor(QPalette::Window, row.window);
        palette.setColor(QPalette::WindowText, row.text);
        palette.setColor(QPalette::Highlight, row.highlight);
        palette.setColor(QPalette::HighlightedText, row.lit);
        menu.setPalette(palette);
        QAction* entry = menu.addAction(Icons::named("selectline"), u"Entry"_qs);
        entry->setCheckable(true);
        entry->setChecked(true);
        EXPECT_EQ(pixelsOf(row.expected, pictureIn(menu)), 0);
        menu.setActiveAction(entry);
        EXPECT_GT(pixelsOf(row.expected, pictureIn(menu)), 0) << row.window.name().toStdString();
    }
}

TEST(MenuStyle, IsOneForAllMenus) {
    QMenu one;
    QMenu other;
    MenuStyle::giveTo(one);
    MenuStyle::giveTo(other);
    EXPECT_EQ(one.style(), other.style());
}
