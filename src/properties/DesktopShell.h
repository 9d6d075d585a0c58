#pragma once

#include "properties/ShellServices.h"
#include "settings/desktop/ShellIntegration.h"

/// The desktop around the program as it is. The integration outlives this object.
class DesktopShell : public ShellServices {
 public:
    explicit DesktopShell(ShellIntegration& integration) : m_integration(integration) {}

    bool ShortcutExists(const QString& pPlace) override { return m_integration.ShortcutExists(pPlace); }
    void CreateAppShortcut(const QString& pPlace) override { m_integration.CreateAppShortcut(pPlace); }
    void DeleteAppShortcut(const QString& pPlace) override { m_integration.DeleteAppShortcut(pPlace); }
    void RegisterShellExtension() override { m_integration.RegisterShellExtension(); }
    void UnregisterShellExtension() override { m_integration.UnregisterShellExtension(); }
    void setThemeManifest(bool on) override { m_integration.setThemeManifest(on); }

 private:
    ShellIntegration& m_integration;
};
