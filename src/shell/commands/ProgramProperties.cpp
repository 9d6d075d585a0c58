#include "shell/commands/ProgramProperties.h"

#include "document/DocumentServices.h"
#include "properties/PropertiesServices.h"
#include "properties/frmProperties.h"
#include "shell/commands/MacroMenu.h"
#include "shell/outside/HelpPages.h"
#include "widgets/Prompts.h"

ProgramProperties::ProgramProperties(QWidget& window, const DocumentServices& services, Options& options,
                                     Settings& settings, RegistryStore& registry, const HelpPages& help,
                                     MacroMenu& macroMenu)
    : m_window(window),
      m_services(services),
      m_options(options),
      m_settings(settings),
      m_registry(registry),
      m_help(help),
      m_macroMenu(macroMenu) {}

/// The window would destroy the dialog only after the services that its pages use.
ProgramProperties::~ProgramProperties() {
    delete m_dialog;
}

void ProgramProperties::show() {
    if (m_dialog.isNull())
        create();
    else
        m_dialog->refreshMacros();
    m_dialog->InitValues();
    m_dialog->exec();
}

void ProgramProperties::create() {
    m_integration.emplace(m_registry, [this](const QString& text) { showMessage(text); });
    m_shell.emplace(*m_integration);
    const auto showHelp = [this](const QString& page) { m_help.show(page); };
    m_dialog = new frmProperties({m_services, m_options, m_settings, m_registry, *m_shell, *m_integration, showHelp},
                                 &m_window);
    QObject::connect(m_dialog, &frmProperties::UpdateMacroMenu, &m_macroMenu, &MacroMenu::UpdateMacroMenu);
}

void ProgramProperties::refreshLanguages() {
    if (!m_dialog.isNull())
        m_dialog->refreshLanguages();
}

void ProgramProperties::showMessage(const QString& text) {
    m_services.prompts.message(m_dialog, text);
}
