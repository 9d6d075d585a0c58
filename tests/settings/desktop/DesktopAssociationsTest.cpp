#include "settings/desktop/DesktopAssociations.h"
#include "settings/desktop/DesktopFixture.h"
#include "settings/desktop/MimePackage.h"
#include "settings/registry/SqliteRegistry.h"
#include "support/AnotherUser.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <vector>

namespace {

const QByteArray SomeList =
    "# chosen by hand\n"
    "[Removed Associations]\n"
    "text/plain=emacs.desktop;\n"
    "\n"
    "[Default Applications]\n"
    "text/plain=vim.desktop\n"
    "broken line without a sign\n"
    "\n"
    "[X-Other Group]\n"
    "key=value";

class FilesOfTheDesktop : public DesktopFixture {
 protected:
    void add(const char* extension) {
        desktop.RegisterExtension(QString::fromLatin1(extension), u"Some files"_qs, false, true);
    }
    void remove(const char* extension) { desktop.UnregisterExtension(QString::fromLatin1(extension)); }
    void setMode(const QString& file, mode_t mode) const {
        ASSERT_EQ(::chmod(QFile::encodeName(file).constData(), mode), 0);
    }
    /// Lets another user into the home, and into the two folders of the test program that are above it.
    void openHome() const {
        const QString above = QFileInfo(home.path()).path();
        setMode(above, 0711);
        setMode(QFileInfo(above).path(), 0711);
        QDirIterator walk(home.path(), QDir::AllEntries | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
        setMode(home.path(), 0755);
        while (walk.hasNext())
            setMode(walk.next(), 0755);
    }
    void registerProject() {
        desktop.RegisterShellExtension();
        desktop.RegisterExtension(u"qmp"_qs, u"Quillmark Project"_qs, true, true);
    }
};

}  // namespace

TEST_F(FilesOfTheDesktop, FilesOfAKnownTypeOpenInTheProgram) {
    add("c");
    EXPECT_EQ(list(),
              "[Default Applications]\ntext/x-csrc=Quillmark.desktop;\n"
              "[Added Associations]\ntext/x-csrc=Quillmark.desktop;\n");
    EXPECT_EQ(defaultOf(u"text/x-csrc"_qs), u"Quillmark.desktop"_qs);
    EXPECT_TRUE(entry().contains("\nMimeType=text/x-csrc;\n"));
    EXPECT_TRUE(entry().contains("\nNoDisplay=true\n"));
    EXPECT_EQ(run(u"desktop-file-validate"_qs, {entryPath()}), QString());
    EXPECT_FALSE(QFileInfo::exists(folders.mime)) << "the system knows the type";
    EXPECT_EQ(messages, QStringList());
}

TEST_F(FilesOfTheDesktop, AnUnknownTypeIsDescribedToTheDesktop) {
    desktop.RegisterExtension(u"cfm"_qs, u"Pages <of> \"&\" ours"_qs, false, true);
    EXPECT_EQ(defaultOf(u"text/x-quillmark-cfm"_qs), u"Quillmark.desktop"_qs);
    EXPECT_TRUE(bytesOf(folders.mime + u"/globs2"_qs).contains(":text/x-quillmark-cfm:*.cfm\n"));
    EXPECT_TRUE(bytesOf(folders.mime + u"/subclasses"_qs).contains("text/x-quillmark-cfm text/plain\n"));
    EXPECT_TRUE(bytesOf(folders.mime + u"/text/x-quillmark-cfm.xml"_qs).contains("Pages &lt;of&gt; "));
}

TEST_F(FilesOfTheDesktop, ProjectsHaveATypeAndAnIcon) {
    registerProject();
    EXPECT_EQ(defaultOf(u"application/x-quillmark-project"_qs), u"Quillmark.desktop"_qs);
    EXPECT_TRUE(bytesOf(folders.mime + u"/globs2"_qs).contains(":application/x-quillmark-project:*.qmp\n"));
    EXPECT_TRUE(bytesOf(folders.mime + u"/icons"_qs).contains("application/x-quillmark-project:quillmark\n"));
}

TEST_F(FilesOfTheDesktop, TheContextMenuOffersTheProgramAndLeavesTheDefault) {
    put(folders.mimeAppsList,
        "[Default Applications]\ntext/plain=vim.desktop\n[Added Associations]\ntext/plain=vim.desktop;\n");
    desktop.RegisterShellExtension();
    EXPECT_EQ(list(),
              "[Default Applications]\ntext/plain=vim.desktop\n"
              "[Added Associations]\ntext/plain=vim.desktop;Quillmark.desktop;\n");
    EXPECT_TRUE(entry().contains("\nMimeType=text/plain;\n"));
}

TEST_F(FilesOfTheDesktop, TypesStayWhenTheContextMenuIsTakenBack) {
    registerProject();
    desktop.UnregisterShellExtension();
    EXPECT_EQ(defaultOf(u"application/x-quillmark-project"_qs), u"Quillmark.desktop"_qs);
    EXPECT_FALSE(list().contains("text/plain"));
    add("txt");
    desktop.RegisterShellExtension();
    desktop.UnregisterShellExtension();
    EXPECT_TRUE(list().contains("text/plain"));
}

TEST_F(FilesOfTheDesktop, WhatIsUndoneInAnyOrderLeavesEveryFileAsItWas) {
    const QByteArray lists[] = {SomeList, "", "[Default Applications]", QByteArray("\0\xff\n[", 4)};
    std::mt19937 random(11);
    for (const QByteArray& bytes : lists) {
        put(folders.mimeAppsList, bytes);
        const QMap<QString, QByteArray> before = files();
        std::vector<const char*> extensions{"txt", "c", "cfm", "htm", "html", "qmp"};
        std::ranges::shuffle(extensions, random);
        for (const char* extension : extensions)
            add(extension);
        desktop.RegisterShellExtension();
        EXPECT_EQ(defaultOf(u"text/plain"_qs), u"Quillmark.desktop"_qs);
        std::ranges::shuffle(extensions, random);
        for (const char* extension : extensions)
            remove(extension);
        desktop.UnregisterShellExtension();
        EXPECT_EQ(files(), before) << bytes.constData();
    }
}

TEST_F(FilesOfTheDesktop, WithoutAnyFileBeforeThereIsNoneAfterwards) {
    const QMap<QString, QByteArray> before = files();
    registerProject();
    add("txt");
    EXPECT_NE(files(), before);
    remove("txt");
    remove("qmp");
    desktop.UnregisterShellExtension();
    EXPECT_EQ(files(), before);
}

TEST_F(FilesOfTheDesktop, CachesAndPackagesOfOthersStay) {
    put(folders.mimePackages() + u"/other.xml"_qs,
        MimePackage::bytes(u"text/x-other"_qs, u"other"_qs, u"Other"_qs, {}));
    put(folders.applications + u"/other.desktop"_qs,
        "[Desktop Entry]\nType=Application\nName=Other\nExec=other\nMimeType=text/x-other;\n");
    run(u"update-mime-database"_qs, {folders.mime});
    run(u"update-desktop-database"_qs, {folders.applications});
    const QMap<QString, QByteArray> before = files();
    add("cfm");
    EXPECT_TRUE(bytesOf(folders.mime + u"/globs2"_qs).contains("*.other"));
    remove("cfm");
    EXPECT_EQ(files(), before);
}

TEST_F(FilesOfTheDesktop, ExtensionsOfOneTypeShareIt) {
    add("htm");
    add("html");
    remove("htm");
    EXPECT_EQ(defaultOf(u"text/html"_qs), u"Quillmark.desktop"_qs);
    remove("html");
    EXPECT_EQ(list(), "");
    EXPECT_FALSE(QFileInfo::exists(folders.mimeAppsList));
}

TEST_F(FilesOfTheDesktop, AnAssociationThatAnotherProgramTookOverIsNoLongerOurs) {
    add("c");
    EXPECT_TRUE(desktop.IsOurAssociation(u"c"_qs));
    put(folders.mimeAppsList, "[Default Applications]\ntext/x-csrc=gedit.desktop;Quillmark.desktop;\n");
    EXPECT_FALSE(desktop.IsOurAssociation(u"c"_qs));
    add("c");
    EXPECT_TRUE(desktop.IsOurAssociation(u"c"_qs));
    EXPECT_EQ(defaultOf(u"text/x-csrc"_qs), u"Quillmark.desktop"_qs);
    remove("c");
    EXPECT_EQ(list(), "[Default Applications]\ntext/x-csrc=gedit.desktop;\n");
}

TEST_F(FilesOfTheDesktop, AChoiceMadeOutsideBeforeStaysAfterwards) {
    put(folders.mimeAppsList, "[Default Applications]\ntext/x-csrc=Quillmark.desktop\n");
    const QByteArray before = list();
    add("c");
    remove("c");
    EXPECT_EQ(list(), before);
}

TEST_F(FilesOfTheDesktop, AnEntryOfOthersIsUsedAndStays) {
    put(entryPath(), "[Desktop Entry]\nType=Application\nName=My own\nExec=mine %F\n");
    const QMap<QString, QByteArray> before = files();
    add("c");
    EXPECT_EQ(entry(), before.value(entryPath()));
    remove("c");
    EXPECT_EQ(files(), before);
}

TEST_F(FilesOfTheDesktop, AnEditedEntryIsNotTouchedAgain) {
    add("c");
    put(entryPath(), entry() + "Keywords=mine;\n");
    const QByteArray edited = entry();
    add("cfm");
    remove("cfm");
    remove("c");
    EXPECT_EQ(entry(), edited);
}

TEST_F(FilesOfTheDesktop, AnInstalledEntryServesInPlaceOfAnOwnOne) {
    put(path(u"shared/applications/Quillmark.desktop"_qs), "[Desktop Entry]\n");
    add("c");
    EXPECT_FALSE(QFileInfo::exists(entryPath()));
    EXPECT_TRUE(list().contains("text/x-csrc=Quillmark.desktop;"));
    EXPECT_FALSE(desktop.ShortcutExists(u"program"_qs));
}

TEST_F(FilesOfTheDesktop, TheMenuEntryAndTheEntryForFilesDoNotDisturbEachOther) {
    add("c");
    EXPECT_FALSE(desktop.ShortcutExists(u"program"_qs)) << "hidden from the menu";
    desktop.CreateAppShortcut(u"program"_qs);
    EXPECT_TRUE(desktop.ShortcutExists(u"program"_qs));
    EXPECT_FALSE(entry().contains("NoDisplay"));
    EXPECT_TRUE(entry().contains("MimeType=text/x-csrc;"));
    desktop.DeleteAppShortcut(u"program"_qs);
    EXPECT_FALSE(desktop.ShortcutExists(u"program"_qs));
    EXPECT_TRUE(entry().contains("NoDisplay=true")) << "files still open by it";
    desktop.CreateAppShortcut(u"program"_qs);
    remove("c");
    EXPECT_TRUE(desktop.ShortcutExists(u"program"_qs)) << "the menu does not depend on types";
    desktop.DeleteAppShortcut(u"program"_qs);
    EXPECT_FALSE(QFileInfo::exists(entryPath()));
}

TEST_F(FilesOfTheDesktop, AMovedProgramIsStartedWhereItIs) {
    add("c");
    DesktopFolders moved = folders;
    moved.program = path(u"opt/elsewhere/quillmark"_qs);
    put(moved.program, "");
    ShellIntegration again(
        store, [](const QString&) {}, moved);
    again.RegisterExtension(u"c"_qs, {}, false, true);
    EXPECT_TRUE(entry().contains("\nExec=" + QFile::encodeName(moved.program) + " %f\n"));
    again.UnregisterExtension(u"c"_qs);
    EXPECT_FALSE(QFileInfo::exists(entryPath()));
}

TEST_F(FilesOfTheDesktop, AnExtensionThatNoFileCanHaveChangesNoFile) {
    const QMap<QString, QByteArray> before = files();
    const QString extensions[] = {
        {}, u"a/b"_qs, u"a\nb"_qs, QString(QChar(0)), u"../x"_qs, QString(300, u'x'), QString(QChar(0xd800))};
    for (const QString& extension : extensions) {
        desktop.RegisterExtension(extension, u"Odd"_qs, true, true);
        desktop.UnregisterExtension(extension);
    }
    EXPECT_EQ(files(), before);
}

TEST_F(FilesOfTheDesktop, OddExtensionsHaveTypesOfTheirOwn) {
    const QString extensions[] = {u"my ext"_qs, u"x*y"_qs, u"x[y"_qs, u"größe"_qs, u"a&b<c"_qs,
                                  u"x;y=z"_qs,  u"%41"_qs, u"-x"_qs,  u"x'\"$`"_qs};
    const QMap<QString, QByteArray> before = files();
    for (const QString& extension : extensions)
        desktop.RegisterExtension(extension, {}, false, true);
    const QByteArray globs = bytesOf(folders.mime + u"/globs2"_qs);
    for (const QString& extension : extensions) {
        const QString type = MimePackage::typesOf(extension).first();
        EXPECT_TRUE(globs.contains(':' + type.toUtf8() + ':')) << type.toStdString();
        EXPECT_EQ(defaultOf(type), u"Quillmark.desktop"_qs) << type.toStdString();
        EXPECT_TRUE(desktop.IsOurAssociation(extension)) << type.toStdString();
    }
    EXPECT_EQ(run(u"desktop-file-validate"_qs, {entryPath()}), QString());
    for (const QString& extension : extensions)
        desktop.UnregisterExtension(extension);
    EXPECT_EQ(files(), before);
}

TEST_F(FilesOfTheDesktop, ALinkedListStaysALink) {
    put(path(u"dotfiles/mime"_qs), SomeList);
    QDir().mkpath(path(u"config"_qs));
    ASSERT_TRUE(QFile::link(path(u"dotfiles/mime"_qs), folders.mimeAppsList));
    const QMap<QString, QByteArray> before = files();
    add("txt");
    EXPECT_TRUE(QFileInfo(folders.mimeAppsList).isSymLink());
    EXPECT_TRUE(bytesOf(path(u"dotfiles/mime"_qs)).contains("text/plain=Quillmark.desktop;vim.desktop\n"));
    remove("txt");
    EXPECT_EQ(files(), before);
}

TEST_F(FilesOfTheDesktop, TheModeOfTheListStays) {
    put(folders.mimeAppsList, SomeList);
    setMode(folders.mimeAppsList, 0640);
    add("txt");
    struct stat status {};
    ASSERT_EQ(::stat(QFile::encodeName(folders.mimeAppsList).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
}

TEST_F(FilesOfTheDesktop, AListThatMayNotBeWrittenStaysAndTheRestIsDone) {
    put(folders.mimeAppsList, SomeList);
    setMode(folders.mimeAppsList, 0444);
    add("txt");
    EXPECT_EQ(list(), SomeList);
    EXPECT_TRUE(entry().contains("MimeType=text/plain;"));
    EXPECT_TRUE(desktop.IsOurAssociation(u"txt"_qs)) << "registered, though not preferred";
    remove("txt");
    EXPECT_EQ(list(), SomeList);
    EXPECT_FALSE(QFileInfo::exists(entryPath()));
    EXPECT_EQ(messages, QStringList());
}

TEST_F(FilesOfTheDesktop, WhatCouldNotBeUndoneIsUndoneLater) {
    put(folders.mimeAppsList, SomeList);
    add("txt");
    setMode(folders.mimeAppsList, 0444);
    const QByteArray with = list();
    remove("txt");
    EXPECT_EQ(list(), with);
    setMode(folders.mimeAppsList, 0644);
    remove("txt");
    EXPECT_EQ(list(), SomeList);
}

TEST_F(FilesOfTheDesktop, FoldersWithoutPermissionLoseNothing) {
    put(folders.mimeAppsList, SomeList);
    put(entryPath(), "");
    openHome();
    const QString closed[] = {path(u"config"_qs), path(u"data"_qs), folders.applications, home.path()};
    for (const QString& folder : closed)
        setMode(folder, 0555);
    const QMap<QString, QByteArray> before = files();
    EXPECT_TRUE(asSomebodyElse([&] {
        add("txt");
        add("cfm");
        registerProject();
        desktop.CreateAppShortcut(u"program"_qs);
        desktop.CreateAppShortcut(u"desktop"_qs);
        desktop.CreateAppShortcut(u"startup"_qs);
        desktop.DeleteAppShortcut(u"program"_qs);
        remove("txt");
        return messages == QStringList(u"8"_qs) && files() == before;
    }));
    EXPECT_EQ(files(), before);
    for (const QString& folder : closed)
        setMode(folder, 0755);
}

TEST_F(FilesOfTheDesktop, AnUnreadableListIsNeverReplaced) {
    put(folders.mimeAppsList, SomeList);
    openHome();
    setMode(folders.mimeAppsList, 0000);
    setMode(path(u"config"_qs), 0777);
    EXPECT_TRUE(asSomebodyElse([&] {
        add("txt");
        remove("txt");
        return messages.isEmpty();
    }));
    EXPECT_EQ(list(), SomeList);
}

TEST_F(FilesOfTheDesktop, SomethingElseInPlaceOfTheListIsLeftAlone) {
    QDir().mkpath(folders.mimeAppsList);
    add("txt");
    EXPECT_TRUE(QFileInfo(folders.mimeAppsList).isDir());
    remove("txt");
    QDir().rmdir(folders.mimeAppsList);
    ASSERT_EQ(::mkfifo(QFile::encodeName(folders.mimeAppsList).constData(), 0600), 0);
    add("txt");
    EXPECT_TRUE(desktop.IsOurAssociation(u"txt"_qs)) << "and nobody waits for the pipe";
    struct stat status {};
    ASSERT_EQ(::stat(QFile::encodeName(folders.mimeAppsList).constData(), &status), 0);
    EXPECT_TRUE(S_ISFIFO(status.st_mode));
}

TEST_F(FilesOfTheDesktop, ALargeListKeepsEveryByte) {
    QByteArray large = "[Default Applications]\n";
    for (int i = 0; large.size() < 10 * 1024 * 1024; ++i)
        large += "text/x-" + QByteArray::number(i) + "=some.desktop;other.desktop;\n";
    put(folders.mimeAppsList, large);
    add("txt");
    EXPECT_EQ(list().size(), large.size() + qsizetype(strlen("text/plain=Quillmark.desktop;\n") * 2 +
                                                      strlen("[Added Associations]\n")));
    remove("txt");
    EXPECT_EQ(list(), large);
    large.append(10 * 1024 * 1024, 'x');
    put(folders.mimeAppsList, large);
    add("txt");
    EXPECT_EQ(list(), large) << "more than any such list has";
}

TEST_F(FilesOfTheDesktop, WithoutTheToolsTheFilesAreEnough) {
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nonexistent");
    const QMap<QString, QByteArray> before = files();
    add("cfm");
    qputenv("PATH", path);
    EXPECT_EQ(defaultOf(u"text/x-quillmark-cfm"_qs), u"Quillmark.desktop"_qs);
    EXPECT_FALSE(QFileInfo::exists(folders.mime + u"/mime.cache"_qs));
    qputenv("PATH", "/nonexistent");
    remove("cfm");
    qputenv("PATH", path);
    EXPECT_EQ(files(), before);
}

TEST_F(FilesOfTheDesktop, ToolsGetTheirFolderAndMayFailOrHang) {
    const QString tools = path(u"tools"_qs);
    for (const char* name : {"update-mime-database", "update-desktop-database"}) {
        const QString tool = tools + u'/' + QString::fromLatin1(name);
        put(tool, "#!/bin/sh\nprintf '%s|' \"$0\" \"$@\" >>" + QFile::encodeName(tools) +
                      "/calls\necho noise >&2\n[ \"${0##*-desktop-}\" = database ] && exit 3\nexec /bin/sleep 600\n");
        setMode(tool, 0755);
    }
    const QByteArray before = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(tools));
    add("cfm");
    qputenv("PATH", before);
    EXPECT_EQ(QString::fromUtf8(bytesOf(tools + u"/calls"_qs)),
              QStringList({tools + u"/update-desktop-database"_qs, folders.applications,
                           tools + u"/update-mime-database"_qs, folders.mime, QString()})
                  .join(u'|'));
    EXPECT_EQ(defaultOf(u"text/x-quillmark-cfm"_qs), u"Quillmark.desktop"_qs);
}

TEST_F(FilesOfTheDesktop, SeveralProcessesAtOnceLoseNothing) {
    QDir().mkpath(path(u"config"_qs));
    const QByteArray extensions[] = {"one", "two", "three", "four"};
    std::vector<pid_t> children;
    const QString database = path(u"registry.db"_qs);
    for (const QByteArray& extension : extensions) {
        children.push_back(::fork());
        if (children.back() == 0) {
            SqliteRegistry own(database);
            ShellIntegration(
                own, [](const QString&) {}, folders)
                .RegisterExtension(QString::fromLatin1(extension), {}, false, true);
            ::_exit(0);
        }
    }
    for (const pid_t child : children) {
        int status = -1;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    SqliteRegistry all(database);
    for (const QByteArray& extension : extensions) {
        EXPECT_TRUE(list().contains("text/x-quillmark-" + extension + "=Quillmark.desktop;")) << extension.constData();
        ShellIntegration(
            all, [](const QString&) {}, folders)
            .UnregisterExtension(QString::fromLatin1(extension));
    }
    EXPECT_FALSE(QFileInfo::exists(folders.mimeAppsList));
    EXPECT_FALSE(QFileInfo::exists(entryPath()));
}

TEST_F(FilesOfTheDesktop, TheRecordIsGoneWhenNothingIsLeftToUndo) {
    registerProject();
    remove("qmp");
    desktop.UnregisterShellExtension();
    EXPECT_EQ(DesktopRecord::load(store), DesktopRecord());
}

TEST(DesktopRecordInTheStore, ComesBackAsItWas) {
    MemoryRegistry store;
    DesktopRecord record;
    record.types = {{u"c"_qs, {u"text/x-csrc"_qs}}, {u"ts"_qs, {u"video/mp2t"_qs, u"text/x-ts"_qs}}};
    record.contextMenu = true;
    record.marks = {"line [Added Associations]text/plain", QByteArray("\0\xff%", 3)};
    EXPECT_TRUE(record.save(store));
    EXPECT_EQ(DesktopRecord::load(store), record);
    EXPECT_TRUE(DesktopRecord().save(store));
    EXPECT_EQ(DesktopRecord::load(store), DesktopRecord());
}

TEST(DesktopFoldersOfTheUser, AreThoseOfTheEnvironment) {
    const DesktopFolders folders = DesktopFolders::ofUser();
    EXPECT_EQ(folders.mimeAppsList, qEnvironmentVariable("XDG_CONFIG_HOME") + u"/mimeapps.list"_qs);
    EXPECT_EQ(folders.autostart, qEnvironmentVariable("XDG_CONFIG_HOME") + u"/autostart"_qs);
    EXPECT_EQ(folders.applications, qEnvironmentVariable("XDG_DATA_HOME") + u"/applications"_qs);
    EXPECT_EQ(folders.mimePackages(), qEnvironmentVariable("XDG_DATA_HOME") + u"/mime/packages"_qs);
    EXPECT_FALSE(folders.sharedFolders.contains(qEnvironmentVariable("XDG_DATA_HOME")));
    EXPECT_TRUE(QFileInfo(folders.program).isExecutable());
}
