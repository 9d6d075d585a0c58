#pragma once

#include "recovery/saves/SaveRecord.h"
#include "recovery/saves/WriteState.h"

#include <QByteArray>

/// Compares a file block by block with its old and its new contents. Sizes and offsets are bytes.
class BlockComparison {
 public:
    BlockComparison(FileSystemCalls& calls, int record, const RecordedFile& file, int target, quint64 targetSize);

    /// Only says what the blocks say; whether the file is the recorded one, and written since, is the caller's
    /// question.
    WriteState compare();
    /// Whether the file, which is Partial or Torn, has bytes that are neither new nor known to be old: the hash of an
    /// old block says nothing of a part of it.
    bool hasDoubtfulBytes() const { return m_hasDoubtfulBytes; }

 private:
    /// One block of the target with what the record says of it.
    struct Block {
        quint64 offset;
        const char* bytes;
        qint64 length;
        const char* newBytes;
        qint64 newLength;  ///< 0: the write leaves this block as it is, or cuts it off
        quint32 oldHash;
    };

    SystemError readWindow(quint64 offset, qint64 length);
    SystemError readHashes(quint64 offset, qint64 length);
    SystemError readNewBytes(quint64 offset, qint64 length);
    Block blockAt(quint64 offset, qint64 inWindow, qint64 windowLength);
    bool isNew(const Block& block) const;
    bool isOld(const Block& block) const;
    bool isCutOff(const Block& block) const;
    bool isMixed(const Block& block) const;
    bool isMixedForCertain(const Block& block) const;
    bool hasDoubtfulEnd(const Block& block) const;
    static qint64 beginningOf(const Block& block);
    qint64 oldLengthOf(const Block& block) const;
    /// False: more blocks are neither old nor new than one writer leaves behind.
    bool count(const Block& block);

    FileSystemCalls& m_calls;
    int m_record;
    const RecordedFile& m_file;
    int m_target;
    quint64 m_size;
    QByteArray m_bytes;
    QByteArray m_newBytes;
    QByteArray m_hashes;
    std::size_t m_firstRange = 0;  ///< the first that ends behind the window
    std::size_t m_range = 0;       ///< the first that ends behind the block
    int m_mixed = 0;
    bool m_allNew = true;
    bool m_allOld = true;
    bool m_hasTornBlock = false;
    bool m_hasDoubtfulBytes = false;
};
