// Any bytes as a record of saves: it is read whole and consistent or not at all, its file is examined and the contents
// are put together without a look beyond them, and memory stays in proportion to the record.

#include "FuzzEntry.h"
#include "recovery/saves/BlockComparison.h"
#include "recovery/saves/RecordFormat.h"
#include "recovery/saves/RecordedBytes.h"
#include "recovery/saves/SaveRecord.h"

#include <QByteArray>

#include <sys/mman.h>
#include <unistd.h>
#include <xxhash.h>

#include <algorithm>
#include <iterator>

namespace {

using namespace RecordFormat;

/// A file in memory with these bytes; closed when the object is destroyed.
class MemoryFile {
 public:
    explicit MemoryFile(const QByteArray& bytes) : m_handle(::memfd_create("record", MFD_CLOEXEC)) {
        require(m_handle >= 0 &&
                ::pwrite(m_handle, bytes.constData(), static_cast<std::size_t>(bytes.size()), 0) == bytes.size());
    }
    ~MemoryFile() { ::close(m_handle); }
    Q_DISABLE_COPY_MOVE(MemoryFile)
    int handle() const { return m_handle; }

 private:
    int m_handle;
};

/// The bytes between a right beginning and a right end, so that more than the checksum is tried.
QByteArray framed(QByteArrayView input) {
    const auto entries = input.isEmpty() ? quint32(0) : static_cast<quint8>(input.front()) % 4;
    const EndHead end{EndTag, entries};
    FileHead head{{}, 1};
    std::copy(std::begin(Magic), std::end(Magic), head.magic);
    QByteArray record(reinterpret_cast<const char*>(&head), sizeof head);
    record.append(input.sliced(std::min<qsizetype>(1, input.size())).toByteArray());
    record.append(reinterpret_cast<const char*>(&end), sizeof end);
    XXH128_canonical_t sum;
    XXH128_canonicalFromHash(&sum, XXH3_128bits(record.constData(), static_cast<std::size_t>(record.size())));
    return record.append(reinterpret_cast<const char*>(sum.digest), sizeof sum.digest);
}

void checkRanges(const RecordedFile& file, qint64 recordSize) {
    quint64 end = 0;
    for (const RecordedRange& range : file.ranges) {
        require(range.offset >= end && range.length > 0 && range.offset + range.length <= file.newSize);
        require(range.inRecord >= 0 && static_cast<quint64>(range.inRecord) + range.length <= quint64(recordSize));
        end = range.offset + range.length;
    }
}

void checkFile(const RecordedFile& file, int record, qint64 recordSize) {
    constexpr quint64 LargestTried = 1'000'000;
    require(file.path.startsWith('/') && !file.path.contains('\0') && file.path.size() <= qsizetype(LongestPath));
    checkRanges(file, recordSize);
    const MemoryFile target(QByteArray(3'000, 'o'));
    BlockComparison(FileSystemCalls::system(), record, file, target.handle(), 3'000).compare();
    RecordedBytes source(FileSystemCalls::system(), record, file, target.handle());
    quint64 at = 0;
    while (at < std::min(file.finalSize(), LargestTried)) {
        BytePieces pieces;
        require(!source.next(pieces) && pieces.size() == 1 && !pieces.front().empty());
        at += pieces.front().size();
    }
    require(at <= file.finalSize());
}

void check(const QByteArray& bytes) {
    const MemoryFile record(bytes);
    SystemError error;
    const auto read = SaveRecord::read(FileSystemCalls::system(), record.handle(), error);
    require(!error);
    if (!read)
        return;
    require(read->files().size() <= static_cast<std::size_t>(bytes.size()) / sizeof(EntryHead));
    for (const RecordedFile& file : read->files())
        checkFile(file, record.handle(), bytes.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArrayView input = viewOf(data, size);
    check(input.toByteArray());
    check(framed(input));
    return 0;
}
