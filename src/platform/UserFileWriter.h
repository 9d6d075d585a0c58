#pragma once

#include "platform/ByteSource.h"
#include "platform/FileSystemCalls.h"
#include "platform/SystemError.h"

#include <QString>

/// Stands in front of every write of a user's file, so that what is about to be lost can be kept elsewhere.
class WriteWitness {
 public:
    virtual ~WriteWitness() = default;

    /// Space is reserved, and no byte of the file has changed yet. An error stops the write here. `pieces` are the new
    /// bytes, if they are at hand all at once; else none.
    virtual SystemError aboutToWrite(const QString& path, BytePieces pieces) = 0;
    /// All bytes have reached the disk. Not called for a write that failed.
    virtual void written(const QString& path) = 0;
};

struct WriteResult {
    SystemError error;     ///< names the file and the system's reason
    bool touched = false;  ///< some byte or the length of the file has changed; never set for a file that is gone again
};

/// Writes a user's file in place, from its first byte on: the only way in which the program changes a file that is not
/// its own. Inode, hard links, links on the way, mode, owner and extended attributes stay. Kept by nobody, made for one
/// write; lengths are bytes; yields to nothing, but a source may.
///
/// Space for the new length is reserved before the first byte changes, so that a full disk, a limit, a missing right or
/// folder leaves the old file as it was. A file without any write bit is refused, to root as well; so is all that is
/// not a regular file, without opening it. A file that this write made is taken away again when it fails.
class UserFileWriter {
 public:
    /// What becomes of old bytes behind the new ones.
    enum class Tail { Cut, Keep };

    /// Both outlive the writer.
    explicit UserFileWriter(FileSystemCalls& calls = FileSystemCalls::system(), WriteWitness* witness = nullptr)
        : m_calls(calls), m_witness(witness) {}
    Q_DISABLE_COPY_MOVE(UserFileWriter)

    WriteResult write(const QString& path, BytePieces pieces, Tail tail = Tail::Cut);
    /// An error of the source is one of the write: told before the first byte, it leaves the old file whole.
    WriteResult write(const QString& path, ByteSource& source, Tail tail = Tail::Cut);

 private:
    struct Target;

    SystemError openTarget(const QString& path, Target& target);
    SystemError openExisting(Target& target);
    SystemError followLink(Target& target);
    WriteResult writeWhole(const QString& path, BytePieces atHand, ByteSource& source, Tail tail);
    SystemError fill(BytePieces atHand, ByteSource& source, Tail tail, Target& target);
    SystemError reserve(Target& target);
    SystemError writeAll(ByteSource& source, Target& target);
    SystemError writePieces(BytePieces pieces, Target& target);
    SystemError cut(Target& target);
    void restoreMode(const Target& target);
    SystemError flush(const Target& target);
    void giveBack(const Target& target);
    SystemError close(Target& target);

    FileSystemCalls& m_calls;
    WriteWitness* m_witness;
};
