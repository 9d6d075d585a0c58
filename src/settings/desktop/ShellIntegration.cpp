#include "settings/desktop/ShellIntegration.h"

#include "platform/Folders.h"
#include "platform/Paths.h"
#include "settings/desktop/DesktopEntry.h"
#include "settings/desktop/DesktopFiles.h"
#include "settings/registry/cRegistry.h"
#include "settings/registry/modRegistry.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <iterator>

namespace {

const QString DefaultValue;  // the name of a key's default value
const QString ContentType = u"Content Type"_qs;
const QString OpenCommandKey = u"Applications/Quillmark.exe/Shell/Open/Command"_qs;
const QString FileExtensionsKey = u"Software/Microsoft/Windows/CurrentVersion/Explorer/FileExts/."_qs;
const QString HandlerClass = u"Quillmark's Helper Menu Handler"_qs;
const QString NoHandlerMessage = u"8"_qs;
const QString ProgramPlace = u"program"_qs;
const QString ShortcutFile = u"Quillmark.desktop"_qs;
constexpr const char* HandlerKeys[] = {
    "*/shellex/ContextMenuHandlers/Quillmark",
    "Folder/shellex/ContextMenuHandlers/Quillmark",
    "lnkfile/shellex/ContextMenuHandlers/Quillmark",
};

QString extensionKey(const QString& extension) {
    return u'.' + extension;
}

QString classOf(const QString& extension) {
    return u"Quillmark."_qs + extension;
}

}  // namespace

ShellIntegration::ShellIntegration(RegistryStore& store, ShowMessage showMessage, DesktopFolders folders)
    : m_store(store),
      m_showMessage(std::move(showMessage)),
      m_folders(std::move(folders)),
      m_associations(store, m_folders) {}

QString ShellIntegration::programFolder() const {
    return QFileInfo(m_folders.program).path();
}

QString ShellIntegration::programPath() const {
    return m_folders.program + u".exe"_qs;
}

void ShellIntegration::setClassText(const QString& key, const QString& text) {
    SetRegString(m_store, HKEY_CLASSES_ROOT, key, DefaultValue, text);
}

void ShellIntegration::RegisterExtension(const QString& pExt, const QString& pDesc, bool pUseIcon, bool pForce) {
    const QString key = extensionKey(pExt);
    RegistryValue found;
    if (!pForce && m_store.readValue(HKEY_CLASSES_ROOT, key, ContentType, found) == RegistryCode::Ok)
        return;
    const QString name = classOf(pExt);
    setClassText(OpenCommandKey, command());
    SetRegString(m_store, HKEY_CURRENT_USER, FileExtensionsKey + pExt, u"Application"_qs, u"Quillmark.exe"_qs);
    setClassText(key, name);
    SetRegString(m_store, HKEY_CLASSES_ROOT, key, ContentType, u"text/plain"_qs);
    setClassText(name, pDesc);
    SetRegDword(m_store, HKEY_CLASSES_ROOT, name, u"EditFlags"_qs, 0);
    if (pUseIcon)
        setClassText(name + u"/DefaultIcon"_qs, programFolder() + u"/qmproject.ico"_qs);
    setClassText(name + u"/Shell"_qs, {});
    setClassText(name + u"/Shell/Open"_qs, {});
    setClassText(name + u"/Shell/Open/Command"_qs, command());
    m_associations.add(pExt, pDesc, pUseIcon);
}

void ShellIntegration::UnregisterExtension(const QString& pExt) {
    m_associations.remove(pExt);
    const QString key = extensionKey(pExt);
    RegistryValue found;
    if (m_store.readValue(HKEY_CLASSES_ROOT, key, ContentType, found) != RegistryCode::Ok)
        return;
    setClassText(key, u"txtfile"_qs);
    SetRegString(m_store, HKEY_CLASSES_ROOT, key, ContentType, u"text/plain"_qs);
    WriteRegValue(m_store, HKEY_CURRENT_USER, FileExtensionsKey + pExt, u"Application"_qs, {});
}

QString ShellIntegration::DescribeExtension(const QString& pExt) {
    const QString name = GetRegString(m_store, HKEY_CLASSES_ROOT, extensionKey(pExt), DefaultValue);
    return name.isEmpty() ? QString() : GetRegString(m_store, HKEY_CLASSES_ROOT, name, DefaultValue);
}

bool ShellIntegration::IsOurAssociation(const QString& pExt) {
    const QString name = GetRegString(m_store, HKEY_CLASSES_ROOT, extensionKey(pExt), DefaultValue);
    return name.startsWith(u"Quillmark") && !m_associations.isTakenOver(pExt);
}

void ShellIntegration::RegisterShellExtension() {
    setClassText(OpenCommandKey, command());
    SetRegString(m_store, HKEY_CURRENT_USER, programKey(), u"path"_qs, programPath());
    SetRegString(m_store, HKEY_LOCAL_MACHINE, u"Software/Microsoft/Internet Explorer/View Source Editor/Editor Name"_qs,
                 DefaultValue, programPath());
    m_associations.addToContextMenu();
    const QString handler = registeredHandler();
    if (handler.isEmpty()) {
        m_showMessage(NoHandlerMessage);
        setHandlerState(u"Failed"_qs);
        return;
    }
    for (const char* key : HandlerKeys)
        setClassText(QString::fromLatin1(key), handler);
    setHandlerState(u"Registered"_qs);
}

/// The sub-key of the first class that calls itself the handler; empty when there is none.
QString ShellIntegration::registeredHandler() {
    cRegistry walk(m_store);
    walk.ClassKey = HKEY_CLASSES_ROOT;
    walk.SectionKey = u"CLSID"_qs;
    QStringList classes;
    qint32 count = 0;
    walk.EnumerateSections(classes, count);
    const auto found = std::ranges::find_if(classes, [this](const QString& each) {
        return GetRegString(m_store, HKEY_CLASSES_ROOT, u"CLSID/"_qs + each, DefaultValue) == HandlerClass;
    });
    return found == classes.end() ? QString() : *found;
}

void ShellIntegration::setHandlerState(const QString& state) {
    SetRegString(m_store, HKEY_CURRENT_USER, programKey(), u"register_handle"_qs, state);
}

void ShellIntegration::UnregisterShellExtension() {
    for (const char* key : HandlerKeys)
        DeleteRegKey(m_store, HKEY_CLASSES_ROOT, QString::fromLatin1(key));
    setHandlerState(u"Unregistered"_qs);
    m_associations.removeFromContextMenu();
}

/// For the places whose shortcut is a file of its own. Empty for the others, and for "other" without a folder.
QString ShellIntegration::shortcutPath(const QString& place, const QString& folder) const {
    const std::pair<const char*, const QString&> places[] = {
        {"desktop", m_folders.desktop},
        {"startup", m_folders.autostart},
        {"other", folder},
    };
    for (const auto& [name, path] : places) {
        if (place == QLatin1String(name) && !path.isEmpty())
            return path + u'/' + ShortcutFile;
    }
    return {};
}

bool ShellIntegration::ShortcutExists(const QString& pPlace, const QString& pFolder) {
    if (pPlace == ProgramPlace)
        return m_associations.isInMenu();
    return fileExists(shortcutPath(pPlace, pFolder));
}

void ShellIntegration::CreateAppShortcut(const QString& pPlace, const QString& pFolder) {
    const QString path = shortcutPath(pPlace, pFolder);
    if (pPlace == ProgramPlace)
        m_associations.addToMenu();
    else if (!path.isEmpty() && DesktopFiles::replace(path, DesktopEntry::ofProgram(m_folders.program).bytes()))
        DesktopFiles::makeExecutable(path);
}

void ShellIntegration::DeleteAppShortcut(const QString& pPlace, const QString& pFolder) {
    if (pPlace == ProgramPlace)
        m_associations.removeFromMenu();
    else if (ShortcutExists(pPlace, pFolder))
        QFile::remove(shortcutPath(pPlace, pFolder));
}

void ShellIntegration::setThemeManifest(bool on) {
    const QString name = u"Quillmark.exe.manifest"_qs;
    const QString path = ProgramFolder() + u'/' + name;
    if (!on) {
        QFile::remove(path);
        return;
    }
    for (const QString& folder : {ProgramFolder(), shareFolder()}) {
        QFile source(folder + u'/' + name + u".template"_qs);
        if (!isNormalFile(source.fileName()) || !source.open(QIODevice::ReadOnly))
            continue;
        DesktopFiles::replace(path, source.readAll());
        return;
    }
}
