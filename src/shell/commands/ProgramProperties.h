#pragma once

#include "properties/DesktopShell.h"
#include "settings/desktop/ShellIntegration.h"

#include <QPointer>

#include <optional>

class HelpPages;
class MacroMenu;
class Prompts;
class QWidget;
class RegistryStore;
class Settings;
class frmProperties;
struct DocumentServices;
struct Options;

/// Owns the dialog of the program's settings: creates it when it is first needed, and keeps it. Owned by the frame.
class ProgramProperties {
 public:
    /// `window` is the frame.
    ProgramProperties(QWidget& window, const DocumentServices& services, Options& options, Settings& settings,
                      RegistryStore& registry, const HelpPages& help, MacroMenu& macroMenu);
    ~ProgramProperties();
    Q_DISABLE_COPY_MOVE(ProgramProperties)

    /// Shows the dialog, modal, and runs the event loop until it is hidden.
    void show();
    /// To be called when the list of languages may have been changed elsewhere.
    void refreshLanguages();

 private:
    void create();
    void showMessage(const QString& text);

    QWidget& m_window;
    const DocumentServices& m_services;
    Options& m_options;
    Settings& m_settings;
    RegistryStore& m_registry;
    const HelpPages& m_help;
    MacroMenu& m_macroMenu;
    // Created with the dialog.
    std::optional<ShellIntegration> m_integration;
    std::optional<DesktopShell> m_shell;
    QPointer<frmProperties> m_dialog;
};
