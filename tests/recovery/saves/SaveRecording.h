#pragma once

#include "platform/Paths.h"
#include "platform/UserFileWriter.h"
#include "recovery/saves/SaveRecordWriter.h"
#include "recovery/saves/SaveRecords.h"
#include "recovery/saves/SaveRecovery.h"
#include "support/FailingFileSystem.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string_view>

/// What the tests of records of saves have in common: files and records in a folder of their own, saves that are
/// interrupted, and recoveries.
namespace SaveTests {

using Summary = SaveRecovery::Summary;

inline QByteArray nameOf(const QString& path) {
    return localName(path).value_or(QByteArray());
}

inline QByteArray bytesOf(const QString& path) {
    QFile in(path);
    EXPECT_TRUE(in.open(QFile::ReadOnly));
    return in.readAll();
}

inline bool isZero(const QByteArray& bytes) {
    return bytes.count('\0') == bytes.size();
}

/// Bytes that look like none of another call.
inline QByteArray noise(qsizetype length, unsigned seed) {
    std::mt19937 random(seed);
    QByteArray bytes(length, Qt::Uninitialized);
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random()); });
    return bytes;
}

/// Gives its bytes in small parts, so that they are not all in memory at once.
class Parts : public ByteSource {
 public:
    explicit Parts(QByteArray bytes) : m_bytes(std::move(bytes)) {}
    qint64 length() const override { return m_bytes.size(); }
    SystemError next(BytePieces& pieces) override {
        const qsizetype part = std::min<qsizetype>(700, m_bytes.size() - m_at);
        m_piece = std::string_view(m_bytes.constData() + m_at, static_cast<std::size_t>(part));
        m_at += part;
        pieces = BytePieces(&m_piece, 1);
        return {};
    }
    bool rewind(Reading /*next*/) override {
        m_at = 0;
        return canRewind;
    }

    bool canRewind = true;

 private:
    QByteArray m_bytes;
    qsizetype m_at = 0;
    std::string_view m_piece;
};

class SaveRecording : public testing::Test {
 protected:
    QString folder() const { return m_folder.filePath(u"state/saves"_qs); }
    QString at(const QString& name) const { return m_folder.filePath(name); }
    /// The files in the folder, without those that are kept for later records and hold nothing but zeros.
    QStringList records() const {
        QStringList names = QDir(folder()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
        names.removeIf([this](const QString& name) { return isZero(bytesOf(folder() + u'/' + name)); });
        return names;
    }
    /// Without the space for later records.
    QByteArray bytesOfFirstRecord() const {
        QByteArray bytes = bytesOf(firstRecord());
        while (bytes.endsWith('\0'))
            bytes.chop(1);
        return bytes;
    }
    QString firstRecord() const { return folder() + u'/' + records().value(0); }

    QString file(const QByteArray& bytes, const QString& name = u"file"_qs) const {
        put(at(name), bytes);
        return at(name);
    }
    /// Writes into the file as it is, and keeps its inode.
    static void put(const QString& path, const QByteArray& bytes) {
        QFile out(path);
        EXPECT_TRUE(out.open(QFile::ReadWrite) && out.write(bytes) == bytes.size() && out.resize(bytes.size()));
    }
    /// The same a while later, whatever the clock of the file system can tell apart.
    static void putLater(const QString& path, const QByteArray& bytes) {
        put(path, bytes);
        setTime(path, 2'000'000'000);
    }
    static void setTime(const QString& path, time_t seconds) {
        const timespec times[] = {{seconds, 0}, {seconds, 7}};
        EXPECT_EQ(::utimensat(AT_FDCWD, nameOf(path).constData(), times, 0), 0);
    }

    static void failAsIfKilled(FailingFileSystem& calls) {
        calls.fail(SystemCall::Write, 1, EIO);
        calls.fail(SystemCall::Truncate, 0, EIO);
        calls.fail(SystemCall::SetTimes, 0, EIO);
        calls.fail(SystemCall::Unlink, 0, EIO);
    }
    /// A save that ends in the middle as if the process had been killed: nothing of it is removed.
    void interruptedSave(const QString& path, const QByteArray& newBytes) const {
        FailingFileSystem calls;
        failAsIfKilled(calls);
        SaveRecords records(folder());
        const std::string_view piece(newBytes.constData(), static_cast<std::size_t>(newBytes.size()));
        LeftBehind witness(records);
        EXPECT_TRUE(UserFileWriter(calls, &witness).write(path, BytePieces(&piece, 1)).error);
    }
    void interruptedSave(const QString& path, ByteSource& source, UserFileWriter::Tail tail) const {
        FailingFileSystem calls;
        failAsIfKilled(calls);
        SaveRecords records(folder());
        LeftBehind witness(records);
        EXPECT_TRUE(UserFileWriter(calls, &witness).write(path, source, tail).error);
    }

    /// One record for all, as after a kill before the first byte.
    void recordGroup(const QStringList& paths, const QByteArray& newBytes, const QString& record = u"1-1-1.save"_qs,
                     quint64 sequence = 1) {
        const QByteArray name = nameOf(folder() + u'/' + record);
        ASSERT_TRUE(QDir().mkpath(folder()));
        const int handle = ::open(name.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        SaveRecordWriter writer(FileSystemCalls::system(), handle, 0, sequence);
        const std::string_view piece(newBytes.constData(), static_cast<std::size_t>(newBytes.size()));
        Parts none({});
        for (const QString& path : paths) {
            struct stat before {};
            ASSERT_EQ(::stat(nameOf(path).constData(), &before), 0);
            const QByteArray target = nameOf(path);
            EXPECT_FALSE(writer.add({target, before, newBytes.size(), true, {&piece, 1}, none}));
        }
        EXPECT_FALSE(writer.finish());
        ::close(handle);
    }

    Summary recover() const { return SaveRecovery(folder()).run(); }
    /// A block of the newer contents was written over the older ones; each of the two has a record.
    void expectNewerCounts(const QString& path, const QByteArray& older, const QByteArray& newer) const {
        put(path, newer.left(512) + older.mid(512));
        EXPECT_EQ(recover(), (Summary{1, 1, 0, 0}));
        EXPECT_EQ(bytesOf(path), newer);
    }

    /// Makes every write look touched, so that its record stays, as after a kill.
    class LeftBehind : public WriteWitness {
     public:
        explicit LeftBehind(WriteWitness& records) : m_records(records) {}
        std::unique_ptr<WatchedWrite> aboutToWrite(const PlannedWrite& write) override {
            return std::make_unique<Kill>(m_records.aboutToWrite(write));
        }

     private:
        class Kill : public WatchedWrite {
         public:
            explicit Kill(std::unique_ptr<WatchedWrite> watched) : m_watched(std::move(watched)) {}
            void ended(bool, bool) override {
                if (m_watched != nullptr)
                    m_watched->ended(false, true);
            }

         private:
            std::unique_ptr<WatchedWrite> m_watched;
        };

        WriteWitness& m_records;
    };

    QTemporaryDir m_folder;
};

inline BytePieces piecesOf(const QByteArray& bytes) {
    static std::string_view piece;
    piece = std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return {&piece, 1};
}

}  // namespace SaveTests
