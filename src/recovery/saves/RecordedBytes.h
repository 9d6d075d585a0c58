#pragma once

#include "platform/ByteSource.h"
#include "platform/FileSystemCalls.h"
#include "recovery/saves/SaveRecord.h"

#include <QByteArray>

/// The contents that a recorded save was to give its file, part by part: the new bytes of the record, and between them
/// those of a base, which is the file as it was before. Owned by the code that writes them; the handles stay the
/// caller's.
class RecordedBytes : public ByteSource {
 public:
    /// `base`: -1 when the record holds everything. What the base does not have is zeros.
    RecordedBytes(FileSystemCalls& calls, int record, const RecordedFile& file, int base);

    /// Whether bytes are needed that are not in the record.
    static bool needsBase(const RecordedFile& file);

    qint64 length() const override { return static_cast<qint64>(m_file.finalSize()); }
    SystemError next(BytePieces& pieces) override;
    bool rewind(Reading next) override;

 private:
    SystemError readBase(qint64 length);
    SystemError readRanges(qint64 length);

    FileSystemCalls& m_calls;
    int m_record;
    const RecordedFile& m_file;
    int m_base;
    QByteArray m_buffer;
    std::string_view m_piece;
    qint64 m_at = 0;
    std::size_t m_range = 0;  ///< the first that ends behind m_at
};
