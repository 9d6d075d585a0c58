#include "shell/commands/MacroMenu.h"

#include "document/DocumentServices.h"
#include "document/EditorGlobals.h"
#include "editor/control/CommandNumbers.h"
#include "properties/frmMacro.h"
#include "properties/ucMarco.h"
#include "settings/Settings.h"
#include "shell/bars/StatusPanels.h"
#include "shell/commands/CommandEntries.h"
#include "shell/commands/MenuSlots.h"
#include "shell/commands/MenuText.h"
#include "shell/frame/FrameParts.h"
#include "shell/outside/HelpPages.h"
#include "widgets/Prompts.h"

#include <QAction>

namespace {}  // namespace

MacroMenu::MacroMenu(FrameParts& parts) : m_parts(parts) {}

EditorGlobals& MacroMenu::globals() const {
    return m_parts.documentServices->globals;
}

void MacroMenu::follow() {
    connect(&globals().control, &GlobalObject::macrosChanged, this, &MacroMenu::UpdateMacroMenu);
    connect(&globals().control.recorder(), &MacroRecorder::changed, this, &MacroMenu::showRecording);
}

void MacroMenu::showRecording() {
    const MacroRecorder& recorder = globals().control.recorder();
    m_parts.commands->CheckMenuItem("mnuRecordMarco", recorder.isRecording());
    if (!recorder.isRecording())
        return m_parts.status->ShowRecording({});
    const qsizetype count = recorder.steps().size();
    const QString steps = count == 1 ? tr("Recording: 1 step") : tr("Recording: %1 steps").arg(count);
    const int missed = recorder.missedCount();
    const QString leftOut = missed == 0 ? QString() : tr(", %1 left out").arg(missed);
    m_parts.status->ShowRecording(steps + leftOut + tr(". Record Marco ends it."));
}

void MacroMenu::UpdateMacroMenu() {
    m_parts.commands->entry("mnuMacroSep02")->setVisible(true);
    QAction* placeholder = m_parts.menuSlots->slot("mnuExecMacro", 0);
    placeholder->setVisible(true);
    for (int macro = 1; macro <= Command::Macros; ++macro) {
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
    const QString number = QString::number(macro);
    const QString hotKey = globals().hotKeys.HotKeyText(number);
    if (hotKey.isEmpty())
        return {};
    if (m_parts.settings->forFrame(number + QLatin1String("Display")) != QLatin1String("1"))
        return {};
    return m_parts.settings->PropertyValue(number + QLatin1String("Desc"), hotKey, false);
}

void MacroMenu::ResetKeys() {
    if (!m_parts.prompts->askYesNo(m_parts.frame, ucMarco::ResetQuestion()))
        return;
    globals().macros.ResetHotKeys();
    UpdateMacroMenu();
}

void MacroMenu::SaveMacros() {
    globals().macros.SaveMacros();
}

void MacroMenu::ShowMacros() {
    frmMacro dialog({*m_parts.prompts, *m_parts.settings, globals().hotKeys, globals().macros}, m_parts.frame);
    connect(&dialog.panel(), &ucMarco::UpdateMacroMenu, this, &MacroMenu::UpdateMacroMenu);
    connect(&dialog.panel(), &ucMarco::helpWanted, this, [this](const QString& page) { m_parts.help->show(page); });
    dialog.exec();
    UpdateMacroMenu();
}
