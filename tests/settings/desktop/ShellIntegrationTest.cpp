#include "platform/Folders.h"
#include "settings/desktop/DesktopFixture.h"
#include "settings/desktop/ShellIntegration.h"
#include "settings/registry/RegistryText.h"
#include "settings/registry/ScriptedRegistry.h"
#include "settings/registry/modRegistry.h"

namespace {

constexpr const char* HandlerKeys[] = {
    "*/shellex/ContextMenuHandlers/Quillmark",
    "Folder/shellex/ContextMenuHandlers/Quillmark",
    "lnkfile/shellex/ContextMenuHandlers/Quillmark",
};

class ShellKeys : public DesktopFixture {
 protected:
    QString command() const { return folders.program + u".exe %1"_qs; }
    QString classText(const char* key, const char* name = "") {
        return GetRegString(store, HKEY_CLASSES_ROOT, QString::fromLatin1(key), QString::fromLatin1(name));
    }
    QString application(const char* extension) {
        return GetRegString(
            store, HKEY_CURRENT_USER,
            u"Software/Microsoft/Windows/CurrentVersion/Explorer/FileExts/."_qs + QString::fromLatin1(extension),
            u"Application"_qs);
    }
    QString ownValue(const char* name) {
        return GetRegString(store, HKEY_CURRENT_USER, u"Software/Quillmark"_qs, QString::fromLatin1(name));
    }
    bool hasKey(const char* key) {
        return store.openKey(HKEY_CLASSES_ROOT, QString::fromLatin1(key)) == RegistryCode::Ok;
    }
    void addHandler(const char* id, const char* description) {
        SetRegString(store, HKEY_CLASSES_ROOT, u"CLSID/"_qs + QString::fromLatin1(id), {},
                     QString::fromLatin1(description));
    }
    QString classesAsText() { return RegistryText::exportKey(store, {HKEY_CLASSES_ROOT, {}}).value_or(QString()); }
};

}  // namespace

TEST_F(ShellKeys, AnExtensionIsRegisteredWithEveryKey) {
    desktop.RegisterExtension(u"txt"_qs, u"Text"_qs, true, true);
    EXPECT_EQ(classText("Applications/Quillmark.exe/Shell/Open/Command"), command());
    EXPECT_EQ(application("txt"), u"Quillmark.exe"_qs);
    EXPECT_EQ(classText(".txt"), u"Quillmark.txt"_qs);
    EXPECT_EQ(classText(".txt", "Content Type"), u"text/plain"_qs);
    EXPECT_EQ(classText("Quillmark.txt"), u"Text"_qs);
    RegistryValue flags;
    EXPECT_EQ(store.readValue(HKEY_CLASSES_ROOT, u"Quillmark.txt"_qs, u"EditFlags"_qs, flags), RegistryCode::Ok);
    EXPECT_EQ(flags, (RegistryValue{RegistryType::Integer, QByteArray(4, '\0')}));
    EXPECT_EQ(classText("Quillmark.txt/DefaultIcon"), path(u"opt/bin/qmproject.ico"_qs));
    for (const char* key : {"Quillmark.txt/Shell", "Quillmark.txt/Shell/Open"}) {
        RegistryValue empty;
        EXPECT_EQ(store.readValue(HKEY_CLASSES_ROOT, QString::fromLatin1(key), {}, empty), RegistryCode::Ok) << key;
        EXPECT_EQ(empty, (RegistryValue{RegistryType::String, QByteArray(2, '\0')})) << key;
    }
    EXPECT_EQ(classText("Quillmark.txt/Shell/Open/Command"), command());
    EXPECT_EQ(messages, QStringList());
}

TEST_F(ShellKeys, WithoutIconThereIsNoKeyForIt) {
    desktop.RegisterExtension(u"txt"_qs, u"Text"_qs, false, true);
    EXPECT_FALSE(hasKey("Quillmark.txt/DefaultIcon"));
}

TEST_F(ShellKeys, AnExtensionWithAContentTypeIsLeftAloneUnlessForced) {
    SetRegString(store, HKEY_CLASSES_ROOT, u".txt"_qs, u"Content Type"_qs, u"text/other"_qs);
    const QString before = classesAsText();
    const QMap<QString, QByteArray> filesBefore = files();
    desktop.RegisterExtension(u"txt"_qs, u"Text"_qs, false, false);
    EXPECT_EQ(classesAsText(), before);
    EXPECT_EQ(application("txt"), QString());
    EXPECT_EQ(files(), filesBefore);
    desktop.RegisterExtension(u"txt"_qs, u"Text"_qs, false, true);
    EXPECT_EQ(classText(".txt"), u"Quillmark.txt"_qs);
}

TEST_F(ShellKeys, AnExtensionWithoutContentTypeNeedsNoForce) {
    SetRegString(store, HKEY_CLASSES_ROOT, u".txt"_qs, {}, u"other"_qs);
    desktop.RegisterExtension(u"txt"_qs, u"Text"_qs, false, false);
    EXPECT_EQ(classText(".txt"), u"Quillmark.txt"_qs);
}

TEST_F(ShellKeys, AnExtensionIsGivenBackToTheSystem) {
    desktop.RegisterExtension(u"c"_qs, u"C"_qs, false, true);
    desktop.UnregisterExtension(u"c"_qs);
    EXPECT_EQ(classText(".c"), u"txtfile"_qs);
    EXPECT_EQ(classText(".c", "Content Type"), u"text/plain"_qs);
    EXPECT_EQ(application("c"), QString());
    EXPECT_EQ(classText("Quillmark.c"), u"C"_qs) << "the class stays";
    EXPECT_FALSE(desktop.IsOurAssociation(u"c"_qs));
}

TEST_F(ShellKeys, AnExtensionWithoutContentTypeIsNotGivenBack) {
    SetRegString(store, HKEY_CLASSES_ROOT, u".c"_qs, {}, u"other"_qs);
    const QString before = classesAsText();
    desktop.UnregisterExtension(u"c"_qs);
    desktop.UnregisterExtension(u"never"_qs);
    EXPECT_EQ(classesAsText(), before);
}

TEST_F(ShellKeys, AnAssociationIsOursByTheFirstNineCharactersOfItsClass) {
    const std::pair<const char*, bool> rows[] = {{"Quillmark.txt", true}, {"Quillmark", true}, {"QuillmarkX", true},
                                                 {"Quillmar", false},     {"txtfile", false},  {"", false},
                                                 {" Quillmark", false},   {"quillmark", false}};
    for (const auto& [name, isOurs] : rows) {
        SetRegString(store, HKEY_CLASSES_ROOT, u".txt"_qs, {}, QString::fromLatin1(name));
        EXPECT_EQ(desktop.IsOurAssociation(u"txt"_qs), isOurs) << name;
    }
    EXPECT_FALSE(desktop.IsOurAssociation(u"none"_qs));
}

TEST_F(ShellKeys, ADescriptionIsThatOfTheClass) {
    EXPECT_EQ(desktop.DescribeExtension(u"txt"_qs), QString());
    SetRegString(store, HKEY_CLASSES_ROOT, u".txt"_qs, {}, u"txtfile"_qs);
    EXPECT_EQ(desktop.DescribeExtension(u"txt"_qs), QString());
    SetRegString(store, HKEY_CLASSES_ROOT, u"txtfile"_qs, {}, u"Text Document"_qs);
    EXPECT_EQ(desktop.DescribeExtension(u"txt"_qs), u"Text Document"_qs);
    SetRegString(store, HKEY_CLASSES_ROOT, {}, {}, u"the root itself"_qs);
    SetRegString(store, HKEY_CLASSES_ROOT, u".c"_qs, u"Content Type"_qs, u"text/x-c"_qs);
    EXPECT_EQ(desktop.DescribeExtension(u"c"_qs), QString()) << "an extension without a class";
}

TEST_F(ShellKeys, WithoutAHandlerThereIsAMessageAndTheStateIsFailed) {
    addHandler("{1}", "Quillmark's Helper Menu Handler 2");
    addHandler("{2}", "quillmark's helper menu handler");
    desktop.RegisterShellExtension();
    EXPECT_EQ(messages, QStringList(u"8"_qs));
    EXPECT_EQ(ownValue("register_handle"), u"Failed"_qs);
    EXPECT_EQ(classText("Applications/Quillmark.exe/Shell/Open/Command"), command());
    EXPECT_EQ(ownValue("path"), folders.program + u".exe"_qs);
    EXPECT_EQ(GetRegString(store, HKEY_LOCAL_MACHINE,
                           u"Software/Microsoft/Internet Explorer/View Source Editor/Editor Name"_qs, {}),
              folders.program + u".exe"_qs);
    for (const char* key : HandlerKeys) {
        EXPECT_FALSE(hasKey(key)) << key;
    }
}

TEST_F(ShellKeys, TheFirstHandlerIsEnteredForFilesFoldersAndLinks) {
    addHandler("{0}", "Another");
    addHandler("{1}", "Quillmark's Helper Menu Handler");
    addHandler("{2}", "Quillmark's Helper Menu Handler");
    desktop.RegisterShellExtension();
    EXPECT_EQ(messages, QStringList());
    EXPECT_EQ(ownValue("register_handle"), u"Registered"_qs);
    for (const char* key : HandlerKeys) {
        EXPECT_EQ(classText(key), u"{1}"_qs) << key;
    }
}

TEST_F(ShellKeys, TakingTheContextMenuBackLeavesTypesAndPaths) {
    addHandler("{1}", "Quillmark's Helper Menu Handler");
    desktop.RegisterShellExtension();
    desktop.RegisterExtension(u"qmp"_qs, u"Quillmark Project"_qs, true, true);
    desktop.UnregisterShellExtension();
    for (const char* key : HandlerKeys) {
        EXPECT_FALSE(hasKey(key)) << key;
    }
    EXPECT_EQ(ownValue("register_handle"), u"Unregistered"_qs);
    EXPECT_EQ(ownValue("path"), folders.program + u".exe"_qs);
    EXPECT_EQ(classText("Applications/Quillmark.exe/Shell/Open/Command"), command());
    EXPECT_EQ(classText(".qmp"), u"Quillmark.qmp"_qs);
    EXPECT_EQ(classText("Quillmark.qmp"), u"Quillmark Project"_qs);
    EXPECT_TRUE(desktop.IsOurAssociation(u"qmp"_qs));
}

TEST_F(ShellKeys, TakingBackWhatWasNeverThereOnlySetsTheState) {
    desktop.UnregisterShellExtension();
    EXPECT_EQ(ownValue("register_handle"), u"Unregistered"_qs);
    EXPECT_EQ(messages, QStringList());
}

TEST(ShellKeysOfABrokenStore, NothingButTheMessageIsReported) {
    const QTemporaryDir home;
    ScriptedRegistry store;
    store.writeResult = RegistryCode::DiskFull;
    store.createResult = RegistryCode::DiskFull;
    store.deleteResult = RegistryCode::AccessDenied;
    QStringList messages;
    DesktopFolders folders;
    folders.program = u"/opt/quillmark"_qs;
    folders.applications = home.filePath(u"applications"_qs);
    folders.mime = home.filePath(u"mime"_qs);
    folders.mimeAppsList = home.filePath(u"mimeapps.list"_qs);
    ShellIntegration desktop(
        store, [&](const QString& text) { messages << text; }, folders);
    desktop.RegisterExtension(u"txt"_qs, u"Text"_qs, true, true);
    desktop.RegisterShellExtension();
    desktop.UnregisterShellExtension();
    desktop.UnregisterExtension(u"txt"_qs);
    EXPECT_EQ(messages, QStringList(u"8"_qs));
    EXPECT_TRUE(QDir(home.path()).isEmpty()) << "what cannot be recorded is not done";
}

TEST_F(ShellKeys, ShortcutsAreMadeAndDeletedInTheirFolders) {
    const std::pair<QString, QString> places[] = {
        {u"desktop"_qs, path(u"Desktop/Quillmark.desktop"_qs)},
        {u"program"_qs, path(u"data/applications/Quillmark.desktop"_qs)},
        {u"startup"_qs, path(u"config/autostart/Quillmark.desktop"_qs)},
        {u"other"_qs, path(u"elsewhere/Quillmark.desktop"_qs)},
    };
    const QString other = path(u"elsewhere"_qs);
    for (const auto& [place, file] : places) {
        EXPECT_FALSE(desktop.ShortcutExists(place, other)) << place.toStdString();
        desktop.DeleteAppShortcut(place, other);
        desktop.CreateAppShortcut(place, other);
        EXPECT_TRUE(desktop.ShortcutExists(place, other)) << place.toStdString();
        const QByteArray entry = bytesOf(file);
        EXPECT_TRUE(entry.contains("\nName=Quillmark\n")) << entry.constData();
        EXPECT_TRUE(entry.contains("\nComment=Quillmark Access Shortcut\n")) << entry.constData();
        EXPECT_TRUE(entry.contains("\nPath=" + QFile::encodeName(path(u"opt/bin"_qs)) + '\n')) << entry.constData();
        EXPECT_TRUE(entry.contains("\nExec=" + QFile::encodeName(folders.program) + " %f\n")) << entry.constData();
        EXPECT_EQ(run(u"desktop-file-validate"_qs, {file}), QString());
        desktop.DeleteAppShortcut(place, other);
        EXPECT_FALSE(desktop.ShortcutExists(place, other)) << place.toStdString();
        EXPECT_FALSE(QFileInfo::exists(file));
    }
}

TEST_F(ShellKeys, AnyFileOfTheNameIsAShortcut) {
    put(path(u"Desktop/Quillmark.desktop"_qs), "");
    put(entryPath(), "");
    EXPECT_TRUE(desktop.ShortcutExists(u"desktop"_qs));
    EXPECT_TRUE(desktop.ShortcutExists(u"program"_qs));
    desktop.DeleteAppShortcut(u"program"_qs);
    EXPECT_FALSE(QFileInfo::exists(entryPath()));
}

TEST_F(ShellKeys, AnUnknownPlaceHasNoShortcut) {
    const QMap<QString, QByteArray> before = files();
    for (const char* place : {"", "other", "Desktop", "elsewhere"}) {
        desktop.CreateAppShortcut(QString::fromLatin1(place));
        EXPECT_FALSE(desktop.ShortcutExists(QString::fromLatin1(place))) << place;
        desktop.DeleteAppShortcut(QString::fromLatin1(place));
    }
    EXPECT_EQ(files(), before);
}

TEST_F(ShellKeys, AShortcutOnTheDesktopCanBeStarted) {
    desktop.CreateAppShortcut(u"desktop"_qs);
    EXPECT_TRUE(QFileInfo(path(u"Desktop/Quillmark.desktop"_qs)).isExecutable());
}

TEST_F(ShellKeys, TheThemeManifestIsCopiedFromItsTemplateAndDeleted) {
    const QString manifest = ProgramFolder() + u"/Quillmark.exe.manifest"_qs;
    desktop.setThemeManifest(true);
    EXPECT_FALSE(QFileInfo::exists(manifest)) << "there is no template";
    put(manifest + u".template"_qs, "theme");
    put(manifest, "an older and longer one");
    desktop.setThemeManifest(true);
    EXPECT_EQ(bytesOf(manifest), "theme");
    desktop.setThemeManifest(false);
    EXPECT_FALSE(QFileInfo::exists(manifest));
    EXPECT_EQ(bytesOf(manifest + u".template"_qs), "theme");
    desktop.setThemeManifest(false);
    EXPECT_EQ(messages, QStringList());
}
