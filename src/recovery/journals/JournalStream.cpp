#include "recovery/journals/JournalStream.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

namespace {

/// A longer insertion is not continued.
constexpr std::size_t MostContinued = 4'096;
/// A part of a batch that is longer is not appended to: it would be copied as it grows.
constexpr std::size_t LongPart = 1'048'576;

qint64 presentTime() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

}  // namespace

JournalStream::~JournalStream() {
    if (m_wholeFile >= 0)
        ::close(m_wholeFile);
}

void JournalStream::insert(qint64 at, std::string_view bytes) {
    bool isFirst;
    {
        const std::scoped_lock lock(m_mutex);
        isFirst = noteEdit();
        m_growth += static_cast<qint64>(bytes.size());
        if (m_hasOpen && m_open.kind == EntryKind::Insert && at == m_open.at + qint64(m_open.bytes.size()) &&
            m_open.bytes.size() + bytes.size() <= MostContinued) {
            m_open.bytes += bytes;
        } else {
            closeOpen();
            open(EntryKind::Insert, at, bytes);
        }
    }
    wakeIf(isFirst);
}

/// The key Delete removes at the same place again, Backspace before it.
void JournalStream::remove(qint64 at, qint64 length) {
    bool isFirst;
    {
        const std::scoped_lock lock(m_mutex);
        isFirst = noteEdit();
        m_growth -= length;
        if (m_hasOpen && m_open.kind == EntryKind::Remove && (at == m_open.at || at + length == m_open.at)) {
            m_open.at = at;
            m_open.length += length;
        } else {
            closeOpen();
            open(EntryKind::Remove, at, {});
            m_open.length = length;
        }
    }
    wakeIf(isFirst);
}

void JournalStream::add(const JournalEntry& entry) {
    bool isFirst;
    {
        const std::scoped_lock lock(m_mutex);
        const qint64 time = m_time;
        isFirst = noteEdit();
        if (!entry.isEdit())
            m_time = time;
        closeOpen();
        putIn(entry);
    }
    wakeIf(isFirst);
}

void JournalStream::setWhole(std::string heldText, JointKind kind, std::vector<qint64> joints) {
    JournalEntry entry;
    entry.kind = EntryKind::Whole;
    entry.jointKind = kind;
    entry.joints = std::move(joints);
    entry.length = static_cast<qint64>(heldText.size());
    bool isFirst;
    {
        const std::scoped_lock lock(m_mutex);
        isFirst = noteWhole();
        m_parts.clear();
        m_hasOpen = false;
        m_growth = entry.length;
        m_isWhole = true;
        putIn(entry);
        m_parts.push_back(std::move(heldText));
        m_parts.emplace_back();
        m_needsWhole = false;
    }
    wakeIf(isFirst);
}

void JournalStream::setWhole(int handle) {
    bool isFirst;
    {
        const std::scoped_lock lock(m_mutex);
        isFirst = noteWhole();
        if (m_wholeFile >= 0)
            ::close(m_wholeFile);
        m_wholeFile = ::fcntl(handle, F_DUPFD_CLOEXEC, 0);
        if (m_wholeFile >= 0)
            m_needsWhole = false;
    }
    wakeIf(isFirst);
}

void JournalStream::discard() {
    {
        const std::scoped_lock lock(m_mutex);
        m_isDiscarded = true;
        m_parts.clear();
        m_hasOpen = false;
    }
    m_wake();
}

void JournalStream::release() {
    {
        const std::scoped_lock lock(m_mutex);
        m_isReleased = true;
    }
    m_wake();
}

std::optional<JournalStream::Clock::time_point> JournalStream::dueAt(const Delays& delays) const {
    const std::scoped_lock lock(m_mutex);
    if (m_isDiscarded || m_isReleased)
        return Clock::time_point::min();
    if (!m_waits)
        return std::nullopt;
    return std::min(m_lastEdit + delays.afterLast, m_firstEdit + delays.whileEditing);
}

JournalBatch JournalStream::take() {
    const std::scoped_lock lock(m_mutex);
    closeOpen();
    JournalBatch batch{std::move(m_parts), m_time, m_growth, m_isWhole};
    m_parts.clear();
    m_growth = 0;
    m_waits = false;
    m_isWhole = false;
    return batch;
}

void JournalStream::setWholeNeeded(std::function<void()> notify) {
    const std::scoped_lock lock(m_notifying);
    m_wholeNeeded = std::move(notify);
    if (m_needsWhole && m_wholeNeeded)
        m_wholeNeeded();
}

void JournalStream::askForWhole() {
    const std::scoped_lock lock(m_notifying);
    if (!m_needsWhole.exchange(true) && m_wholeNeeded)
        m_wholeNeeded();
}

bool JournalStream::isDiscarded() const {
    const std::scoped_lock lock(m_mutex);
    return m_isDiscarded;
}

bool JournalStream::isReleased() const {
    const std::scoped_lock lock(m_mutex);
    return m_isReleased;
}

int JournalStream::takeWholeFile() {
    const std::scoped_lock lock(m_mutex);
    return std::exchange(m_wholeFile, -1);
}

quint64 JournalStream::edits() const {
    const std::scoped_lock lock(m_mutex);
    return m_edits;
}

qint64 JournalStream::time() const {
    const std::scoped_lock lock(m_mutex);
    return m_time;
}

/// Memory is used again: a key reserves none.
void JournalStream::open(EntryKind kind, qint64 at, std::string_view bytes) {
    m_hasOpen = true;
    m_open.kind = kind;
    m_open.at = at;
    m_open.bytes = bytes;
}

void JournalStream::closeOpen() {
    if (!m_hasOpen)
        return;
    m_hasOpen = false;
    JournalEntry entry;
    entry.kind = m_open.kind;
    entry.at = m_open.at;
    entry.length = m_open.length;
    entry.bytes = m_open.bytes;
    putIn(entry);
}

bool JournalStream::noteEdit() {
    const bool isFirst = noteNews();
    m_time = presentTime();
    return isFirst;
}

/// What is the text already is no edit of it, so that the time of the last one stays.
bool JournalStream::noteWhole() {
    const bool isFirst = noteNews();
    if (m_time == 0)
        m_time = presentTime();
    return isFirst;
}

bool JournalStream::noteNews() {
    const bool isFirst = !m_waits;
    m_waits = true;
    m_lastEdit = Clock::now();
    if (isFirst)
        m_firstEdit = m_lastEdit;
    ++m_edits;
    return isFirst;
}

void JournalStream::putIn(const JournalEntry& entry) {
    if (m_isDiscarded)
        return;
    if (m_parts.empty() || m_parts.back().size() > LongPart)
        m_parts.emplace_back();
    appendEntry(m_parts.back(), entry);
}

void JournalStream::wakeIf(bool isFirst) const {
    if (isFirst)
        m_wake();
}
