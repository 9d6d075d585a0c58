#include "recovery/saves/OverwrittenBytes.h"
#include "recovery/saves/RecordedBytes.h"
#include "recovery/saves/SaveRecording.h"

#include <linux/magic.h>

#include <ctime>
#include <optional>

/// Blocks that are neither old nor new, and files that are not known again by their inode: somebody's work, or what a
/// write has left in the middle.

using namespace SaveTests;

namespace {

/// As long after the save as somebody needs to look at the file and change it.
constexpr time_t AWhile = 60;

class TornBlocks : public SaveRecording {
 protected:
    static void putAWhileLater(const QString& path, const QByteArray& bytes) {
        put(path, bytes);
        setTime(path, ::time(nullptr) + AWhile);
    }
    /// What was overwritten, of the only file in the folder.
    std::optional<QByteArray> keptBytes(const QString& path) const {
        if (records().size() != 1 || !records().first().endsWith(u".save.aside"_qs))
            return {};
        QFile in(firstRecord());
        SystemError error;
        if (!in.open(QFile::ReadOnly))
            return {};
        const std::optional<SaveRecord> record = SaveRecord::read(FileSystemCalls::system(), in.handle(), error);
        if (!record || record->files().size() != 1 || record->files().front().path != nameOf(path))
            return {};
        RecordedBytes contents(FileSystemCalls::system(), in.handle(), record->files().front(), -1);
        BytePieces pieces;
        EXPECT_FALSE(RecordedBytes::needsBase(record->files().front()));
        return contents.next(pieces) ? QByteArray()
                                     : QByteArray(pieces.front().data(), static_cast<qsizetype>(pieces.front().size()));
    }
    /// Somebody writes these bytes, and the next start leaves them.
    void expectToStay(const QString& path, const QByteArray& bytes) const {
        putAWhileLater(path, bytes);
        EXPECT_EQ(recover(), (Summary{0, 0, 1, 0}));
        EXPECT_EQ(bytesOf(path), bytes);
        removeRecords();
    }
    void removeRecords() const {
        for (const QString& name : records()) {
            ASSERT_TRUE(QFile::remove(folder() + u'/' + name));
        }
    }
};

/// A file system of this kind.
class OnFileSystem : public FileSystemCalls {
 public:
    explicit OnFileSystem(unsigned long type) : m_type(type) {}
    unsigned long typeOfFileSystem(int /*handle*/) override { return m_type; }

 private:
    const unsigned long m_type;
};

}  // namespace

TEST_F(TornBlocks, ALaterChangeOfANewSmallFileStays) {
    const QByteArray newBytes = "the first line\nthe second line\n";
    for (const QByteArray& oldBytes : {QByteArray("the only line\n"), QByteArray(), noise(500, 1)}) {
        const QString path = file(oldBytes);
        interruptedSave(path, newBytes);
        QByteArray changed = newBytes;
        changed.replace("second", "Second");
        expectToStay(path, changed);
    }
}

TEST_F(TornBlocks, ALaterChangeOfAnOldFileThatBeginsAsTheNewOneStays) {
    for (const qsizetype rest : {0, 450, 100'000}) {
        const QByteArray oldBytes = "version 1.2, as it was" + noise(rest, 1);
        const QByteArray newBytes = "version 1.2, as it is!" + noise(rest, 2);
        const QString path = file(oldBytes);
        interruptedSave(path, newBytes);
        QByteArray changed = oldBytes;
        changed.replace("1.2", "1.3");
        expectToStay(path, changed);
    }
}

TEST_F(TornBlocks, ABlockThatWasWrittenInPartIsCompletedAndWhatItHeldIsKept) {
    for (const qsizetype at : {1, 300, 511, 1'500, 4'097}) {
        const QByteArray oldBytes = noise(5'000, 1);
        const QByteArray newBytes = noise(5'000, 2);
        const QByteArray torn = newBytes.left(at) + oldBytes.mid(at);
        const QString path = file(oldBytes);
        interruptedSave(path, newBytes);
        put(path, torn);
        EXPECT_EQ(recover(), (Summary{0, 1, 0, 0}));
        EXPECT_EQ(bytesOf(path), newBytes);
        EXPECT_EQ(keptBytes(path), torn);
        EXPECT_EQ(recover(), Summary());
        removeRecords();
    }
}

TEST_F(TornBlocks, NewBytesBeforeZerosNeedNoCopyWheneverItWas) {
    for (const auto& [before, at] : std::vector<std::pair<int, int>>{{0, 1}, {0, 700}, {300, 400}, {1'024, 1'100}}) {
        const QByteArray newBytes = noise(5'000, 2);
        const QString path = file(noise(before, 1));
        interruptedSave(path, newBytes);
        putAWhileLater(path, newBytes.left(at) + QByteArray(5'000 - at, '\0'));
        EXPECT_EQ(recover(), (Summary{0, 1, 0, 0})) << before << ", " << at;
        EXPECT_EQ(bytesOf(path), newBytes);
        EXPECT_TRUE(records().isEmpty());
    }
}

TEST_F(TornBlocks, SomebodysBytesWhereZerosShouldBeStay) {
    const QByteArray newBytes = noise(5'000, 2);
    const QString path = file(noise(300, 1));
    interruptedSave(path, newBytes);
    const QByteArray changed = newBytes.left(400) + noise(112, 3) + QByteArray(4'488, '\0');
    put(path, changed);
    EXPECT_EQ(recover(), (Summary{0, 0, 1, 0}));
    EXPECT_EQ(bytesOf(path), changed);
}

TEST_F(TornBlocks, WhatSomebodyAppendedToTheOldSizeStays) {
    const QByteArray oldBytes = "twelve bytes";
    const QByteArray newBytes = "new";
    const QString path = file(oldBytes);
    interruptedSave(path, newBytes);
    putAWhileLater(path, "new, and more");
    EXPECT_EQ(recover(), (Summary{0, 0, 1, 0}));
    removeRecords();
    file(oldBytes);
    interruptedSave(path, newBytes);
    putAWhileLater(path, "new and more");
    EXPECT_EQ(recover(), (Summary{0, 0, 1, 0}));
    EXPECT_EQ(bytesOf(path), "new and more");
    removeRecords();
    file(oldBytes);
    interruptedSave(path, newBytes);
    put(path, newBytes + oldBytes.mid(newBytes.size()));
    EXPECT_EQ(recover(), (Summary{0, 1, 0, 0}));
    EXPECT_EQ(bytesOf(path), newBytes);
    EXPECT_TRUE(records().isEmpty());
}

/// Of the last block there is only a part, which its hash says nothing of.
TEST_F(TornBlocks, OldBytesThatWereCutOffWithinABlockAreCompletedOnlyRightAfterTheSave) {
    const QByteArray oldBytes = noise(3'000, 1);
    const QByteArray newBytes = noise(2'000, 2);
    for (const bool isLater : {false, true}) {
        const QString path = file(oldBytes);
        interruptedSave(path, newBytes);
        put(path, oldBytes.left(2'000));
        if (isLater)
            setTime(path, ::time(nullptr) + AWhile);
        EXPECT_EQ(recover(), isLater ? (Summary{0, 0, 1, 0}) : (Summary{0, 1, 0, 0}));
        EXPECT_EQ(bytesOf(path), isLater ? oldBytes.left(2'000) : newBytes);
        EXPECT_EQ(keptBytes(path), isLater ? newBytes : oldBytes.left(2'000));
        removeRecords();
    }
}

TEST_F(TornBlocks, NothingIsOverwrittenBeforeItIsKept) {
    const QByteArray oldBytes = noise(2'000, 1);
    const QByteArray newBytes = noise(2'000, 2);
    const QByteArray torn = newBytes.left(700) + oldBytes.mid(700);
    const QString path = file(oldBytes);
    interruptedSave(path, newBytes);
    put(path, torn);
    for (const SystemCall call : {SystemCall::Write, SystemCall::Rename, SystemCall::Flush}) {
        FailingFileSystem failing;
        failing.fail(call, 1, ENOSPC);
        EXPECT_EQ(SaveRecovery(folder(), failing).run(), (Summary{0, 0, 0, 1}));
        EXPECT_EQ(bytesOf(path), torn);
        EXPECT_EQ(QDir(folder()).entryList(QDir::Files).size(), 1);
        EXPECT_TRUE(failing.allClosed());
    }
    EXPECT_EQ(recover(), (Summary{0, 1, 0, 0}));
    EXPECT_EQ(bytesOf(path), newBytes);
    EXPECT_EQ(keptBytes(path), torn);
}

TEST_F(TornBlocks, WhatIsKeptAtSeveralStartsIsThereOnce) {
    const QByteArray oldBytes = noise(2'000, 1);
    const QByteArray newBytes = noise(2'000, 2);
    const QByteArray torn = newBytes.left(700) + oldBytes.mid(700);
    const QString path = file(oldBytes);
    interruptedSave(path, newBytes);
    put(path, torn);
    for (int start = 0; start < 3; ++start) {
        FailingFileSystem failing;
        failing.fail(SystemCall::Truncate, 0, EIO);
        // The file is whole after the first of them, but for its record.
        put(path, torn);
        EXPECT_EQ(SaveRecovery(folder(), failing).run().left, 1);
        EXPECT_EQ(records().size(), 2);
    }
    put(path, torn);
    EXPECT_EQ(recover(), (Summary{0, 1, 0, 0}));
    EXPECT_EQ(keptBytes(path), torn);
}

TEST_F(TornBlocks, ATornFileThatIsTooLargeToBeKeptIsLeftAsItIs) {
    constexpr auto Size = static_cast<qint64>(MostOverwrittenBytes) + 1;
    const QString path = file("old");
    ASSERT_TRUE(QFile::resize(path, Size));
    const QByteArray newBytes = noise(1'000, 2);
    Parts source(newBytes);
    interruptedSave(path, source, UserFileWriter::Tail::Keep);
    const int handle = ::open(nameOf(path).constData(), O_WRONLY | O_CLOEXEC);
    ASSERT_EQ(::pwrite(handle, newBytes.constData(), 200, 0), 200);
    ::close(handle);
    EXPECT_EQ(recover(), (Summary{0, 0, 1, 0}));
    QFile in(path);
    ASSERT_TRUE(in.open(QFile::ReadOnly));
    EXPECT_EQ(in.read(201), newBytes.left(200) + '\0');
    EXPECT_EQ(in.size(), Size);
}

TEST_F(TornBlocks, AFileIsKnownAgainWithoutItsInodeWhereInodesDoNotLast) {
    const QByteArray oldBytes = noise(3'000, 1);
    const QByteArray newBytes = noise(4'000, 2);
    for (const unsigned long type :
         {static_cast<unsigned long>(MSDOS_SUPER_MAGIC), static_cast<unsigned long>(EXFAT_SUPER_MAGIC),
          static_cast<unsigned long>(FUSE_SUPER_MAGIC), 0UL, static_cast<unsigned long>(EXT4_SUPER_MAGIC)}) {
        const bool isLasting = type == EXT4_SUPER_MAGIC || type == 0;
        const QString path = file(oldBytes);
        interruptedSave(path, newBytes);
        ASSERT_TRUE(QFile::rename(path, at(u"before"_qs)));
        const QByteArray torn = newBytes.left(1'024) + oldBytes.mid(1'024);
        file(torn);
        OnFileSystem calls(type);
        EXPECT_EQ(SaveRecovery(folder(), calls).run(), isLasting ? (Summary{0, 0, 1, 0}) : (Summary{0, 1, 0, 0}));
        EXPECT_EQ(bytesOf(path), isLasting ? torn : newBytes);
        removeRecords();
        ASSERT_TRUE(QFile::remove(at(u"before"_qs)));
    }
}

TEST_F(TornBlocks, SomebodysFileIsToldApartAlsoWhereInodesDoNotLast) {
    const QByteArray oldBytes = noise(3'000, 1);
    const QByteArray others = noise(3'000, 3);
    const QString path = file(oldBytes);
    interruptedSave(path, noise(4'000, 2));
    ASSERT_TRUE(QFile::rename(path, at(u"before"_qs)));
    file(others);
    OnFileSystem calls(MSDOS_SUPER_MAGIC);
    EXPECT_EQ(SaveRecovery(folder(), calls).run(), (Summary{0, 0, 1, 0}));
    EXPECT_EQ(bytesOf(path), others);
}
