#pragma once

#include "platform/FileState.h"
#include "platform/FileSystemCalls.h"
#include "recovery/journals/JournalEntry.h"

#include <QString>

#include <optional>
#include <vector>

struct XXH3_state_s;

/// Stores the bytes of a file that a journal starts from, step by step: a clone of it where the file system can, else a
/// copy of one that is not too large, else nothing but its checksum. Owned by the code that writes the journal. Lengths
/// are bytes.
class BaseCopy {
 public:
    enum class Progress {
        More,    ///< call step() again
        Done,    ///< see result()
        Changed  ///< the file is not the one that was loaded, or cannot be read
    };

    /// `path`: the file, `state`: as it was loaded. `target`: the name of the copy; an existing file is replaced.
    BaseCopy(FileSystemCalls& calls, QString path, const FileState& state, QString target, qint64 mostCopied);
    /// Of an open file, whose handle this object closes, whatever its state and size are.
    BaseCopy(FileSystemCalls& calls, int source, QString target);
    ~BaseCopy();
    Q_DISABLE_COPY_MOVE(BaseCopy)

    /// Works for some milliseconds.
    Progress step();
    /// The number is the caller's.
    StoredBase result() const;
    /// Whether the file is only read for its checksum, and not copied.
    bool isOnlyRead() const { return m_isBegun && m_target < 0; }
    /// Removes the copy.
    void discard();

 private:
    Progress begin();
    Progress readPart();
    Progress finish();
    bool openSource();
    void openTarget();
    bool reserve();
    bool isUnchanged() const;
    void giveUpTarget();
    void closeAll();

    FileSystemCalls& m_calls;
    QString m_path;  ///< empty: of an open file
    std::optional<FileState> m_state;
    QString m_targetPath;
    qint64 m_mostCopied;
    int m_source = -1;
    int m_target = -1;
    bool m_isBegun = false;
    bool m_isClone = false;
    qint64 m_at = 0;
    qint64 m_size = 0;
    std::vector<char> m_buffer;
    XXH3_state_s* m_hash;
};
