#include "settings/registry/RegistryData.h"
#include "settings/registry/SqliteRegistry.h"
#include "settings/registry/modRegistry.h"
#include "support/AnotherUser.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <memory>

namespace {

constexpr RegistryRoot Root = HKEY_CURRENT_USER;
const QString Key = u"Software/Quillmark/general"_qs;

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

void putContent(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

class RegistryInAFile : public testing::Test {
 protected:
    QString write(RegistryStore& store, const QString& name, const QString& text) {
        return SetRegString(store, Root, Key, name, text) ? u"written"_qs : u"refused"_qs;
    }
    QString read(RegistryStore& store, const QString& name) { return GetRegString(store, Root, Key, name); }
    QString damaged(int number) const { return m_path + u".damaged-%1"_qs.arg(number); }

    /// A store of many pages.
    QByteArray filledStore() {
        {
            SqliteRegistry store(m_path);
            store.runBatch([&] {
                for (int i = 0; i < 500; ++i)
                    SetRegString(store, Root, Key, QString::number(i), QString(200, u'x'));
                return RegistryCode::Ok;
            });
        }
        return contentOf(m_path);
    }

    /// The start continues with defaults, the damaged file is unchanged under its new name, and the new store works.
    void expectSetAside(SqliteRegistry& store, const QByteArray& found, int number = 1) {
        EXPECT_EQ(read(store, u"1"_qs), QString());
        EXPECT_EQ(contentOf(damaged(number)), found);
        EXPECT_FALSE(QFile::exists(m_path));
        EXPECT_EQ(write(store, u"1"_qs), u"written"_qs);
        SqliteRegistry later(m_path);
        EXPECT_EQ(read(later, u"1"_qs), u"new"_qs);
    }
    QString write(RegistryStore& store, const QString& name) { return write(store, name, u"new"_qs); }

    /// Sets these permissions of folder and file, and makes the private folders above them accessible to all.
    void setRights(mode_t folder, mode_t file) const {
        ASSERT_EQ(::chmod(QFile::encodeName(m_path).constData(), file), 0);
        ASSERT_EQ(::chmod(QFile::encodeName(m_folder).constData(), folder), 0);
        for (QDir above(m_folder); !above.isRoot(); above.setPath(QFileInfo(above.path()).path())) {
            struct stat status {};
            const QByteArray name = QFile::encodeName(above.path());
            ASSERT_EQ(::stat(name.constData(), &status), 0);
            ASSERT_EQ(::chmod(name.constData(), status.st_mode | S_IXOTH), 0);
        }
    }

    QTemporaryDir m_home;
    QString m_folder = m_home.filePath(u"config/quillmark"_qs);
    QString m_path = m_folder + u"/registry.db"_qs;
};

class DamagedStore : public RegistryInAFile, public testing::WithParamInterface<QByteArray> {};

}  // namespace

TEST_F(RegistryInAFile, ReadingAndDeletingInAFirstStartLeaveNothingBehind) {
    SqliteRegistry store(m_path);
    QStringList names;
    EXPECT_EQ(read(store, u"n"_qs), QString());
    EXPECT_EQ(store.openKey(Root, Key), RegistryCode::NotFound);
    EXPECT_EQ(store.subKeys(Root, Key, names), RegistryCode::NotFound);
    EXPECT_FALSE(DeleteRegTree(store, Root, Key));
    EXPECT_FALSE(DeleteRegValue(store, Root, Key, u"n"_qs));
    EXPECT_FALSE(WriteRegValue(store, Root, Key, u"n"_qs, QString()));
    EXPECT_TRUE(QDir(m_home.path()).isEmpty());
}

TEST_F(RegistryInAFile, TheFirstWriteMakesFolderAndFileForTheOwnerAlone) {
    {
        SqliteRegistry store(m_path);
        EXPECT_EQ(write(store, u"n"_qs), u"written"_qs);
    }
    struct stat status {};
    ASSERT_EQ(::stat(QFile::encodeName(m_path).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
    ASSERT_EQ(::stat(QFile::encodeName(m_folder).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700U);
    EXPECT_EQ(QDir(m_folder).entryList(QDir::Files), QStringList{u"registry.db"_qs});
}

TEST_F(RegistryInAFile, WhatIsWrittenIsThereForTheNextProcess) {
    {
        SqliteRegistry store(m_path);
        write(store, u"n"_qs, u"ünï"_qs);
        store.createKey(HKEY_CLASSES_ROOT, u"Empty"_qs);
    }
    SqliteRegistry store(m_path);
    EXPECT_EQ(read(store, u"N"_qs), u"ünï"_qs);
    EXPECT_EQ(store.openKey(HKEY_CLASSES_ROOT, u"empty"_qs), RegistryCode::Ok);
}

TEST_F(RegistryInAFile, TwoOpenStoresSeeEachOthersWrites) {
    SqliteRegistry one(m_path);
    SqliteRegistry two(m_path);
    EXPECT_EQ(read(two, u"n"_qs), QString());
    write(one, u"n"_qs, u"1"_qs);
    EXPECT_EQ(read(two, u"n"_qs), u"1"_qs);
    write(two, u"n"_qs, u"2"_qs);
    EXPECT_EQ(read(one, u"n"_qs), u"2"_qs);
}

TEST_F(RegistryInAFile, AStoreWhoseFileIsRemovedBeginsANewOne) {
    SqliteRegistry store(m_path);
    write(store, u"n"_qs);
    ASSERT_TRUE(QDir(m_folder).removeRecursively());
    EXPECT_EQ(read(store, u"n"_qs), QString());
    EXPECT_EQ(write(store, u"m"_qs), u"written"_qs);
    SqliteRegistry later(m_path);
    EXPECT_EQ(read(later, u"m"_qs), u"new"_qs);
}

TEST_F(RegistryInAFile, AFolderThatCannotBeMadeGivesDefaultsAndFailingWrites) {
    putContent(m_home.filePath(u"config"_qs), "a file in the way");
    SqliteRegistry store(m_path);
    EXPECT_EQ(read(store, u"n"_qs), QString());
    EXPECT_EQ(store.createKey(Root, Key), RegistryCode::AccessDenied);
    EXPECT_EQ(write(store, u"n"_qs), u"refused"_qs);
    EXPECT_EQ(store.runBatch([] { return RegistryCode::Ok; }), RegistryCode::AccessDenied);
    EXPECT_EQ(contentOf(m_home.filePath(u"config"_qs)), QByteArray("a file in the way"));
}

TEST_F(RegistryInAFile, AStoreInAFolderThatCannotBeWrittenIsRead) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can act for two users";
    {
        SqliteRegistry store(m_path);
        write(store, u"n"_qs, u"1"_qs);
    }
    setRights(0755, 0644);
    EXPECT_TRUE(asSomebodyElse([this] {
        SqliteRegistry store(m_path);
        const bool readFirst = read(store, u"n"_qs) == QLatin1String("1");
        const bool refused = write(store, u"n"_qs, u"2"_qs) == QLatin1String("refused");
        return readFirst && refused && read(store, u"n"_qs) == QLatin1String("1");
    }));
    EXPECT_EQ(QDir(m_folder).entryList(QDir::Files), QStringList{u"registry.db"_qs});
}

TEST_F(RegistryInAFile, AStoreThatCannotBeReadGivesDefaultsAndIsLeftAlone) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can act for two users";
    const QByteArray content = filledStore();
    setRights(0755, 0600);
    EXPECT_TRUE(asSomebodyElse([this] {
        SqliteRegistry store(m_path);
        return read(store, u"1"_qs).isEmpty() && write(store, u"1"_qs) == QLatin1String("refused");
    }));
    EXPECT_EQ(contentOf(m_path), content);
}

TEST_F(RegistryInAFile, AnEmptyFileIsAnEmptyStore) {
    ASSERT_TRUE(QDir().mkpath(m_folder));
    putContent(m_path, QByteArray());
    SqliteRegistry store(m_path);
    EXPECT_EQ(read(store, u"n"_qs), QString());
    EXPECT_EQ(write(store, u"n"_qs), u"written"_qs);
    EXPECT_EQ(read(store, u"n"_qs), u"new"_qs);
    EXPECT_FALSE(QFile::exists(damaged(1)));
}

TEST_P(DamagedStore, IsSetAsideByTheFirstRead) {
    ASSERT_TRUE(QDir().mkpath(m_folder));
    putContent(m_path, GetParam());
    SqliteRegistry store(m_path);
    expectSetAside(store, GetParam());
}

TEST_P(DamagedStore, IsSetAsideByTheFirstWriteWhichIsNotLost) {
    ASSERT_TRUE(QDir().mkpath(m_folder));
    putContent(m_path, GetParam());
    SqliteRegistry store(m_path);
    EXPECT_EQ(write(store, u"n"_qs), u"written"_qs);
    EXPECT_EQ(contentOf(damaged(1)), GetParam());
    SqliteRegistry later(m_path);
    EXPECT_EQ(read(later, u"n"_qs), u"new"_qs);
}

INSTANTIATE_TEST_SUITE_P(Garbage, DamagedStore,
                         testing::Values(QByteArray("xy"), QByteArray(15, 'x'), QByteArray("SQLite format 3"),
                                         QByteArray("SQLite format 3\0", 16), QByteArray(99, '\0'),
                                         QByteArray(100'000, '\xA5'), QByteArray("[general]\nShowFullPath=1\n")),
                         [](const auto& each) { return "Case" + std::to_string(each.index); });

TEST_F(RegistryInAFile, AStoreCutShortAnywhereIsSetAside) {
    const QByteArray whole = filledStore();
    ASSERT_GT(whole.size(), 40'000);
    for (const qsizetype size :
         {qsizetype(50), qsizetype(100), qsizetype(4000), qsizetype(4096), whole.size() / 2, whole.size() - 4097}) {
        QFile::remove(m_path);
        QFile::remove(damaged(1));
        putContent(m_path, whole.first(size));
        SqliteRegistry store(m_path);
        expectSetAside(store, whole.first(size));
    }
}

TEST_F(RegistryInAFile, APageThatTurnsOutBrokenLaterIsFoundByTheReadThatMeetsIt) {
    QByteArray bytes = filledStore();
    bytes.replace(3 * 4096, bytes.size() - 3 * 4096, QByteArray(bytes.size() - 3 * 4096, '\x55'));
    putContent(m_path, bytes);
    SqliteRegistry store(m_path);
    EXPECT_EQ(store.openKey(Root, u"Software"_qs), RegistryCode::Ok) << "the first pages are whole";
    expectSetAside(store, bytes);
}

TEST_F(RegistryInAFile, APageThatTurnsOutBrokenInAWriteDoesNotLoseTheWrite) {
    QByteArray bytes = filledStore();
    bytes.replace(3 * 4096, bytes.size() - 3 * 4096, QByteArray(bytes.size() - 3 * 4096, '\x55'));
    putContent(m_path, bytes);
    SqliteRegistry store(m_path);
    EXPECT_EQ(write(store, u"1"_qs), u"written"_qs);
    EXPECT_EQ(read(store, u"1"_qs), u"new"_qs);
    EXPECT_TRUE(QFile::exists(damaged(1)));
}

TEST_F(RegistryInAFile, ABatchThatMeetsABrokenPageRunsAgainOnTheNewStore) {
    QByteArray bytes = filledStore();
    bytes.replace(3 * 4096, bytes.size() - 3 * 4096, QByteArray(bytes.size() - 3 * 4096, '\x55'));
    putContent(m_path, bytes);
    SqliteRegistry store(m_path);
    int runs = 0;
    EXPECT_EQ(store.runBatch([&] {
        ++runs;
        write(store, u"1"_qs);
        write(store, u"2"_qs);
        return RegistryCode::Ok;
    }),
              RegistryCode::Ok);
    EXPECT_EQ(runs, 2);
    EXPECT_EQ(read(store, u"1"_qs), u"new"_qs);
    EXPECT_EQ(read(store, u"2"_qs), u"new"_qs);
}

TEST_F(RegistryInAFile, TheTablesOfAnotherProgramAreSetAside) {
    ASSERT_TRUE(QDir().mkpath(m_folder));
    for (const char* sql :
         {"CREATE TABLE bookmarks(url)", "CREATE TABLE registry_key(x); CREATE TABLE registry_value(y)",
          "PRAGMA application_id = 0x516D5267; CREATE TABLE registry_key(x)",
          "PRAGMA journal_mode = WAL; CREATE TABLE bookmarks(url)"}) {
        QFile::remove(m_path);
        QFile::remove(damaged(1));
        sqlite3* other = nullptr;
        ASSERT_EQ(sqlite3_open(QFile::encodeName(m_path).constData(), &other), SQLITE_OK);
        ASSERT_EQ(sqlite3_exec(other, sql, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(other);
        const QByteArray found = contentOf(m_path);
        ASSERT_TRUE(found.startsWith("SQLite format 3"));
        SqliteRegistry store(m_path);
        expectSetAside(store, found);
    }
}

TEST_F(RegistryInAFile, EachDamagedFileGetsANumberOfItsOwn) {
    ASSERT_TRUE(QDir().mkpath(m_folder));
    for (int number = 1; number <= 3; ++number) {
        QFile::remove(m_path);
        const QByteArray garbage = "garbage " + QByteArray::number(number);
        putContent(m_path, garbage);
        SqliteRegistry store(m_path);
        expectSetAside(store, garbage, number);
    }
    EXPECT_EQ(contentOf(damaged(1)), QByteArray("garbage 1"));
}

TEST_F(RegistryInAFile, WhatBelongsToADamagedFileIsNotPlayedIntoTheNewStore) {
    ASSERT_TRUE(QDir().mkpath(m_folder));
    putContent(m_path, "garbage");
    putContent(m_path + u"-wal"_qs, "log");
    {
        SqliteRegistry store(m_path);
        expectSetAside(store, "garbage");
    }
    EXPECT_FALSE(QFile::exists(m_path + u"-wal"_qs));
    EXPECT_EQ(contentOf(damaged(1) + u"-wal"_qs), QByteArray("log"));
}

TEST_F(RegistryInAFile, AFifoOrAFolderInThePlaceIsSetAsideAndNeverOpened) {
    ASSERT_TRUE(QDir().mkpath(m_folder));
    ASSERT_EQ(::mkfifo(QFile::encodeName(m_path).constData(), 0600), 0);
    SqliteRegistry store(m_path);
    EXPECT_EQ(read(store, u"n"_qs), QString());
    EXPECT_EQ(write(store, u"n"_qs), u"written"_qs);
    EXPECT_TRUE(QFileInfo::exists(damaged(1)));

    ASSERT_TRUE(QFile::remove(m_path));
    ASSERT_TRUE(QDir().mkdir(m_path));
    EXPECT_EQ(write(store, u"n"_qs), u"written"_qs);
    EXPECT_TRUE(QFileInfo(damaged(2)).isDir());
}

TEST_F(RegistryInAFile, AStoreThatAnotherSetAsideIsNotWrittenToAnyMore) {
    filledStore();
    SqliteRegistry open(m_path);
    EXPECT_EQ(read(open, u"1"_qs), QString(200, u'x'));
    // Another process finds damage, and begins a new file.
    for (const QString& suffix : {QString(), u"-wal"_qs, u"-shm"_qs}) {
        ASSERT_TRUE(QFile::rename(m_path + suffix, damaged(1) + suffix));
    }
    SqliteRegistry fresh(m_path);
    write(fresh, u"fresh"_qs);
    EXPECT_EQ(write(open, u"mine"_qs), u"written"_qs);
    EXPECT_EQ(read(fresh, u"mine"_qs), u"new"_qs);
    EXPECT_EQ(read(open, u"fresh"_qs), u"new"_qs);
}

TEST_F(RegistryInAFile, AStoreThatEndsAfterAnotherSetItAsideTakesNothingAlong) {
    filledStore();
    auto open = std::make_unique<SqliteRegistry>(m_path);
    EXPECT_EQ(read(*open, u"1"_qs), QString(200, u'x'));
    for (const QString& suffix : {QString(), u"-wal"_qs, u"-shm"_qs}) {
        ASSERT_TRUE(QFile::rename(m_path + suffix, damaged(1) + suffix));
    }
    SqliteRegistry fresh(m_path);
    write(fresh, u"fresh"_qs);
    open.reset();
    EXPECT_TRUE(QFile::exists(m_path + u"-wal"_qs));
    SqliteRegistry later(m_path);
    EXPECT_EQ(read(later, u"fresh"_qs), u"new"_qs);
}

TEST_F(RegistryInAFile, ALinkToTheStoreIsFollowed) {
    ASSERT_TRUE(QDir().mkpath(m_folder));
    const QString target = m_home.filePath(u"dotfiles.db"_qs);
    ASSERT_TRUE(QFile::link(target, m_path));
    SqliteRegistry store(m_path);
    EXPECT_EQ(write(store, u"n"_qs), u"written"_qs);
    EXPECT_TRUE(QFileInfo(m_path).isSymLink());
    EXPECT_TRUE(contentOf(target).startsWith("SQLite format 3"));
}

namespace {

constexpr int Writers = 8;
constexpr int ValuesEach = 1000;

QString valueName(int writer, int number) {
    return u"w%1-%2"_qs.arg(writer).arg(number);
}

/// Writes its values and acknowledges each by a byte in the pipe. Runs in a process of its own.
[[noreturn]] void writeAll(const QString& path, int writer, int acknowledgements) {
    SqliteRegistry store(path);
    for (int number = 0; number < ValuesEach; ++number) {
        const QString name = valueName(writer, number);
        if (!SetRegString(store, Root, Key, name, name) || ::write(acknowledgements, "+", 1) != 1)
            ::_exit(1);
    }
    ::_exit(0);
}

struct Writer {
    pid_t process = -1;
    int acknowledgements = -1;
    int acknowledged = 0;

    /// Counts acknowledgements until there are `enough` or no more arrive.
    void follow(int enough) {
        char bytes[64];
        while (acknowledged < enough) {
            const ssize_t count = ::read(acknowledgements, bytes, sizeof bytes);
            if (count <= 0)
                return;
            acknowledged += static_cast<int>(count);
        }
    }
};

Writer startWriter(const QString& path, int number) {
    int ends[2];
    EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    Writer writer;
    writer.process = ::fork();
    if (writer.process == 0) {
        ::close(ends[0]);
        writeAll(path, number, ends[1]);
    }
    ::close(ends[1]);
    writer.acknowledgements = ends[0];
    return writer;
}

}  // namespace

TEST_F(RegistryInAFile, EightWritersAtOnceLoseNothingThoughOneIsKilled) {
    std::vector<Writer> writers;
    writers.reserve(Writers);
    for (int number = 0; number < Writers; ++number)
        writers.push_back(startWriter(m_path, number));
    writers[0].follow(200);
    ASSERT_EQ(::kill(writers[0].process, SIGKILL), 0);
    for (Writer& writer : writers) {
        writer.follow(ValuesEach + 1);
        ::close(writer.acknowledgements);
        int status = 0;
        ASSERT_EQ(::waitpid(writer.process, &status, 0), writer.process);
        const bool killed = &writer == &writers[0];
        EXPECT_EQ(killed ? WIFSIGNALED(status) : WIFEXITED(status) && WEXITSTATUS(status) == 0, true);
    }
    EXPECT_GE(writers[0].acknowledged, 200);
    EXPECT_LT(writers[0].acknowledged, ValuesEach) << "it was not killed in between";
    SqliteRegistry store(m_path);
    for (int number = 0; number < Writers; ++number) {
        if (number > 0) {
            EXPECT_EQ(writers[number].acknowledged, ValuesEach);
        }
        for (int value = 0; value < writers[number].acknowledged; ++value) {
            ASSERT_EQ(read(store, valueName(number, value)), valueName(number, value));
        }
    }
    EXPECT_FALSE(QFile::exists(damaged(1)));
}

TEST_F(RegistryInAFile, WritersThatFindADamagedStoreTogetherLoseNothing) {
    ASSERT_TRUE(QDir().mkpath(m_folder));
    putContent(m_path, QByteArray(10'000, '\x33'));
    std::vector<Writer> writers;
    writers.reserve(Writers);
    for (int number = 0; number < 4; ++number)
        writers.push_back(startWriter(m_path, number));
    for (Writer& writer : writers) {
        writer.follow(ValuesEach + 1);
        ::close(writer.acknowledgements);
        int status = 0;
        ::waitpid(writer.process, &status, 0);
        EXPECT_EQ(writer.acknowledged, ValuesEach);
    }
    SqliteRegistry store(m_path);
    for (int number = 0; number < 4; ++number) {
        for (int value = 0; value < ValuesEach; ++value) {
            ASSERT_EQ(read(store, valueName(number, value)), valueName(number, value));
        }
    }
    EXPECT_TRUE(QFile::exists(damaged(1)));
    EXPECT_FALSE(QFile::exists(damaged(2)));
}
