#pragma once

#include "platform/ByteSource.h"
#include "platform/FileSystemCalls.h"
#include "platform/SystemError.h"
#include "platform/WriteWitness.h"

#include <QString>

struct WriteResult {
    SystemError error;     ///< its message contains the file name and the system's reason
    bool touched = false;  ///< bytes or length of the file were changed; false when a new file was deleted again
};

/// Writes a user's file in place, from its first byte on. This is the only way in which the program changes a file that
/// is not its own. Inode, hard links, symbolic links in the path, mode, owner and extended attributes are kept. It has
/// no owner: create one for each write. Lengths are bytes. It does not run the event loop itself, but a ByteSource may.
///
/// Space for the new length is reserved before the first byte changes. Therefore a full disk, a size limit, or a
/// missing permission or folder leaves the old file unchanged. A file without any write bit is refused, also for root;
/// anything that is not a regular file is refused without being opened.
///
/// A new file gets its name when it is whole and on the disk, so that nobody finds a part of it, also after a kill or a
/// power cut. Where the system has no files without a name, or the source cannot be read twice, it is created under its
/// name, and deleted again if the write fails.
class UserFileWriter {
 public:
    /// What to do with old bytes after the new ones.
    enum class Tail { Cut, Keep };

    /// `calls` and `witness` outlive the writer.
    explicit UserFileWriter(FileSystemCalls& calls = FileSystemCalls::system(),
                            WriteWitness* witness = WriteWitness::ofProcess())
        : m_calls(calls), m_witness(witness) {}
    Q_DISABLE_COPY_MOVE(UserFileWriter)

    WriteResult write(const QString& path, BytePieces pieces, Tail tail = Tail::Cut);
    /// An error of the source makes the write fail; if it occurs before the first byte, the old file is unchanged.
    WriteResult write(const QString& path, ByteSource& source, Tail tail = Tail::Cut);

 private:
    struct Target;

    SystemError openTarget(const QString& path, Target& target);
    SystemError openExisting(Target& target);
    bool openUnnamed(Target& target);
    SystemError create(Target& target);
    SystemError followLink(Target& target);
    WriteResult writeWhole(const QString& path, BytePieces atHand, ByteSource& source, Tail tail);
    WriteResult writeTo(Target& target, BytePieces atHand, ByteSource& source, Tail tail);
    SystemError fill(BytePieces atHand, ByteSource& source, Tail tail, Target& target);
    void letWitness(bool cuts, BytePieces atHand, ByteSource& source, Target& target);
    SystemError reserve(Target& target);
    SystemError writeAll(ByteSource& source, Target& target);
    SystemError writePieces(BytePieces pieces, Target& target);
    SystemError cut(Target& target);
    void restoreMode(const Target& target, const struct stat& now);
    SystemError flush(const Target& target);
    SystemError giveName(Target& target);
    SystemError flushName(const Target& target);
    void giveBack(const Target& target);
    SystemError close(Target& target);

    FileSystemCalls& m_calls;
    WriteWitness* m_witness;
};
