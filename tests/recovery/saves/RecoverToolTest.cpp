// quillmark-recover, run as a person runs it.

#include "platform/Paths.h"
#include "recovery/RecoverToolRun.h"
#include "recovery/saves/SaveRecordWriter.h"
#include "recovery/saves/SaveRecovery.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string_view>

namespace {

QByteArray nameOf(const QString& path) {
    return localName(path).value_or(QByteArray());
}

/// Supplies bytes in one part.
class Source : public ByteSource {
 public:
    explicit Source(QByteArray bytes) : m_bytes(std::move(bytes)) {}
    qint64 length() const override { return m_bytes.size(); }
    SystemError next(BytePieces& pieces) override {
        m_piece = std::string_view(m_bytes.constData(), static_cast<std::size_t>(m_bytes.size()));
        pieces = BytePieces(&m_piece, 1);
        return {};
    }
    bool rewind(Reading /*next*/) override { return true; }

 private:
    QByteArray m_bytes;
    std::string_view m_piece;
};

class RecoverToolRuns : public testing::Test {
 protected:
    RecoverToolRun run(const QStringList& arguments) const { return {m_home.path(), arguments}; }

    QString at(const QString& name) const { return m_home.filePath(name); }
    QString folder() const { return at(u"state/quillmark/saves"_qs); }
    QString recordPath(const QString& name = Aside) const { return folder() + u'/' + name; }
    QByteArray bytesOf(const QString& name) const {
        QFile in(at(name));
        return in.open(QFile::ReadOnly) ? in.readAll() : QByteArray("(missing)");
    }
    void put(const QString& name, const QByteArray& bytes) const {
        QFile out(at(name));
        EXPECT_TRUE(out.open(QFile::WriteOnly) && out.write(bytes) == bytes.size());
    }

    /// A record of saves of these files, which have old bytes now.
    void record(const QStringList& names, const QByteArray& newBytes, bool isWhole = true,
                const QString& recordName = Aside) const {
        ASSERT_TRUE(QDir().mkpath(folder()));
        const int handle = ::open(nameOf(recordPath(recordName)).constData(), O_RDWR | O_CREAT | O_EXCL, 0600);
        SaveRecordWriter writer(FileSystemCalls::system(), handle);
        const std::string_view piece(newBytes.constData(), static_cast<std::size_t>(newBytes.size()));
        Source source(newBytes);
        for (const QString& name : names) {
            struct stat before {};
            const QByteArray target = nameOf(at(name));
            ASSERT_EQ(::stat(target.constData(), &before), 0);
            const BytePieces pieces = isWhole ? BytePieces(&piece, 1) : BytePieces();
            EXPECT_FALSE(writer.add({target, before, newBytes.size(), isWhole, pieces, source}));
        }
        EXPECT_FALSE(writer.finish());
        ::close(handle);
    }

    inline static const QString Aside = u"1-2-3.save.aside"_qs;
    inline static const QString Standing = u"2-2-3.save"_qs;
    QTemporaryDir m_home;
};

}  // namespace

TEST_F(RecoverToolRuns, HelpAndVersionAreShown) {
    const RecoverToolRun help = run({u"--help"_qs});
    EXPECT_EQ(help.exitCode, 0);
    for (const char* word : {"list", "show", "restore", "drop", "--of", "--base", "--overwrite", "--folder"}) {
        EXPECT_TRUE(help.output.contains(QLatin1String(word))) << word;
    }
    EXPECT_EQ(run({u"-h"_qs}).output, help.output);
    EXPECT_TRUE(run({u"--version"_qs}).output.startsWith(u"quillmark-recover "_qs));
}

TEST_F(RecoverToolRuns, WrongArgumentsAreRefusedAndChangeNothing) {
    for (const char* line :
         {"", "frobnicate", "list x", "show", "show a b", "restore a.save", "restore a b c", "drop", "list --overwrite",
          "show a --base b", "drop a --of b", "list --unknown", "list --folder"}) {
        const RecoverToolRun outcome = run(QString::fromLatin1(line).split(u' ', Qt::SkipEmptyParts));
        EXPECT_EQ(outcome.exitCode, 2) << line;
        EXPECT_TRUE(outcome.output.isEmpty()) << line;
        EXPECT_TRUE(outcome.error.startsWith(u"quillmark-recover: "_qs)) << line;
    }
    EXPECT_TRUE(QDir(m_home.path()).isEmpty());
}

TEST_F(RecoverToolRuns, WithoutRecordsTheListIsEmptyAndNoFolderIsMade) {
    const RecoverToolRun outcome = run({u"list"_qs});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_TRUE(outcome.output.isEmpty() && outcome.error.isEmpty());
    EXPECT_TRUE(QDir(m_home.path()).isEmpty());
}

TEST_F(RecoverToolRuns, RecordsAreListedWithTheirFilesAndShown) {
    put(u"one"_qs, "old");
    put(u"two"_qs, "old");
    record({u"one"_qs, u"two"_qs}, "and new");
    record({u"one"_qs}, "newer", true, Standing);
    const QStringList lines = run({u"list"_qs}).output.split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0].section(u'\t', 0, 0), Aside);
    EXPECT_EQ(lines[0].section(u'\t', 2), u"set aside\t%1\t%2"_qs.arg(at(u"one"_qs), at(u"two"_qs)));
    EXPECT_EQ(lines[1].section(u'\t', 2), u"interrupted\t%1"_qs.arg(at(u"one"_qs)));
    put(u"two"_qs, "and new");
    const RecoverToolRun outcome = run({u"show"_qs, Aside});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_TRUE(outcome.output.contains(u"after: 7 bytes, all in the record"_qs));
    EXPECT_EQ(outcome.output.count(u"was not or only partly written"_qs), 1);
    EXPECT_EQ(outcome.output.count(u"has the new contents"_qs), 1);
    EXPECT_EQ(bytesOf(u"one"_qs), "old");
}

TEST_F(RecoverToolRuns, AFileWithItsOldContentsOrOutOfReachIsShownAsSuch) {
    ASSERT_TRUE(QDir(m_home.path()).mkdir(u"disk"_qs));
    put(u"disk/one"_qs, "old");
    record({u"disk/one"_qs}, "and new");
    const timespec times[] = {{2'000'000'000, 0}, {2'000'000'000, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, nameOf(at(u"disk/one"_qs)).constData(), times, 0), 0);
    EXPECT_TRUE(run({u"show"_qs, Aside}).output.contains(u"now: it has the old contents"_qs));
    ASSERT_TRUE(QFile::rename(at(u"disk"_qs), at(u"away"_qs)));
    EXPECT_TRUE(run({u"show"_qs, Aside}).output.contains(u"now: it is out of reach: its folder is missing"_qs));
}

TEST_F(RecoverToolRuns, ARecordIsRestoredToANewFileAndStays) {
    put(u"one"_qs, "old");
    const QByteArray newBytes(3'000'000, 'n');
    record({u"one"_qs}, newBytes);
    put(u"one"_qs, "somebody else's");
    EXPECT_EQ(run({u"restore"_qs, Aside, u"found"_qs}).exitCode, 0);
    EXPECT_EQ(bytesOf(u"found"_qs), newBytes);
    struct stat status {};
    ASSERT_EQ(::stat(nameOf(at(u"found"_qs)).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & ALLPERMS, 0600U);
    EXPECT_EQ(bytesOf(u"one"_qs), "somebody else's");
    EXPECT_TRUE(QFile::exists(recordPath()));
}

TEST_F(RecoverToolRuns, NothingIsOverwrittenUnlessAskedForAndNoLinkIsFollowed) {
    put(u"one"_qs, "old");
    record({u"one"_qs}, "new");
    put(u"mine"_qs, "mine, and longer");
    ASSERT_EQ(::symlink("mine", nameOf(at(u"link"_qs)).constData()), 0);
    ASSERT_EQ(::symlink("nothing", nameOf(at(u"dangling"_qs)).constData()), 0);
    EXPECT_EQ(run({u"restore"_qs, Aside, u"mine"_qs}).exitCode, 3);
    for (const QString& link : {u"link"_qs, u"dangling"_qs}) {
        EXPECT_EQ(run({u"restore"_qs, Aside, link}).exitCode, 3);
        EXPECT_EQ(run({u"restore"_qs, Aside, link, u"--overwrite"_qs}).exitCode, 3);
    }
    EXPECT_FALSE(QFile::exists(at(u"nothing"_qs)));
    EXPECT_EQ(bytesOf(u"mine"_qs), "mine, and longer");
    EXPECT_EQ(run({u"restore"_qs, Aside, u"mine"_qs, u"--overwrite"_qs}).exitCode, 0);
    EXPECT_EQ(bytesOf(u"mine"_qs), "new");
    EXPECT_EQ(run({u"restore"_qs, Aside, u"no/such/folder"_qs}).exitCode, 3);
}

TEST_F(RecoverToolRuns, OfSeveralFilesOneIsNamed) {
    put(u"one"_qs, "old");
    put(u"two"_qs, "old");
    record({u"one"_qs, u"two"_qs}, "new");
    EXPECT_EQ(run({u"restore"_qs, Aside, u"found"_qs}).exitCode, 2);
    EXPECT_EQ(run({u"restore"_qs, Aside, u"found"_qs, u"--of"_qs, at(u"three"_qs)}).exitCode, 1);
    EXPECT_FALSE(QFile::exists(at(u"found"_qs)));
    EXPECT_EQ(run({u"restore"_qs, Aside, u"found"_qs, u"--of"_qs, at(u"two"_qs)}).exitCode, 0);
    EXPECT_EQ(bytesOf(u"found"_qs), "new");
}

TEST_F(RecoverToolRuns, DifferencesAreRestoredOverTheFileAsItWas) {
    const QByteArray oldBytes(5'000, 'o');
    QByteArray newBytes = oldBytes;
    newBytes[1'000] = 'n';
    put(u"one"_qs, oldBytes);
    record({u"one"_qs}, newBytes, false);
    EXPECT_EQ(run({u"restore"_qs, Aside, u"found"_qs}).exitCode, 0);
    EXPECT_EQ(bytesOf(u"found"_qs), newBytes);
    EXPECT_EQ(run({u"restore"_qs, Aside, u"one"_qs, u"--overwrite"_qs}).exitCode, 3);
    put(u"one"_qs, QByteArray(5'000, 'x'));
    EXPECT_EQ(run({u"restore"_qs, Aside, u"second"_qs}).exitCode, 4);
    EXPECT_FALSE(QFile::exists(at(u"second"_qs)));
    put(u"copy"_qs, oldBytes);
    EXPECT_EQ(run({u"restore"_qs, Aside, u"second"_qs, u"--base"_qs, at(u"copy"_qs)}).exitCode, 0);
    EXPECT_EQ(bytesOf(u"second"_qs), newBytes);
    EXPECT_EQ(run({u"restore"_qs, Aside, u"third"_qs, u"--base"_qs, m_home.path()}).exitCode, 3);
}

TEST_F(RecoverToolRuns, ARecordOfALivingProcessIsLeftAlone) {
    put(u"one"_qs, "old");
    record({u"one"_qs}, "new", true, Standing);
    const int handle = ::open(nameOf(recordPath(Standing)).constData(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(::flock(handle, LOCK_EX | LOCK_NB), 0);
    EXPECT_TRUE(run({u"list"_qs}).output.endsWith(u"\tin use\n"_qs));
    EXPECT_EQ(run({u"show"_qs, Standing}).exitCode, 3);
    EXPECT_EQ(run({u"restore"_qs, Standing, u"found"_qs}).exitCode, 3);
    EXPECT_EQ(run({u"drop"_qs, Standing}).exitCode, 3);
    EXPECT_TRUE(QFile::exists(recordPath(Standing)));
    ::close(handle);
    EXPECT_EQ(run({u"show"_qs, Standing}).exitCode, 0);
}

TEST_F(RecoverToolRuns, RecordsAreDropped) {
    put(u"one"_qs, "old");
    record({u"one"_qs}, "new");
    record({u"one"_qs}, "new", true, Standing);
    EXPECT_EQ(run({u"drop"_qs, Aside, u"none.save"_qs, Standing}).exitCode, 1);
    EXPECT_TRUE(QDir(folder()).isEmpty());
    EXPECT_EQ(bytesOf(u"one"_qs), "old");
}

TEST_F(RecoverToolRuns, OnlyRecordsInTheFolderAreTaken) {
    put(u"one"_qs, "old");
    record({u"one"_qs}, "new");
    ASSERT_TRUE(QFile::rename(recordPath(), at(u"out.save"_qs)));
    ASSERT_EQ(::symlink(nameOf(at(u"out.save"_qs)).constData(), nameOf(recordPath()).constData()), 0);
    put(u"state/quillmark/saves/notes"_qs, "mine");
    EXPECT_EQ(run({u"show"_qs, Aside}).exitCode, 3);
    EXPECT_EQ(run({u"drop"_qs, Aside}).exitCode, 3);
    EXPECT_EQ(run({u"show"_qs, u"../../../out.save"_qs}).exitCode, 1);
    EXPECT_EQ(run({u"drop"_qs, u"notes"_qs}).exitCode, 1);
    EXPECT_EQ(bytesOf(u"state/quillmark/saves/notes"_qs), "mine");
    ASSERT_TRUE(QFile::rename(folder(), at(u"elsewhere"_qs)));
    ASSERT_EQ(::symlink(nameOf(at(u"elsewhere"_qs)).constData(), nameOf(folder()).constData()), 0);
    EXPECT_EQ(run({u"list"_qs}).exitCode, 3);
    EXPECT_EQ(run({u"list"_qs, u"--folder"_qs, at(u"elsewhere"_qs)}).exitCode, 0);
}

TEST_F(RecoverToolRuns, ADamagedRecordIsListedAndCanOnlyBeDropped) {
    put(u"one"_qs, "old");
    record({u"one"_qs}, "new");
    QByteArray bytes = bytesOf(u"state/quillmark/saves/"_qs + Aside);
    while (bytes.endsWith('\0'))  // space for later records
        bytes.chop(1);
    QFile file(recordPath());
    ASSERT_TRUE(file.resize(bytes.size() - 1));
    EXPECT_TRUE(run({u"list"_qs}).output.endsWith(u"\tdamaged\n"_qs));
    EXPECT_EQ(run({u"show"_qs, Aside}).exitCode, 4);
    EXPECT_EQ(run({u"restore"_qs, Aside, u"found"_qs}).exitCode, 4);
    EXPECT_FALSE(QFile::exists(at(u"found"_qs)));
    EXPECT_EQ(run({u"drop"_qs, Aside}).exitCode, 0);
}

TEST_F(RecoverToolRuns, ARecordOfAnotherVersionIsListedAsSuchAndCanOnlyBeDropped) {
    put(u"one"_qs, "old");
    record({u"one"_qs}, "new");
    QFile file(recordPath());
    ASSERT_TRUE(file.open(QFile::ReadWrite) && file.write("QMSAVE9\n") == 8);
    file.close();
    EXPECT_TRUE(run({u"list"_qs}).output.endsWith(u"\tof another version\n"_qs));
    for (const QStringList& words : {QStringList{u"show"_qs, Aside}, QStringList{u"restore"_qs, Aside, u"found"_qs}}) {
        const RecoverToolRun outcome = run(words);
        EXPECT_EQ(outcome.exitCode, 4);
        EXPECT_TRUE(outcome.error.contains(u"of another version"_qs));
    }
    EXPECT_FALSE(QFile::exists(at(u"found"_qs)));
    EXPECT_EQ(run({u"drop"_qs, Aside}).exitCode, 0);
}

TEST_F(RecoverToolRuns, TheSpaceOfAProgramThatWasKilledIsListedAsEmpty) {
    for (const qsizetype length : {0, 5, 65'536}) {
        put(u"one"_qs, "old");
        record({u"one"_qs}, "new");
        QFile file(recordPath());
        ASSERT_TRUE(file.open(QFile::WriteOnly | QFile::Truncate));
        ASSERT_EQ(file.write(QByteArray(length, '\0')), length);
        file.close();
        EXPECT_TRUE(run({u"list"_qs}).output.endsWith(u"\tempty\n"_qs));
        EXPECT_EQ(run({u"show"_qs, Aside}).exitCode, 4);
        EXPECT_EQ(run({u"drop"_qs, Aside}).exitCode, 0);
    }
}

TEST_F(RecoverToolRuns, NamesOfFilesCannotControlTheTerminal) {
    const QString name = u"a\x1b[2Jb\nc"_qs;
    put(name, "old");
    record({name}, "new");
    const QString output = run({u"list"_qs}).output + run({u"show"_qs, Aside}).output;
    EXPECT_TRUE(output.contains(u"a\\x1b[2Jb\\x0ac"_qs));
    EXPECT_FALSE(output.contains(u'\x1b'));
}
