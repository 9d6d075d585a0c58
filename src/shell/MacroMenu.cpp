#include "shell/MacroMenu.h"

#include "platform/Prompts.h"
#include "settings/Settings.h"
#include "shell/Commands.h"
#include "shell/FrameParts.h"
#include "shell/MenuSlots.h"
#include "shell/MenuText.h"
#include "shell/RoomsToCome.h"

#include <QAction>

namespace {

constexpr int macros = 10;

}  // namespace

MacroMenu::MacroMenu(FrameParts& parts) : m_parts(parts) {}

void MacroMenu::UpdateMacroMenu() {
    m_parts.commands->entry("mnuMacroSep02")->setVisible(true);
    QAction* placeholder = m_parts.menuSlots->slot("mnuExecMacro", 0);
    placeholder->setVisible(true);
    for (int macro = 1; macro <= macros; ++macro) {
        const QString caption = captionOf(macro);
        QAction* slot = m_parts.menuSlots->slot("mnuExecMacro", macro);
        slot->setVisible(!caption.isEmpty());
        if (caption.isEmpty())
            continue;
        MenuText::setCaption(*slot, caption);
        placeholder->setVisible(false);
    }
}

QString MacroMenu::captionOf(int macro) const {
    const QString hotKey = m_parts.rooms->HotKeyText(macro);
    if (hotKey.isEmpty())
        return {};
    const QString number = QString::number(macro);
    if (m_parts.settings->forFrame(number + QLatin1String("Display")) != QLatin1String("1"))
        return {};
    return m_parts.settings->PropertyValue(number + QLatin1String("Desc"), hotKey, false);
}

void MacroMenu::ResetKeys() {
    const QString question =
        QStringLiteral("Reset all hot keys will delete all marcos, do you want to reset all hot keys ?");
    if (!m_parts.prompts->askYesNo(m_parts.frame, question))
        return;
    m_parts.rooms->ResetHotKeys();
    UpdateMacroMenu();
}
