#include "recovery/journals/JournalThread.h"

#include "recovery/journals/Journal.h"
#include "recovery/saves/FolderFlush.h"

#include <algorithm>
#include <iterator>
#include <system_error>
#include <utility>

namespace {

/// A file system that does not answer must not keep the program from ending.
constexpr std::chrono::seconds LongestEnd(5);

}  // namespace

JournalThread::JournalThread(FileSystemCalls& calls, QString folder, JournalLimits limits)
    : m_calls(calls), m_folder(std::move(folder)), m_limits(limits) {}

JournalThread::~JournalThread() {
    end();
}

std::unique_ptr<Journal> JournalThread::begin(JournalBase base) {
    std::shared_ptr<JournalStream> stream = makeStream(0);
    auto output = std::make_unique<JournalOutput>(m_calls, m_folder, m_limits, std::move(base), stream);
    return add(std::move(stream), std::move(output));
}

std::unique_ptr<Journal> JournalThread::goOn(JournalBase base, JournalOutput::Continued continued, qint64 time) {
    std::shared_ptr<JournalStream> stream = makeStream(time);
    if (continued.isPartial)
        stream->askForWhole();
    auto output = std::make_unique<JournalOutput>(m_calls, m_limits, std::move(base), stream, std::move(continued));
    return add(std::move(stream), std::move(output));
}

std::shared_ptr<JournalStream> JournalThread::makeStream(qint64 time) {
    const auto wakeThread = [thread = weak_from_this()] {
        if (const auto found = thread.lock())
            found->wake();
    };
    return std::make_shared<JournalStream>(wakeThread, time);
}

std::unique_ptr<Journal> JournalThread::add(std::shared_ptr<JournalStream> stream,
                                            std::unique_ptr<JournalOutput> output) {
    auto journal = std::make_unique<Journal>(std::move(stream));
    const std::scoped_lock lock(m_mutex);
    m_added.push_back(std::move(output));
    m_hasNews = true;
    start();
    m_woken.notify_one();
    return journal;
}

/// Without a thread entries stay in memory; it is tried again with the next journal.
void JournalThread::start() {
    if (m_thread.joinable() || m_ends)
        return;
    try {
        m_thread = std::thread([self = shared_from_this()] { self->run(); });
    } catch (const std::system_error&) {
        m_isClean = false;
    }
}

void JournalThread::wake() {
    const std::scoped_lock lock(m_mutex);
    m_hasNews = true;
    m_woken.notify_one();
}

bool JournalThread::flush(std::chrono::milliseconds limit) {
    std::unique_lock lock(m_mutex);
    if (!m_thread.joinable())
        return m_isClean;
    const quint64 number = ++m_flushesAsked;
    m_woken.notify_one();
    return m_flushed.wait_for(lock, limit, [&] { return m_flushesDone >= number; }) && m_isClean;
}

void JournalThread::end() {
    std::unique_lock lock(m_mutex);
    m_ends = true;
    m_woken.notify_one();
    if (!m_thread.joinable())
        return;
    const bool hasEnded = m_ended.wait_for(lock, LongestEnd, [this] { return m_hasEnded; });
    lock.unlock();
    if (hasEnded)
        m_thread.join();
    else
        m_thread.detach();
}

void JournalThread::run() {
    std::unique_lock lock(m_mutex);
    for (;;) {
        std::move(m_added.begin(), m_added.end(), std::back_inserter(m_outputs));
        m_added.clear();
        m_hasNews = false;
        const bool ends = m_ends;
        const quint64 flushes = m_flushesAsked;
        const bool flushesNow = flushes > m_flushesDone;
        lock.unlock();
        const bool hasMore = work(ends || flushesNow, ends);
        lock.lock();
        if (flushesNow && !isCopying()) {
            m_flushesDone = flushes;
            m_isClean = isClean();
            m_flushed.notify_all();
        }
        if (ends && !hasMore)
            break;
        if (!hasMore)
            wait(lock);
    }
    m_outputs.clear();
    m_hasEnded = true;
    m_ended.notify_all();
}

/// Entries first: a base that takes long to store is stored between them, part by part.
bool JournalThread::work(bool all, bool ends) {
    const Clock::time_point now = Clock::now();
    bool hasMore = false;
    for (const auto& output : m_outputs) {
        const std::optional<Clock::time_point> due = output->dueAt();
        if (all || (due && *due <= now))
            output->write();
        if (ends)
            output->leaveOut();
    }
    for (const auto& output : m_outputs) {
        if (output->isStoringBase())
            output->step();
        hasMore = hasMore || output->isStoringBase();
    }
    removeFinished();
    return hasMore;
}

/// Journals that are gone must not come back after a power cut.
void JournalThread::removeFinished() {
    const bool isFolderChanged =
        std::any_of(m_outputs.begin(), m_outputs.end(), [](const auto& output) { return output->isRemoved(); });
    std::erase_if(m_outputs, [](const auto& output) { return output->isFinished(); });
    if (isFolderChanged)
        flushFolder(m_calls, m_folder);
}

bool JournalThread::isCopying() const {
    return std::any_of(m_outputs.begin(), m_outputs.end(), [](const auto& output) { return output->isCopyingBase(); });
}

bool JournalThread::isClean() const {
    return std::all_of(m_outputs.begin(), m_outputs.end(), [](const auto& output) { return output->isClean(); });
}

void JournalThread::wait(std::unique_lock<std::mutex>& lock) {
    std::optional<Clock::time_point> first;
    for (const auto& output : m_outputs) {
        const std::optional<Clock::time_point> due = output->dueAt();
        if (due && (!first || *due < *first))
            first = due;
    }
    const auto isWoken = [this] { return m_hasNews || m_ends || m_flushesAsked > m_flushesDone; };
    if (first)
        m_woken.wait_until(lock, *first, isWoken);
    else
        m_woken.wait(lock, isWoken);
}
