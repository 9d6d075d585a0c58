#include "FrameFixture.h"
#include "platform/Icons.h"
#include "shell/CommandTable.h"
#include "shell/MenuStyle.h"

#include <QMenu>

namespace {

/// The picture of the first entry, as it stands in the menu.
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
    QAction* entry = menu.addAction(Icons::named("selectline"), QStringLiteral("Entry"));
    EXPECT_EQ(pixelsOf(Qt::green, pictureIn(menu)), 0);
    menu.setActiveAction(entry);
    EXPECT_GT(pixelsOf(Qt::green, pictureIn(menu)), 0);
    entry->setEnabled(false);
    EXPECT_EQ(pixelsOf(Qt::green, pictureIn(menu)), 0);
    entry->setEnabled(true);
    entry->setCheckable(true);
    entry->setChecked(true);
    EXPECT_EQ(pixelsOf(Qt::green, pictureIn(menu)), 0);
}

using MenuStyleOfTheFrame = FrameFixture;

TEST_F(MenuStyleOfTheFrame, IsThatOfEveryMenu) {
    start();
    QList<const QMenu*> menus{m_frame->findChild<QMenu*>(QStringLiteral("Tab"))};
    for (const CommandRow& row : commandTable()) {
        if (const QMenu* menu = parts().commands->menu(row.name))
            menus.append(menu);
    }
    EXPECT_GT(menus.size(), 10);
    for (const QMenu* menu : menus)
        EXPECT_NE(qobject_cast<MenuStyle*>(menu->style()), nullptr) << menu->objectName().toStdString();
}
