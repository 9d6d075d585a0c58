#pragma once

#include "settings/desktop/DesktopAssociations.h"
#include "settings/desktop/DesktopFolders.h"

#include <QString>

#include <functional>

class RegistryStore;

/// Ties the program into the desktop: file types, context menu, shortcuts, theme manifest. What is registered is
/// written to the settings store, and its real effect to the files of the desktop beside it (DesktopAssociations).
/// Created where it is needed, over the store, which must outlive it. It does not run the event loop, but for the
/// message.
///
/// Extensions are passed without their dot. Nothing is reported when a write fails; the only message is the one of
/// RegisterShellExtension.
class ShellIntegration {
 public:
    /// Shows a text with OK.
    using ShowMessage = std::function<void(const QString& text)>;

    ShellIntegration(RegistryStore& store, ShowMessage showMessage, DesktopFolders folders = DesktopFolders::ofUser());

    /// Makes the program open files with the extension. Unless `pForce`, an extension that has a content type already
    /// is left alone.
    void RegisterExtension(const QString& pExt, const QString& pDesc, bool pUseIcon, bool pForce);
    /// Returns the extension to the system.
    void UnregisterExtension(const QString& pExt);
    /// The description of the class of the extension; empty when there is none.
    QString DescribeExtension(const QString& pExt);
    /// Whether the extension is registered for this program, and the desktop was not told to use another since.
    bool IsOurAssociation(const QString& pExt);

    /// Registers the program as one that opens files, and in the context menu. Without a registered handler of context
    /// menus there is a message.
    void RegisterShellExtension();
    void UnregisterShellExtension();

    /// Places: "desktop", "program" (the menu of programs), "startup", and "other", which is the folder that is passed.
    bool ShortcutExists(const QString& pPlace, const QString& pFolder = {});
    void CreateAppShortcut(const QString& pPlace, const QString& pFolder = {});
    void DeleteAppShortcut(const QString& pPlace, const QString& pFolder = {});

    /// Puts the theme manifest beside the executable from its template, or deletes it.
    void setThemeManifest(bool on);

 private:
    QString programFolder() const;
    QString programPath() const;
    QString command() const { return programPath() + u" %1"_qs; }
    void setClassText(const QString& key, const QString& text);
    QString registeredHandler();
    void setHandlerState(const QString& state);
    QString shortcutPath(const QString& place, const QString& folder) const;

    RegistryStore& m_store;
    ShowMessage m_showMessage;
    DesktopFolders m_folders;
    DesktopAssociations m_associations;
};
