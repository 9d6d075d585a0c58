#include "platform/Folders.h"
#include "platform/Paths.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace {

/// Sets an environment variable for one test.
class Variable {
 public:
    Variable(const char* name, const QByteArray& value) : m_name(name), m_before(qgetenv(name)) { set(value); }
    ~Variable() { set(m_before); }
    Q_DISABLE_COPY_MOVE(Variable)

 private:
    void set(const QByteArray& value) {
        if (value.isNull())
            qunsetenv(m_name);
        else
            qputenv(m_name, value);
    }

    const char* m_name;
    QByteArray m_before;
};

mode_t permissionsOf(const QString& path) {
    struct stat status {};
    return ::stat(path.toUtf8().constData(), &status) == 0 ? status.st_mode & ALLPERMS : 0;
}

}  // namespace

TEST(Folders, ConfigurationAndDataFollowTheEnvironment) {
    const Variable config("XDG_CONFIG_HOME", "/x//config/");
    const Variable data("XDG_DATA_HOME", "/x/data");
    EXPECT_EQ(configFolder(), u"/x/config/quillmark"_qs);
    EXPECT_EQ(ProgramFolder(u"/usr/bin"_qs), u"/x/data/quillmark"_qs);
}

TEST(Folders, EmptyRelativeAndUnreadableVariablesCountAsNotSet) {
    const Variable home("HOME", "/home/u");
    for (const QByteArray& value : {QByteArray(), QByteArray(""), QByteArray("config"), QByteArray("/x/\xFF")}) {
        const Variable config("XDG_CONFIG_HOME", value);
        const Variable data("XDG_DATA_HOME", value);
        EXPECT_EQ(configFolder(), u"/home/u/.config/quillmark"_qs);
        EXPECT_EQ(ProgramFolder(u"/usr/bin"_qs), u"/home/u/.local/share/quillmark"_qs);
    }
}

TEST(Folders, RelativeVariablesOfTheDesktopAreForgottenAndOthersKept) {
    const Variable config("XDG_CONFIG_HOME", "relative");
    const Variable data("XDG_DATA_HOME", "/x/data");
    const Variable runtime("XDG_RUNTIME_DIR", "./run");
    const Variable cache("XDG_CACHE_HOME", "");
    const Variable home("HOME", "relative");
    forgetUselessFolders();
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_CONFIG_HOME"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_RUNTIME_DIR"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_CACHE_HOME"));
    EXPECT_EQ(qgetenv("XDG_DATA_HOME"), "/x/data");
    EXPECT_EQ(qgetenv("HOME"), "relative");
}

TEST(Folders, AFolderOfTheSessionIsForgottenWhenItIsNotThere) {
    const QTemporaryDir base;
    const Variable data("XDG_DATA_HOME", base.filePath(u"data"_qs).toUtf8());
    const Variable runtime("XDG_RUNTIME_DIR", base.path().toUtf8());
    forgetUselessFolders();
    EXPECT_EQ(qgetenv("XDG_RUNTIME_DIR"), base.path().toUtf8());
    const Variable missing("XDG_RUNTIME_DIR", base.filePath(u"run"_qs).toUtf8());
    forgetUselessFolders();
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_RUNTIME_DIR"));
    EXPECT_TRUE(qEnvironmentVariableIsSet("XDG_DATA_HOME")) << "the program makes that itself";
}

TEST(Folders, WithoutAHomeTheUsersEntryTellsIt) {
    const Variable home("HOME", "relative");
    const Variable config("XDG_CONFIG_HOME", "");
    EXPECT_TRUE(configFolder().startsWith(u'/'));
    EXPECT_TRUE(configFolder().endsWith(u"/.config/quillmark"_qs));
    EXPECT_FALSE(configFolder().contains(u"relative"_qs));
}

TEST(Folders, ACopyWithItsLanguagesThatCanBeWrittenKeepsItsFilesBesideIt) {
    const QTemporaryDir copy;
    EXPECT_NE(ProgramFolder(copy.path()), copy.path());
    ASSERT_TRUE(QDir(copy.path()).mkdir(u"languages"_qs));
    EXPECT_EQ(ProgramFolder(copy.path()), copy.path());
    ::chmod(copy.path().toUtf8().constData(), 0555);
    EXPECT_NE(ProgramFolder(copy.path()), copy.path());
    ::chmod(copy.path().toUtf8().constData(), 0755);
}

TEST(Folders, WhatWasInstalledLiesInShareUnderThePrefix) {
    EXPECT_EQ(shareFolder(u"/usr/bin"_qs), u"/usr/share/quillmark"_qs);
    EXPECT_EQ(shareFolder(u"/bin"_qs), u"/share/quillmark"_qs);
    EXPECT_TRUE(IsFolderPath(executableFolder()));
}

TEST(Folders, AskingMakesNothing) {
    const QTemporaryDir base;
    const Variable config("XDG_CONFIG_HOME", base.filePath(u"c"_qs).toUtf8());
    const Variable data("XDG_DATA_HOME", base.filePath(u"d"_qs).toUtf8());
    const Variable temporary("TMPDIR", base.path().toUtf8());
    const Variable runtime("XDG_RUNTIME_DIR", "");
    for (const QString& folder : {configFolder(), ProgramFolder(), shareFolder(), temporaryFolder(), runtimeFolder()}) {
        EXPECT_FALSE(folder.isEmpty());
    }
    EXPECT_TRUE(QDir(base.path()).isEmpty());
}

TEST(Folders, TheTemporaryFolderIsThisUsersUnderTmpdirOrVarTmp) {
    const QString own = u"/quillmark-"_qs + QString::number(::geteuid());
    const QTemporaryDir base;
    const Variable temporary("TMPDIR", base.path().toUtf8());
    EXPECT_EQ(temporaryFolder(), base.path() + own);
    for (const QByteArray& value : {QByteArray(), QByteArray(""), QByteArray("tmp")}) {
        const Variable none("TMPDIR", value);
        EXPECT_TRUE(temporaryFolder().startsWith(u"/var/tmp"_qs + own));
    }
}

TEST(Folders, ATemporaryNameThatSomethingElseHasTakenIsPassedOver) {
    const QTemporaryDir base;
    const Variable temporary("TMPDIR", base.path().toUtf8());
    const QString first = temporaryFolder();
    ASSERT_EQ(::symlink("/etc", first.toUtf8().constData()), 0);
    EXPECT_EQ(temporaryFolder(), first + u".1"_qs);
    EXPECT_FALSE(makePrivateFolder(temporaryFolder()));
    EXPECT_EQ(temporaryFolder(), first + u".1"_qs);
    EXPECT_TRUE(makePrivateFolder(first));
}

TEST(Folders, APrivateFolderIsClosedToOthers) {
    const QTemporaryDir base;
    const QString fresh = base.filePath(u"fresh"_qs);
    const QString open = base.filePath(u"open"_qs);
    EXPECT_FALSE(makePrivateFolder(fresh));
    EXPECT_EQ(permissionsOf(fresh), 0700U);
    ::mkdir(open.toUtf8().constData(), 0777);
    EXPECT_FALSE(makePrivateFolder(open));
    EXPECT_EQ(permissionsOf(open), 0700U);
    EXPECT_EQ(makePrivateFolder(base.filePath(u"none/x"_qs)).number, ENOENT);
}

TEST(Folders, AFolderThatSomebodyElseOwnsIsNotPrivate) {
    const QTemporaryDir base;
    const QString foreign = base.filePath(u"foreign"_qs);
    ::mkdir(foreign.toUtf8().constData(), 0700);
    if (::chown(foreign.toUtf8().constData(), 4242, 4242) != 0)
        GTEST_SKIP() << "only root can give a folder away";
    EXPECT_EQ(makePrivateFolder(foreign).number, EACCES);
}

TEST(Folders, TheRuntimeFolderIsTheSessionsIfItCanBeUsed) {
    const QTemporaryDir session;
    const Variable set("XDG_RUNTIME_DIR", session.path().toUtf8());
    EXPECT_EQ(runtimeFolder(), session.path());
    for (const QByteArray& value : {QByteArray(), QByteArray(""), QByteArray("run"), QByteArray("/no/such/folder")}) {
        const Variable none("XDG_RUNTIME_DIR", value);
        EXPECT_EQ(runtimeFolder(), temporaryFolder());
    }
}

TEST(Folders, MakingAFolderMakesThoseAboveItForThisUserAlone) {
    const QTemporaryDir base;
    const QString deep = base.filePath(u"a/b/c"_qs);
    EXPECT_FALSE(makeFolder(deep));
    EXPECT_EQ(permissionsOf(base.filePath(u"a"_qs)), 0700U);
    EXPECT_EQ(permissionsOf(deep), 0700U);
    ::chmod(deep.toUtf8().constData(), 0755);
    EXPECT_FALSE(makeFolder(deep));
    EXPECT_EQ(permissionsOf(deep), 0755U);
}

TEST(Folders, AFileInTheWayStopsTheMakingOfAFolder) {
    const QTemporaryDir base;
    QFile file(base.filePath(u"file"_qs));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    EXPECT_EQ(makeFolder(file.fileName()).number, EEXIST);
    EXPECT_EQ(makeFolder(file.fileName() + u"/x"_qs).number, ENOTDIR);
}
