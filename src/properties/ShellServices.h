#pragma once

class QString;

/// What the properties dialog asks of the desktop around the program. Implemented by the owner of the dialog; tests
/// record the calls. None of them raises; one that fails leaves things as they are, which the next question shows.
class ShellServices {
 public:
    virtual ~ShellServices() = default;

    /// Places are "desktop", "program" and "startup".
    virtual bool ShortcutExists(const QString& pPlace) = 0;
    virtual void CreateAppShortcut(const QString& pPlace) = 0;
    virtual void DeleteAppShortcut(const QString& pPlace) = 0;

    /// The entry in the context menu of the desktop. Both write their outcome to the setting "register_handle".
    virtual void RegisterShellExtension() = 0;
    virtual void UnregisterShellExtension() = 0;

    /// Creates or deletes the theme manifest.
    virtual void setThemeManifest(bool on) = 0;
};
