#include "shell/FrameFixture.h"
#include "shell/commands/CommandTable.h"
#include "widgets/MenuStyle.h"

#include <QMenu>

using MenuStyleOfTheFrame = FrameFixture;

TEST_F(MenuStyleOfTheFrame, IsThatOfEveryMenu) {
    start();
    QList<const QMenu*> menus{m_frame->findChild<QMenu*>(u"Tab"_qs)};
    for (const CommandRow& row : commandTable()) {
        if (const QMenu* menu = house().entries.menu(row.name))
            menus.append(menu);
    }
    EXPECT_GT(menus.size(), 10);
    for (const QMenu* menu : menus) {
        EXPECT_NE(qobject_cast<MenuStyle*>(menu->style()), nullptr) << menu->objectName().toStdString();
    }
}
