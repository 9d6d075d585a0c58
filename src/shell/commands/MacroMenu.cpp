#include "shell/commands/MacroMenu.h"

#include "document/EditorGlobals.h"
#include "editor/control/CommandNumbers.h"
#include "properties/frmMacro.h"
#include "properties/ucMarco.h"
#include "settings/Settings.h"
#include "shell/commands/CommandEntries.h"
#include "shell/commands/MenuSlots.h"
#include "shell/commands/MenuText.h"
#include "shell/outside/HelpPages.h"
#include "widgets/Prompts.h"

#include <QAction>

namespace {}  // namespace

MacroMenu::MacroMenu(QWidget& window, Prompts& prompts, Settings& settings, EditorGlobals& globals,
                     const HelpPages& help, CommandEntries& commands, const MenuSlots& menuSlots)
    : m_window(window),
      m_prompts(prompts),
      m_settings(settings),
      m_globals(globals),
      m_help(help),
      m_commands(commands),
      m_menuSlots(menuSlots) {
    connect(&globals.control, &GlobalObject::macrosChanged, this, &MacroMenu::UpdateMacroMenu);
    connect(&globals.control.recorder(), &MacroRecorder::changed, this, &MacroMenu::showRecording);
}

void MacroMenu::showRecording() {
    const MacroRecorder& recorder = m_globals.control.recorder();
    m_commands.CheckMenuItem("mnuRecordMarco", recorder.isRecording());
    if (!recorder.isRecording())
        return Q_EMIT recordingChanged({});
    const qsizetype count = recorder.steps().size();
    const QString steps = count == 1 ? tr("Recording: 1 step") : tr("Recording: %1 steps").arg(count);
    const int missed = recorder.missedCount();
    const QString leftOut = missed == 0 ? QString() : tr(", %1 left out").arg(missed);
    Q_EMIT recordingChanged(steps + leftOut + tr(". Record Marco ends it."));
}

void MacroMenu::UpdateMacroMenu() {
    m_commands.entry("mnuMacroSep02")->setVisible(true);
    QAction* placeholder = m_menuSlots.slot("mnuExecMacro", 0);
    placeholder->setVisible(true);
    for (int macro = 1; macro <= Command::Macros; ++macro) {
        const QString caption = captionOf(macro);
        QAction* slot = m_menuSlots.slot("mnuExecMacro", macro);
        slot->setVisible(!caption.isEmpty());
        if (caption.isEmpty())
            continue;
        MenuText::setCaption(*slot, caption);
        placeholder->setVisible(false);
    }
}

QString MacroMenu::captionOf(int macro) const {
    const QString number = QString::number(macro);
    const QString hotKey = m_globals.hotKeys.HotKeyText(number);
    if (hotKey.isEmpty())
        return {};
    if (m_settings.forFrame(number + QLatin1String("Display")) != QLatin1String("1"))
        return {};
    return m_settings.PropertyValue(number + QLatin1String("Desc"), hotKey, false);
}

void MacroMenu::ResetKeys() {
    if (!m_prompts.askYesNo(&m_window, ucMarco::ResetQuestion()))
        return;
    m_globals.macros.ResetHotKeys();
    UpdateMacroMenu();
}

void MacroMenu::SaveMacros() {
    m_globals.macros.SaveMacros();
}

void MacroMenu::ShowMacros() {
    frmMacro dialog({m_prompts, m_settings, m_globals.hotKeys, m_globals.macros}, &m_window);
    connect(&dialog.panel(), &ucMarco::UpdateMacroMenu, this, &MacroMenu::UpdateMacroMenu);
    connect(&dialog.panel(), &ucMarco::helpWanted, this, [this](const QString& page) { m_help.show(page); });
    dialog.exec();
    UpdateMacroMenu();
}
