// quillmark-reg, run as a person runs it.

#include "settings/registry/RegistryData.h"
#include "settings/registry/SqliteRegistry.h"
#include "settings/registry/modRegistry.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class RegistryToolRuns : public testing::Test {
 protected:
    struct Outcome {
        int exitCode = -1;
        QString output;
        QString error;
    };

    Outcome runWith(const QStringList& arguments, const QByteArray& input = {}) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_CONFIG_HOME"_qs, m_config);
        environment.insert(u"HOME"_qs, m_home.path());
        environment.insert(u"LC_ALL"_qs, u"C.UTF-8"_qs);
        environment.remove(u"DISPLAY"_qs);
        process.setProcessEnvironment(environment);
        process.start(u"" QUILLMARK_REG_PROGRAM ""_qs, arguments);
        process.write(input);
        process.closeWriteChannel();
        EXPECT_TRUE(process.waitForFinished(60'000));
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                QString::fromUtf8(process.readAllStandardOutput()), QString::fromUtf8(process.readAllStandardError())};
    }
    /// The words of the command line, none of which holds a blank.
    Outcome run(const char* line, const QByteArray& input = {}) {
        return runWith(QString::fromUtf8(line).split(u' ', Qt::SkipEmptyParts), input);
    }

    QTemporaryDir m_home;
    QString m_config = m_home.filePath(u"config"_qs);
    QString m_path = m_config + u"/quillmark/registry.db"_qs;
};

}  // namespace

TEST_F(RegistryToolRuns, HelpAndVersionGoToStandardOutput) {
    const Outcome help = run("--help");
    EXPECT_EQ(help.exitCode, 0);
    for (const char* word : {"query", "add", "delete", "export", "import", "--store", "HKCU"}) {
        EXPECT_TRUE(help.output.contains(QLatin1String(word))) << word;
    }
    EXPECT_EQ(run("-h").output, help.output);
    const Outcome version = run("--version");
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_TRUE(version.output.startsWith(u"quillmark-reg "_qs));
    EXPECT_TRUE(QDir(m_home.path()).isEmpty());
}

TEST_F(RegistryToolRuns, WrongArgumentsAreToldAndChangeNothing) {
    for (const char* line :
         {"", "frobnicate", "query", "query A B", "query Software", "query HKCU --data x", "add", "add HKCU/a --data x",
          "add HKCU/a --name n --type nonsense --data x", "add HKCU/a --name n --type dword --data x",
          "add HKCU/a --name n --data x --data y", "add HKCU/a --name n --default", "delete HKCU/a --name n --tree",
          "export HKCU a b", "export HKCU --name x", "import a b", "query HKCU --unknown", "query HKCU --name"}) {
        const Outcome outcome = run(line);
        EXPECT_EQ(outcome.exitCode, 2) << line;
        EXPECT_TRUE(outcome.output.isEmpty()) << line;
        EXPECT_TRUE(outcome.error.startsWith(u"quillmark-reg: "_qs)) << line;
    }
    EXPECT_TRUE(QDir(m_home.path()).isEmpty());
}

TEST_F(RegistryToolRuns, TheStoreIsThatOfTheProgram) {
    EXPECT_EQ(run("add HKCU/Software/Quillmark/general --name ShowFullPath --data 0").exitCode, 0);
    SqliteRegistry store(m_path);
    EXPECT_EQ(GetRegString(store, HKEY_CURRENT_USER, u"Software/Quillmark/general"_qs, u"ShowFullPath"_qs), u"0"_qs);
}

TEST_F(RegistryToolRuns, ARelativeConfigFolderCountsAsNone) {
    m_config = u"relative"_qs;
    EXPECT_EQ(run("add HKCU/a").exitCode, 0);
    EXPECT_TRUE(QFile::exists(m_home.filePath(u".config/quillmark/registry.db"_qs)));
}

TEST_F(RegistryToolRuns, AnotherStoreCanBeNamed) {
    const QString other = m_home.filePath(u"other.db"_qs);
    EXPECT_EQ(runWith({u"--store"_qs, other, u"add"_qs, u"HKLM/x"_qs}).exitCode, 0);
    EXPECT_TRUE(QFile::exists(other));
    EXPECT_FALSE(QFile::exists(m_path));
}

TEST_F(RegistryToolRuns, EveryTypeIsWrittenAndShown) {
    const struct {
        const char* line;
        RegistryValue value;
        const char* shown;
    } cases[] = {
        {"add HKCU/k -n v -d text", RegistryData::fromText(u"text"_qs), "text\n"},
        {"add HKCU/k -n v", RegistryData::fromText(QString()), "\n"},
        {"add HKCU/k -n v -t expand -d %A%", RegistryData::fromText(u"%A%"_qs, RegistryType::ExpandString), "%A%\n"},
        {"add HKCU/k -n v -t dword -d 42", RegistryData::fromInteger(42), "42\n"},
        {"add HKCU/k -n v -t dword -d 0xFFFFFFFF", RegistryData::fromInteger(-1), "-1\n"},
        {"add HKCU/k -n v -t dword-be -d 258", {RegistryType::IntegerBigEndian, QByteArray("\0\0\1\2", 4)}, "258\n"},
        {"add HKCU/k -n v -t binary -d 00ff10", {RegistryType::Binary, QByteArray("\0\xFF\x10", 3)}, "00 ff 10\n"},
        {"add HKCU/k -n v -t multi -d a -d b", RegistryData::fromTexts({u"a"_qs, u"b"_qs}), "a\nb\n"},
        {"add HKCU/k -n v -t 11 -d 01", {11, QByteArray("\1", 1)}, "01\n"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(run(each.line).exitCode, 0) << each.line;
        SqliteRegistry store(m_path);
        RegistryValue value;
        store.readValue(HKEY_CURRENT_USER, u"k"_qs, u"v"_qs, value);
        EXPECT_EQ(value, each.value) << each.line;
        const Outcome shown = run("query HKCU/k --name v");
        EXPECT_EQ(shown.exitCode, 0);
        EXPECT_EQ(shown.output, QLatin1String(each.shown)) << each.line;
    }
}

TEST_F(RegistryToolRuns, AKeyIsShownWithValuesAndSubKeys) {
    run("add HKCR/k --default --data d");
    run("add HKCR/k --name n --type dword --data 1");
    run("add HKCR/k/sub/deeper");
    EXPECT_EQ(run("query hkcr/K").output, u"@ = string:\"d\"\n\"n\" = dword:1\n[HKCR/K/sub]\n"_qs);
    EXPECT_EQ(run("query HKCR/k --default").output, u"d\n"_qs);
    EXPECT_EQ(run("query HKLM").exitCode, 0);
}

TEST_F(RegistryToolRuns, WhatIsMissingIsTold) {
    for (const char* line : {"query HKCU/none", "query HKCU/none --name n", "query HKCU --default", "delete HKCU/none",
                             "delete HKCU/none --tree", "delete HKCU --name n", "export HKCU/none"}) {
        const Outcome outcome = run(line);
        EXPECT_EQ(outcome.exitCode, 1) << line;
        EXPECT_TRUE(outcome.error.contains(u"no such key or value"_qs)) << line;
        EXPECT_TRUE(outcome.output.isEmpty()) << line;
    }
    EXPECT_TRUE(QDir(m_home.path()).isEmpty());
}

TEST_F(RegistryToolRuns, ValuesKeysAndTreesAreDeleted) {
    run("add HKCU/k/sub --name n --data x");
    const Outcome refused = run("delete HKCU/k");
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_TRUE(refused.error.contains(u"sub-keys"_qs));
    EXPECT_EQ(run("delete HKCU/k/sub --name n").exitCode, 0);
    EXPECT_EQ(run("query HKCU/k/sub").output, QString());
    EXPECT_EQ(run("delete HKCU/k/sub").exitCode, 0);
    run("add HKCU/k/a/b/c");
    EXPECT_EQ(run("delete HKCU/k --tree").exitCode, 0);
    EXPECT_EQ(run("query HKCU/k").exitCode, 1);
}

TEST_F(RegistryToolRuns, AnExportedKeyIsImportedAgain) {
    runWith({u"add"_qs, u"HKCU/Köln/leer"_qs});
    runWith({u"add"_qs, u"HKCU/Köln"_qs, u"--name"_qs, u"a\nb"_qs, u"--data"_qs, u"\"x\"\n😀"_qs});
    const QString file = m_home.filePath(u"out.txt"_qs);
    EXPECT_EQ(runWith({u"export"_qs, u"HKCU/Köln"_qs, file}).exitCode, 0);
    const QString text = run("export HKCU/Köln").output;
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(written.readAll()), text);
    EXPECT_EQ(run("delete HKCU/Köln --tree").exitCode, 0);
    EXPECT_EQ(runWith({u"import"_qs, file}).exitCode, 0);
    EXPECT_EQ(run("export HKCU/Köln").output, text);
    EXPECT_EQ(run("delete HKCU/Köln --tree").exitCode, 0);
    EXPECT_EQ(run("import", text.toUtf8()).exitCode, 0);
    EXPECT_EQ(run("export HKCU/Köln").output, text);
    EXPECT_TRUE(run("export").output.contains(u"[HKCU/Köln/leer]"_qs));
}

TEST_F(RegistryToolRuns, AMalformedTextIsRefusedWithItsLineAndWhole) {
    const Outcome outcome = run("import", "quillmark-registry 1\n[HKCU/a]\n\"x\" = dword:1\nnonsense\n");
    EXPECT_EQ(outcome.exitCode, 4);
    EXPECT_EQ(outcome.error, u"quillmark-reg: standard input:4: neither a key nor a value\n"_qs);
    EXPECT_TRUE(QDir(m_home.path()).isEmpty());
}

TEST_F(RegistryToolRuns, FilesAndStoresOutOfReachAreTold) {
    const QString none = m_home.filePath(u"none/file"_qs);
    EXPECT_EQ(runWith({u"import"_qs, none}).exitCode, 3);
    run("add HKCU/a");
    EXPECT_EQ(runWith({u"export"_qs, u"HKCU"_qs, none}).exitCode, 3);
    QFile blocking(m_home.filePath(u"blocking"_qs));
    ASSERT_TRUE(blocking.open(QIODevice::WriteOnly));
    const QString store = blocking.fileName() + u"/registry.db"_qs;
    const Outcome outcome = runWith({u"--store"_qs, store, u"add"_qs, u"HKCU/a"_qs});
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_TRUE(outcome.error.contains(u"cannot be written"_qs));
}
