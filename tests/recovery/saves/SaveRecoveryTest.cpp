#include "recovery/saves/RecordFormat.h"
#include "recovery/saves/SaveRecording.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <cerrno>

/// What becomes of a file that somebody else had in hands between the save that was interrupted and the next start.

using namespace SaveTests;

namespace {

class SaveRecovering : public SaveRecording {
 protected:
    /// Fails when it is asked for a path with this beginning, as for one of a file system that is not there.
    class Unreachable : public FileSystemCalls {
     public:
        Unreachable(QByteArray path, int error) : m_path(std::move(path)), m_error(error) {}
        int stat(const char* path, struct stat* status) override {
            return isMeant(path) ? -1 : FileSystemCalls::stat(path, status);
        }
        int open(const char* path, int flags, mode_t mode) override {
            return isMeant(path) ? -1 : FileSystemCalls::open(path, flags, mode);
        }

     private:
        bool isMeant(const char* path) const {
            errno = m_error;
            return QByteArray(path).startsWith(m_path);
        }

        const QByteArray m_path;
        const int m_error;
    };

    /// Counts what is read.
    class Reading : public FileSystemCalls {
     public:
        ssize_t pread(int handle, void* buffer, size_t length, off_t offset) override {
            const ssize_t got = FileSystemCalls::pread(handle, buffer, length, offset);
            bytes += got > 0 ? got : 0;
            return got;
        }
        qint64 bytes = 0;
    };

    void makeTooOld(const QString& record) const { setTime(record, 1'000'000'000); }
    void expectAside(const QByteArray& newBytes) const {
        ASSERT_EQ(records().size(), 1);
        EXPECT_TRUE(records().first().endsWith(u".save.aside"_qs));
        EXPECT_TRUE(bytesOf(firstRecord()).contains(newBytes));
    }
};

}  // namespace

TEST_F(SaveRecovering, OldBytesThatSomebodyRestoredStay) {
    for (const auto& [before, after] :
         std::vector<std::pair<int, int>>{{5'000, 5'000}, {5'000, 9'000}, {9'000, 5'000}, {700, 1}, {1, 700}}) {
        const QByteArray oldBytes = noise(before, 1);
        const QByteArray newBytes = noise(after, 2);
        const QString path = file(oldBytes);
        interruptedSave(path, newBytes);
        put(path, newBytes.left(1'024) + oldBytes.mid(1'024));
        putLater(path, oldBytes);
        EXPECT_EQ(recover(), (Summary{0, 0, 1, 0})) << before << " to " << after;
        EXPECT_EQ(bytesOf(path), oldBytes);
        expectAside(newBytes);
        ASSERT_TRUE(QFile::remove(firstRecord()));
    }
}

TEST_F(SaveRecovering, BlocksThatAreTheSameBeforeAndAfterSayNothingOfARestoredFile) {
    const QByteArray oldBytes = noise(20'000, 1);
    QByteArray newBytes = oldBytes;
    newBytes[10'000] = static_cast<char>(newBytes[10'000] + 1);
    const QString path = file(oldBytes);
    interruptedSave(path, newBytes);
    putLater(path, oldBytes);
    EXPECT_EQ(recover(), (Summary{0, 0, 1, 0}));
    EXPECT_EQ(bytesOf(path), oldBytes);
    expectAside(newBytes);
}

TEST_F(SaveRecovering, AWriteThatNeverBeganIsMade) {
    for (const int before : {0, 1, 5'000}) {
        const QString path = file(noise(before, 1));
        interruptedSave(path, noise(6'000, 2));
        EXPECT_EQ(recover(), (Summary{0, 1, 0, 0})) << before;
        EXPECT_EQ(bytesOf(path), noise(6'000, 2));
    }
}

TEST_F(SaveRecovering, AnEmptyFileThatSomebodyEmptiedAgainStaysEmpty) {
    const QString path = file({});
    interruptedSave(path, "new");
    put(path, "ne");
    putLater(path, {});
    EXPECT_EQ(recover(), (Summary{0, 0, 1, 0}));
    EXPECT_EQ(bytesOf(path), QByteArray());
}

/// The end of the new bytes has reached the disk, and not a byte of them: only a write does that.
TEST_F(SaveRecovering, OldBytesOfAnotherSizeAreAnInterruptedWriteWheneverItWas) {
    const QByteArray oldBytes = noise(3'000, 1);
    for (const int after : {2'048, 5'000}) {
        const QByteArray newBytes = noise(after, 2);
        const QString path = file(oldBytes);
        interruptedSave(path, newBytes);
        putLater(path, oldBytes.left(after) + QByteArray(std::max(0, after - 3'000), '\0'));
        EXPECT_EQ(recover(), (Summary{0, 1, 0, 0})) << after;
        EXPECT_EQ(bytesOf(path), newBytes);
    }
}

TEST_F(SaveRecovering, ARestoredFileThatWasEditedInABlockThatTheSaveLeavesAloneStays) {
    const QByteArray oldBytes = noise(5'120, 1);
    QByteArray newBytes = oldBytes;
    newBytes.replace(0, 512, noise(512, 2));
    const QString path = file(oldBytes);
    interruptedSave(path, newBytes);
    QByteArray edited = oldBytes;
    edited[5'000] = static_cast<char>(edited[5'000] + 1);
    putLater(path, edited);
    EXPECT_EQ(recover(), (Summary{0, 0, 1, 0}));
    EXPECT_EQ(bytesOf(path), edited);
}

TEST_F(SaveRecovering, AMixedBlockThatDoesNotBeginWithNewBytesIsSomebodyElses) {
    const QByteArray oldBytes = noise(5'120, 1);
    const QByteArray newBytes = noise(5'120, 2);
    ASSERT_NE(oldBytes[1'024], newBytes[1'024]);
    const QString path = file(oldBytes);
    interruptedSave(path, newBytes);
    QByteArray edited = oldBytes;
    edited[1'500] = static_cast<char>(edited[1'500] + 1);
    putLater(path, edited);
    EXPECT_EQ(recover(), (Summary{0, 0, 1, 0}));
    EXPECT_EQ(bytesOf(path), edited);
}

TEST_F(SaveRecovering, AFileThatWasCutByAThirdPartToNeitherSizeStays) {
    const QByteArray oldBytes = noise(9'000, 1);
    const QString path = file(oldBytes);
    interruptedSave(path, noise(3'000, 2));
    for (const int size : {5'120, 6'000}) {
        putLater(path, oldBytes.left(size));
        EXPECT_EQ(recover().setAside, 1) << size;
        EXPECT_EQ(bytesOf(path), oldBytes.left(size));
        interruptedSave(file(oldBytes), noise(3'000, 2));
    }
}

TEST_F(SaveRecovering, ARecordWaitsUntilTheFolderOfItsFileIsThereAgain) {
    ASSERT_TRUE(QDir(m_folder.path()).mkpath(u"disk/texts"_qs));
    const QString path = file(noise(3'000, 1), u"disk/texts/file"_qs);
    interruptedSave(path, noise(4'000, 2));
    ASSERT_TRUE(QFile::rename(at(u"disk"_qs), at(u"away"_qs)));
    for (int start = 0; start < 3; ++start) {
        EXPECT_EQ(recover(), (Summary{0, 0, 0, 1}));
    }
    file("a file in place of a folder", u"disk"_qs);
    EXPECT_EQ(recover(), (Summary{0, 0, 0, 1}));
    ASSERT_TRUE(QFile::remove(at(u"disk"_qs)) && QFile::rename(at(u"away"_qs), at(u"disk"_qs)));
    EXPECT_EQ(recover(), (Summary{0, 1, 0, 0}));
    EXPECT_EQ(bytesOf(path), noise(4'000, 2));
}

TEST_F(SaveRecovering, AnEmptyFolderOnWhichNothingIsMountedIsNoReasonToGiveUp) {
    class Mounted : public FileSystemCalls {
     public:
        explicit Mounted(QByteArray folder) : m_folder(std::move(folder)) {}
        int stat(const char* path, struct stat* status) override {
            const int result = FileSystemCalls::stat(path, status);
            if (m_folder == path)
                ++status->st_dev;
            return result;
        }

     private:
        const QByteArray m_folder;
    };
    const QString path = file(noise(3'000, 1));
    interruptedSave(path, noise(4'000, 2));
    ASSERT_TRUE(QFile::rename(path, at(u"elsewhere"_qs)));
    Mounted another(nameOf(m_folder.path()) + '/');
    EXPECT_EQ(SaveRecovery(folder(), another).run(), (Summary{0, 0, 0, 1}));
    ASSERT_TRUE(QFile::rename(at(u"elsewhere"_qs), path));
    EXPECT_EQ(recover(), (Summary{0, 1, 0, 0}));
    EXPECT_EQ(bytesOf(path), noise(4'000, 2));
}

TEST_F(SaveRecovering, AnErrorThatIsNotTheFilesOwnLeavesTheRecordForTheNextStart) {
    const QString path = file(noise(3'000, 1));
    interruptedSave(path, noise(4'000, 2));
    for (const int error : {EIO, ENOTCONN, ESTALE, EACCES, ETIMEDOUT, EHOSTDOWN, ENODEV, ENXIO, ENOMEM, EMFILE}) {
        Unreachable calls(nameOf(path), error);
        EXPECT_EQ(SaveRecovery(folder(), calls).run(), (Summary{0, 0, 0, 1})) << error;
    }
    EXPECT_EQ(recover(), (Summary{0, 1, 0, 0}));
}

TEST_F(SaveRecovering, AfterThirtyDaysOutOfReachARecordIsSetAside) {
    ASSERT_TRUE(QDir(m_folder.path()).mkpath(u"disk"_qs));
    const QString path = file(noise(3'000, 1), u"disk/file"_qs);
    interruptedSave(path, noise(4'000, 2));
    ASSERT_TRUE(QFile::rename(at(u"disk"_qs), at(u"away"_qs)));
    setTime(firstRecord(), ::time(nullptr) - 29 * 24 * 3'600);
    EXPECT_EQ(recover(), (Summary{0, 0, 0, 1}));
    setTime(firstRecord(), ::time(nullptr) + 365 * 24 * 3'600);
    EXPECT_EQ(recover(), (Summary{0, 0, 0, 1}));
    makeTooOld(firstRecord());
    EXPECT_EQ(recover(), (Summary{0, 0, 1, 0}));
    expectAside(noise(4'000, 2));
}

TEST_F(SaveRecovering, AnOldRecordOfAFileThatIsThereIsCompletedAllTheSame) {
    const QString path = file(noise(3'000, 1));
    interruptedSave(path, noise(4'000, 2));
    makeTooOld(firstRecord());
    EXPECT_EQ(recover(), (Summary{0, 1, 0, 0}));
    EXPECT_EQ(bytesOf(path), noise(4'000, 2));
}

TEST_F(SaveRecovering, AFileOutOfReachHoldsTheOthersOfItsRecordUpAndIsNotForgotten) {
    ASSERT_TRUE(QDir(m_folder.path()).mkpath(u"disk"_qs));
    const QString away = file(noise(2'000, 1), u"disk/file"_qs);
    const QString here = file(noise(2'000, 2), u"here"_qs);
    const QByteArray newBytes = noise(3'000, 4);
    recordGroup({away, here}, newBytes);
    ASSERT_TRUE(QFile::rename(at(u"disk"_qs), at(u"away"_qs)));
    EXPECT_EQ(recover(), (Summary{0, 0, 0, 1}));
    EXPECT_EQ(bytesOf(here), newBytes);
    ASSERT_TRUE(QFile::rename(at(u"away"_qs), at(u"disk"_qs)));
    EXPECT_EQ(recover(), (Summary{0, 1, 0, 0}));
    EXPECT_EQ(bytesOf(away), newBytes);
}

TEST_F(SaveRecovering, OfAHugeFileThatIsCutOnlyWhatIsNearTheNewBytesIsRead) {
    constexpr qint64 Huge = 4LL * 1024 * 1024 * 1024;
    constexpr auto Most = static_cast<qint64>(RecordFormat::LongestHashedTail) + 4'096;
    const QString path = file(noise(3'000, 1));
    ASSERT_EQ(::truncate(nameOf(path).constData(), Huge), 0);
    const QByteArray newBytes = noise(1'000, 2);
    FailingFileSystem calls;
    calls.fail(SystemCall::Truncate, 0, EIO);
    Reading onRecords;
    {
        SaveRecords records(folder(), onRecords);
        LeftBehind witness(records);
        EXPECT_TRUE(UserFileWriter(calls, &witness).write(path, piecesOf(newBytes)).error);
    }
    EXPECT_GT(onRecords.bytes, 1'000);
    EXPECT_LE(onRecords.bytes, Most);
    EXPECT_LT(bytesOf(firstRecord()).size(), 1'000'000);
    EXPECT_EQ(QFile(path).size(), Huge);
    Reading atStart;
    EXPECT_EQ(SaveRecovery(folder(), atStart).run(), (Summary{0, 1, 0, 0}));
    EXPECT_LE(atStart.bytes, Most + 1'000'000);
    EXPECT_EQ(bytesOf(path), newBytes);
}

TEST_F(SaveRecovering, ALongFileThatIsCutIsTornRestoredOrChangedAsAShortOne) {
    constexpr auto Tail = static_cast<qsizetype>(RecordFormat::LongestHashedTail);
    const QByteArray oldBytes = noise(Tail + 10'000, 1);
    const QByteArray newBytes = noise(1'000, 2);
    struct Case {
        QByteArray now;
        Summary expected;
        bool isLater = true;
    };
    QByteArray changed = oldBytes;
    changed.replace(Tail - 5'000, 1'000, QByteArray(1'000, 'x'));
    const Case cases[] = {{newBytes + oldBytes.mid(1'000), {0, 1, 0, 0}, false},
                          {newBytes.left(512) + oldBytes.mid(512), {0, 1, 0, 0}},
                          {oldBytes.left(1'000), {0, 1, 0, 0}, false},
                          {newBytes, {1, 0, 0, 0}},
                          {oldBytes, {0, 0, 1, 0}},
                          {changed, {0, 0, 1, 0}}};
    for (const Case& one : cases) {
        const QString path = file(oldBytes);
        interruptedSave(path, newBytes);
        put(path, one.now);
        if (one.isLater)
            setTime(path, 2'000'000'000);
        EXPECT_EQ(recover(), one.expected);
        EXPECT_EQ(bytesOf(path), one.expected.setAside == 1 ? one.now : newBytes);
    }
}

TEST_F(SaveRecovering, ALongFileOfWhichTheEndStaysKeepsItWhateverItIs) {
    constexpr auto Tail = static_cast<qsizetype>(RecordFormat::LongestHashedTail);
    QByteArray oldBytes = noise(Tail + 10'000, 1);
    const QByteArray newBytes = noise(1'000, 2);
    const QString path = file(oldBytes);
    Parts source(newBytes);
    interruptedSave(path, source, UserFileWriter::Tail::Keep);
    oldBytes[Tail + 9'000] = static_cast<char>(oldBytes[Tail + 9'000] + 1);
    putLater(path, newBytes.left(512) + oldBytes.mid(512));
    EXPECT_EQ(recover(), (Summary{0, 1, 0, 0}));
    EXPECT_EQ(bytesOf(path), newBytes + oldBytes.mid(1'000));
}
