#include "recovery/journals/JournalThread.h"

#include "recovery/journals/Journal.h"
#include "recovery/saves/FolderFlush.h"

#include <algorithm>
#include <iterator>
#include <system_error>
#include <utility>

namespace {

/// A disk that does not answer must not keep the program from ending.
constexpr std::chrono::seconds LongestEnd(5);
/// For a file that is just being read, when nobody needs it any more.
constexpr std::chrono::milliseconds LastAnswer(200);

}  // namespace

JournalThread::JournalThread(FileSystemCalls& calls, QString folder, JournalLimits limits)
    : m_calls(calls), m_folder(std::move(folder)), m_limits(limits) {}

JournalThread::~JournalThread() {
    end();
}

std::unique_ptr<Journal> JournalThread::begin(JournalBase base) {
    std::shared_ptr<JournalStream> stream = makeStream(0);
    auto output = std::make_unique<JournalOutput>(m_calls, m_baseThreads, m_folder, m_limits, std::move(base), stream);
    return add(std::move(stream), std::move(output));
}

std::unique_ptr<Journal> JournalThread::goOn(JournalBase base, JournalOutput::Continued continued, qint64 time) {
    std::shared_ptr<JournalStream> stream = makeStream(time);
    if (continued.isPartial)
        stream->askForWhole();
    auto output = std::make_unique<JournalOutput>(m_calls, m_baseThreads, m_limits, std::move(base), stream,
                                                  std::move(continued));
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
    std::optional<Clock::time_point> lastMoment;
    std::unique_lock lock(m_mutex);
    for (;;) {
        std::move(m_added.begin(), m_added.end(), std::back_inserter(m_outputs));
        m_added.clear();
        m_hasNews = false;
        const bool ends = m_ends;
        if (ends && !lastMoment)
            lastMoment = Clock::now() + m_limits.atEnd;
        const bool flushesNow = m_flushesAsked > std::exchange(m_flushesBegun, m_flushesAsked);
        lock.unlock();
        work(ends || flushesNow, ends);
        const bool isCopying = this->isCopying();
        const bool isFlushed = !isCopying && !isChecking();
        lock.lock();
        if (m_flushesBegun > m_flushesDone && isFlushed) {
            m_flushesDone = m_flushesBegun;
            m_isClean = isClean();
            m_flushed.notify_all();
        }
        if (ends && (!isCopying || Clock::now() >= *lastMoment))
            break;
        const auto isWoken = [&] { return m_hasNews || m_ends != ends || m_flushesAsked > m_flushesBegun; };
        if (const auto due = ends ? lastMoment : nextDue())
            m_woken.wait_until(lock, *due, isWoken);
        else
            m_woken.wait(lock, isWoken);
    }
    lock.unlock();
    m_outputs.clear();
    m_baseThreads.wait(Clock::now() + LastAnswer);
    lock.lock();
    m_hasEnded = true;
    m_ended.notify_all();
}

/// What the base threads have found out comes first: it may be something to be written. What was written may have
/// replaced a journal.
void JournalThread::work(bool all, bool ends) {
    const Clock::time_point now = Clock::now();
    for (const auto& output : m_outputs) {
        output->takeFindings();
        const std::optional<Clock::time_point> due = output->dueAt();
        if (all)
            output->tryAgain();
        if (all || (due && *due <= now))
            output->write();
        if (ends)
            output->leaveOut();
    }
    for (const auto& output : m_outputs) {
        if (output->isGivenUp())
            output->write();
    }
    removeFinished();
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

bool JournalThread::isChecking() const {
    return std::any_of(m_outputs.begin(), m_outputs.end(), [](const auto& output) { return output->isCheckingFile(); });
}

bool JournalThread::isClean() const {
    return std::all_of(m_outputs.begin(), m_outputs.end(), [](const auto& output) { return output->isClean(); });
}

std::optional<JournalThread::Clock::time_point> JournalThread::nextDue() const {
    std::optional<Clock::time_point> first;
    for (const auto& output : m_outputs) {
        const std::optional<Clock::time_point> due = output->dueAt();
        if (due && (!first || *due < *first))
            first = due;
    }
    return first;
}
