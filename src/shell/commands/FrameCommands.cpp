#include "shell/commands/FrameCommands.h"

#include "document/DocumentServices.h"
#include "document/EditorGlobals.h"
#include "document/frmDocument.h"
#include "properties/LanguageChooser.h"
#include "properties/fmrLangProperties.h"
#include "shell/bars/FindBar.h"
#include "shell/commands/MacroMenu.h"
#include "shell/commands/ProgramProperties.h"
#include "shell/commands/SearchToggles.h"
#include "shell/outside/Calculator.h"
#include "shell/outside/HelpPages.h"
#include "shell/outside/ToolForms.h"
#include "widgets/Prompts.h"
#include "workspace/lists/frmFileProperties.h"

#include <QWidget>

FrameCommands::FrameCommands(QWidget& window, const DocumentServices& services, const HelpPages& help,
                             RegistryStore& registry, FindBar& findBar, SearchToggles& searchToggles,
                             MacroMenu& macroMenu, ProgramProperties& properties)
    : m_window(window),
      m_services(services),
      m_help(help),
      m_registry(registry),
      m_findBar(findBar),
      m_searchToggles(searchToggles),
      m_macroMenu(macroMenu),
      m_properties(properties) {}

void FrameCommands::FindNext() {
    m_findBar.FindNext();
}

void FrameCommands::FindPrevious() {
    m_findBar.FindPrevious();
}

void FrameCommands::ToggleWholeWord() {
    m_searchToggles.toggle("mnuWholeWord");
}

void FrameCommands::ToggleCase() {
    m_searchToggles.toggle("mnuCaseSensitive");
}

void FrameCommands::ToggleRegExp() {
    m_searchToggles.toggle("mnuRegExp");
}

void FrameCommands::ToggleContinueSearch() {
    m_searchToggles.toggle("mnuSearchContinue");
}

void FrameCommands::SetUpPage() {
    m_services.globals.printing.PrintSetup(&m_window);
}

void FrameCommands::PreviewPrint() {
    m_services.prompts.message(&m_window, u"Add 'mnuFilePrintPreview_Click' code."_qs);
}

void FrameCommands::ShowProperties() {
    m_properties.show();
}

void FrameCommands::OrganizeLanguages() {
    const auto showHelp = [this](const QString& page) { m_help.show(page); };
    fmrLangProperties(m_services, showHelp, &m_window).exec();
    m_properties.refreshLanguages();
}

void FrameCommands::OrganizeMacros() {
    m_macroMenu.ShowMacros();
}

void FrameCommands::ResetKey() {
    m_macroMenu.ResetKeys();
}

void FrameCommands::SaveMacros() {
    m_macroMenu.SaveMacros();
}

void FrameCommands::ShowAnsiTable() {
    ToolForms::ShowAnsiTable(&m_window);
}

void FrameCommands::ShowConvertor() {
    ToolForms::ShowConvertor(&m_window);
}

void FrameCommands::showFileProperties(const QString& path) {
    if (!path.isEmpty())
        ::ShowProperties(path, m_services.prompts, &m_window);
}

void FrameCommands::answerRequests(const frmDocument& document) {
    QObject::connect(&document, &frmDocument::PropertiesRequest, &m_window,
                     [this](const QString& path) { showFileProperties(path); });
    QObject::connect(&document, &frmDocument::CalculatorRequest, &m_window, [] { Calculator::start(); });
    QObject::connect(&document, &frmDocument::LanguageRequest, &m_window,
                     [this] { LanguageChooser::choose(m_registry, &m_window); });
}
