#include "recovery/journals/JournalStream.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>
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

template <typename Change>
void JournalStream::note(News news, Change change) {
    bool isFirst;
    {
        const std::scoped_lock lock(m_mutex);
        isFirst = noteNews(news);
        change();
    }
    if (isFirst)
        m_wake();
}

template <typename Value>
Value JournalStream::locked(const Value& member) const {
    const std::scoped_lock lock(m_mutex);
    return member;
}

void JournalStream::insert(qint64 at, std::string_view bytes) {
    note(News::Edit, [&] {
        m_growth += static_cast<qint64>(bytes.size());
        if (m_hasOpen && m_open.kind == EntryKind::Insert && at == m_open.at + qint64(m_open.bytes.size()) &&
            m_open.bytes.size() + bytes.size() <= MostContinued) {
            m_open.bytes += bytes;
        } else {
            closeOpen();
            open(EntryKind::Insert, at, bytes);
        }
    });
}

/// The key Delete removes at the same place again, Backspace before it.
void JournalStream::remove(qint64 at, qint64 length) {
    note(News::Edit, [&] {
        m_growth -= length;
        if (m_hasOpen && m_open.kind == EntryKind::Remove && (at == m_open.at || at + length == m_open.at)) {
            m_open.at = at;
            m_open.length += length;
        } else {
            closeOpen();
            open(EntryKind::Remove, at, {});
            m_open.length = length;
        }
    });
}

void JournalStream::add(const JournalEntry& entry) {
    note(News::Edit, [&] {
        closeOpen();
        putIn(entry);
    });
}

void JournalStream::setWhole(std::vector<std::string> parts) {
    JournalEntry entry;
    entry.kind = EntryKind::Whole;
    for (const std::string& part : parts)
        entry.length += static_cast<qint64>(part.size());
    note(News::Whole, [&] {
        m_parts.clear();
        m_hasOpen = false;
        m_growth = entry.length;
        m_isWhole = true;
        putIn(entry);
        std::move(parts.begin(), parts.end(), std::back_inserter(m_parts));
        m_parts.emplace_back();
        m_needsWhole = false;
        m_dependsOnFile = false;
    });
}

void JournalStream::setWhole(int handle) {
    note(News::Whole, [&] {
        if (m_wholeFile >= 0)
            ::close(m_wholeFile);
        m_wholeFile = ::fcntl(handle, F_DUPFD_CLOEXEC, 0);
        if (m_wholeFile < 0)
            return;
        m_needsWhole = false;
        m_dependsOnFile = false;
    });
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

void JournalStream::replaceBy(std::shared_ptr<JournalStream> next) {
    next->hurry();
    {
        const std::scoped_lock lock(m_mutex);
        m_next = std::move(next);
    }
    m_wake();
}

/// What waits has waited in the journal before.
void JournalStream::hurry() {
    const std::scoped_lock lock(m_mutex);
    m_firstEdit = Clock::time_point::min();
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
    if (isGivenUp() || (m_isReleased && m_next == nullptr))
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

bool JournalStream::isGivenUp() const {
    return m_isDiscarded || (m_next != nullptr && (m_next->m_isWritten || m_next->isDiscarded()));
}

bool JournalStream::isDiscarded() const {
    const std::scoped_lock lock(m_mutex);
    return isGivenUp();
}

bool JournalStream::isReleased() const {
    const std::scoped_lock lock(m_mutex);
    return m_isReleased && m_next == nullptr;
}

qint64 JournalStream::time() const {
    return locked(m_time);
}

int JournalStream::takeWholeFile() {
    const std::scoped_lock lock(m_mutex);
    return std::exchange(m_wholeFile, -1);
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

/// What is the text already is no edit of it, so that the time of the last one stays.
bool JournalStream::noteNews(News news) {
    const bool isFirst = !m_waits;
    m_waits = true;
    m_lastEdit = Clock::now();
    if (isFirst)
        m_firstEdit = m_lastEdit;
    if (news == News::Edit || m_time == 0)
        m_time = presentTime();
    return isFirst;
}

void JournalStream::putIn(const JournalEntry& entry) {
    if (m_isDiscarded)
        return;
    if (m_parts.empty() || m_parts.back().size() > LongPart)
        m_parts.emplace_back();
    appendEntry(m_parts.back(), entry);
}
