#include "recovery/journals/JournalContents.h"

#include "recovery/journals/JournalHead.h"
#include "recovery/journals/Payload.h"
#include "recovery/saves/SaveRecord.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <utility>

using namespace JournalFormat;

namespace {

std::optional<qint64> sizeOf(FileSystemCalls& calls, int handle) {
    struct stat status {};
    if (calls.fstat(handle, &status) != 0)
        return std::nullopt;
    return std::min<qint64>(status.st_size, LargestJournal);
}

bool isMissing(const SystemError& error) {
    return error.number == ENODATA;
}

bool isOfAnotherVersion(const char (&magic)[sizeof Magic]) {
    constexpr std::size_t Behind = VersionAt + 1;
    return std::memcmp(magic, Magic, VersionAt) == 0 &&
           std::memcmp(magic + Behind, Magic + Behind, sizeof Magic - Behind) == 0;
}

}  // namespace

JournalContents::Reading JournalContents::readHead(FileSystemCalls& calls, int handle) {
    const std::optional<qint64> size = sizeOf(calls, handle);
    char magic[sizeof Magic];
    if (!size)
        return Reading::Impossible;
    SystemError error = readExactly(calls, handle, magic, sizeof magic, 0);
    if (error)
        return isMissing(error) ? Reading::Damaged : Reading::Impossible;
    if (std::memcmp(magic, Magic, sizeof magic) != 0)
        return isOfAnotherVersion(magic) ? Reading::OfAnother : Reading::Damaged;
    JournalEnd end{sizeof Magic, FirstSeed};
    JournalFrame frame;
    if (!readFrame(calls, handle, *size, end, frame, error))
        return error && !isMissing(error) ? Reading::Impossible : Reading::Damaged;
    std::optional<JournalBase> base = frame.tag == HeadTag ? baseOf(frame.payload()) : std::nullopt;
    if (!base)
        return Reading::Damaged;
    m_base = std::move(*base);
    m_end = end;
    m_time = frame.time;
    return Reading::Done;
}

JournalContents::Reading JournalContents::readEntries(FileSystemCalls& calls, int handle) {
    const std::optional<qint64> size = sizeOf(calls, handle);
    if (!size)
        return Reading::Impossible;
    for (;;) {
        SystemError error;
        JournalEnd end = m_end;
        JournalFrame frame;
        if (!readFrame(calls, handle, *size, end, frame, error)) {
            if (error && !isMissing(error))
                return Reading::Impossible;
            break;
        }
        if (frame.tag != EntriesTag)
            break;
        m_end = end;
        m_frames.push_back(std::move(frame));
    }
    for (std::size_t i = 0; i < m_frames.size(); ++i) {
        PayloadReader reader(m_frames[i].payload());
        for (std::size_t number = 0; const auto entry = readEntry(reader); ++number)
            note(*entry, i, number);
    }
    return Reading::Done;
}

void JournalContents::note(const JournalEntry& entry, std::size_t frame, std::size_t number) {
    if (entry.isEdit()) {
        m_time = m_frames[frame].time;
        m_hasEdits = true;
    }
    if (entry.kind == EntryKind::Base)
        m_stored = entry.base;
    const bool replaces = entry.kind == EntryKind::Whole || (entry.kind == EntryKind::Base && entry.base.replaces);
    if (!replaces)
        return;
    m_hasEdits = true;
    m_hasWhole = m_hasWhole || entry.kind == EntryKind::Whole;
    m_firstFrame = frame;
    m_firstEntry = number;
}

bool JournalContents::forEachEntry(const std::function<bool(const JournalEntry&)>& take) const {
    for (std::size_t i = m_firstFrame; i < m_frames.size(); ++i) {
        PayloadReader reader(m_frames[i].payload());
        for (std::size_t number = 0; !reader.atEnd(); ++number) {
            const std::optional<JournalEntry> entry = readEntry(reader);
            if (!entry)
                return false;
            if ((i > m_firstFrame || number >= m_firstEntry) && !take(*entry))
                return false;
        }
    }
    return true;
}
