#pragma once

#include "hex/bytes/ByteStore.h"
#include "platform/BlockCopy.h"
#include "platform/FileSystemCalls.h"
#include "platform/SystemError.h"

#include <QString>
#include <QTime>

#include <functional>
#include <memory>

class FileReader;
class WorkingCopyFile;

/// The copy of a user's file in the private temporary folder that a hex view reads and edits; only save() writes the
/// file itself. Owned by one view. Its own file is locked while it is in use, and deleted with it.
///
/// load() and save() yield through their progress. The working copy may be destroyed meanwhile: progress must return
/// false then. Errors are the system's, with its description alone.
class WorkingCopy : public ByteStore {
 public:
    /// Positions have 32 bits.
    static constexpr qint64 MostBytes = FilePosition::Largest;
    static constexpr qint64 BlockSize = 512'000;

    using Clock = std::function<QTime()>;

    /// `calls` outlive it.
    explicit WorkingCopy(FileSystemCalls& calls = FileSystemCalls::system(), qint64 blockSize = BlockSize,
                         Clock clock = QTime::currentTime);
    ~WorkingCopy() override;
    Q_DISABLE_COPY_MOVE(WorkingCopy)

    /// Creates the copy again, under the name of the one before if there was one. Regular files of 1 byte up to
    /// MostBytes. A file that can't be opened or is too long leaves the present copy; if copying fails, there is none.
    SystemError load(const QString& source, const CopyProgress& progress);

    /// Writes the bytes over the start of a file, whose remaining bytes stay: as they are when it is called, although
    /// they may change while it yields. Without an open copy: EBADF.
    SystemError save(const QString& target, const CopyProgress& progress);

    bool isOpen() const { return m_file != nullptr; }
    /// The open file, for who copies it as a whole; -1 without one. Stays the working copy's.
    int handle() const;
    /// Empty until the first load, then kept.
    QString name() const { return m_name; }

    qint64 length() const override;
    qint64 read(FilePosition from, char* buffer, qint64 count) const override;
    SystemError write(FilePosition from, std::string_view bytes) override;

    /// Removes the working copies left behind by processes that were killed: those that no process has locked.
    static void removeAbandoned(FileSystemCalls& calls = FileSystemCalls::system());

 private:
    class Source;

    SystemError MakeTempFile(std::shared_ptr<WorkingCopyFile>& file);
    /// If copying fails, the copy is deleted.
    SystemError CopyToTempFile(const FileReader& source, const CopyProgress& progress);

    FileSystemCalls& m_calls;
    qint64 m_blockSize;
    Clock m_clock;
    QString m_name;
    std::shared_ptr<WorkingCopyFile> m_file;
};
