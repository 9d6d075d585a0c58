#include "search/engine/ParallelSearch.h"

#include "platform/BackgroundWork.h"
#include "platform/UserFileWriter.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <new>
#include <optional>
#include <set>
#include <span>
#include <thread>
#include <utility>

namespace {

/// Steps that are begun before those in front of them were taken.
constexpr qint64 StepsAhead = 1024;
/// So many are worth waking the taker.
constexpr qint64 StepsAtOnce = 256;
/// Steps that one thread takes from the source, for all of them.
constexpr std::size_t StepsAsked = 32;
/// On a slow disk the first of them are searched before the others are found.
constexpr std::chrono::milliseconds LongestAsking{2};
/// Bytes of findings that wait to be taken.
constexpr qint64 BytesAhead = 64LL * 1024 * 1024;
constexpr unsigned MostThreads = 8;

/// A thread that writes waits for the disk most of the time.
unsigned threadsFor(const SearchRequest& request) {
    return request.replaces ? MostThreads : std::clamp(std::thread::hardware_concurrency(), 1U, MostThreads);
}

using FileKey = std::pair<quint64, quint64>;

FileKey keyOf(const FileState& state) {
    return {state.device, state.inode};
}

/// Whether the taker has to do something before more may be written: the user is asked, or the file is replaced in by
/// other means.
bool needsTaker(const SearchedStep& step) {
    return step.step.kind == WalkStep::Unreadable || step.finding.gaveUp;
}

qint64 bytesOf(const FileFinding& finding) {
    return static_cast<qint64>(finding.newText.size()) +
           static_cast<qint64>(finding.matches.matches().size() * sizeof(FileMatches::Match));
}

}  // namespace

/// Shared by all threads; what is in it is guarded by the mutex, but for the source while it is asked.
struct ParallelSearch::State {
    State(const SearchRequest& wanted, std::unique_ptr<FileSource> from) : request(wanted), source(std::move(from)) {}

    const SearchRequest request;
    std::atomic<bool> cancelled = false;
    LargeFiles largeFiles;

    std::mutex mutex;
    std::condition_variable worthTaking;
    std::condition_variable moreToDo;

    std::unique_ptr<FileSource> source;
    bool asking = false;  ///< a thread asks the source
    bool sourceEnded = false;
    std::deque<std::pair<qint64, WalkStep>> toSearch;  ///< the source has given them
    qint64 begun = 0;                                  ///< steps that the source has given
    qint64 decided = 0;                                ///< steps of which it is clear whether they are written
    std::optional<qint64> heldAt;  ///< a step that needs the taker: those behind it are not decided until it is done
    qint64 taken = 0;
    qint64 bytes = 0;                         ///< of the findings that were not taken
    std::map<qint64, SearchedStep> searched;  ///< by number: wait until it is decided
    std::map<qint64, SearchedStep> ready;
    std::deque<std::pair<qint64, SearchedStep>> toWrite;
    int searchers = 0;  ///< threads that search a file
    int writers = 0;
    std::set<FileKey> writing;
    std::set<FileKey> written;  ///< and being written

    bool maySearch() const { return !toSearch.empty() && (bytes < BytesAhead || toSearch.front().first == taken); }
    bool mayAsk() const {
        return !cancelled && !sourceEnded && !asking && toSearch.empty() && begun - taken < StepsAhead;
    }
    /// Behind a step that is held there may be more to write.
    bool isOver() const {
        const bool noneComes = cancelled || (sourceEnded && !heldAt);
        return noneComes && toSearch.empty() && toWrite.empty() && !asking;
    }
    bool hasWork() const { return !toWrite.empty() || maySearch() || mayAsk(); }
    bool isAtEnd() const {
        const bool noneOpen = cancelled ? !hasNext() && searchers == 0 : sourceEnded && taken == begun;
        return noneOpen && toWrite.empty() && writers == 0;
    }
    bool hasNext() const { return !ready.empty() && ready.begin()->first == taken; }
    bool isWorthTaking() const {
        return isAtEnd() || static_cast<qint64>(ready.size()) >= StepsAtOnce || ((cancelled || heldAt) && hasNext());
    }

    void decide();
    void endHold();
    void dropWrites();
    void finish(qint64 number, SearchedStep step);
};

/// Passes the steps on whose predecessors were all searched. From a cancel on none is written any more.
void ParallelSearch::State::decide() {
    for (auto next = searched.find(decided); next != searched.end() && !heldAt; next = searched.find(decided)) {
        SearchedStep step = std::move(next->second);
        searched.erase(next);
        const qint64 number = decided++;
        if (request.replaces && needsTaker(step))
            heldAt = number;
        if (!request.replaces || step.finding.gaveUp || step.finding.matches.empty()) {
            ready.emplace(number, std::move(step));
        } else {
            toWrite.emplace_back(number, std::move(step));
            moreToDo.notify_one();
        }
    }
    if (cancelled) {
        toSearch.clear();
        dropWrites();
    }
    if (isWorthTaking())
        worthTaking.notify_all();
}

/// The taker comes back when it has done what it took.
void ParallelSearch::State::endHold() {
    if (!heldAt || taken <= *heldAt)
        return;
    heldAt.reset();
    decide();
}

void ParallelSearch::State::dropWrites() {
    for (auto& [number, step] : toWrite) {
        step.finding = {};
        step.finding.cancelled = true;
        ready.emplace(number, std::move(step));
    }
    toWrite.clear();
}

void ParallelSearch::State::finish(qint64 number, SearchedStep step) {
    bytes += bytesOf(step.finding);
    searched.emplace(number, std::move(step));
    decide();
}

/// One of the threads.
class ParallelSearch::Worker {
 public:
    explicit Worker(std::shared_ptr<State> state)
        : m_state(std::move(state)), m_search(m_state->request, m_state->cancelled, m_state->largeFiles) {}

    void run() {
        std::unique_lock lock(m_state->mutex);
        for (;;) {
            m_state->moreToDo.wait(lock, [this] { return m_state->hasWork() || m_state->isOver(); });
            if (!m_state->toWrite.empty())
                writeNext(lock);
            else if (m_state->maySearch())
                searchNext(lock);
            else if (m_state->mayAsk())
                askSource(lock);
            else
                break;
        }
        m_state->moreToDo.notify_all();
        m_state->worthTaking.notify_all();
    }

 private:
    void askSource(std::unique_lock<std::mutex>& lock);
    bool fillFromSource(std::vector<WalkStep>& steps) const;
    void searchNext(std::unique_lock<std::mutex>& lock);
    void writeNext(std::unique_lock<std::mutex>& lock);
    void write(SearchedStep& step);

    const std::shared_ptr<State> m_state;
    FileSearch m_search;
};

/// For all threads, so that they seldom wait for each other.
void ParallelSearch::Worker::askSource(std::unique_lock<std::mutex>& lock) {
    m_state->asking = true;
    lock.unlock();
    std::vector<WalkStep> steps;
    const bool isEnd = !fillFromSource(steps);
    lock.lock();
    m_state->asking = false;
    m_state->sourceEnded = isEnd;
    for (WalkStep& next : steps)
        m_state->toSearch.emplace_back(m_state->begun++, std::move(next));
    m_state->decide();
    m_state->moreToDo.notify_all();
}

/// False at the end of the source.
bool ParallelSearch::Worker::fillFromSource(std::vector<WalkStep>& steps) const {
    const auto end = std::chrono::steady_clock::now() + LongestAsking;
    do {
        std::optional<WalkStep> step = m_state->source->next();
        if (!step)
            return false;
        steps.push_back(*std::move(step));
    } while (steps.size() < StepsAsked && !m_state->cancelled && std::chrono::steady_clock::now() < end);
    return true;
}

void ParallelSearch::Worker::searchNext(std::unique_lock<std::mutex>& lock) {
    auto [number, step] = std::move(m_state->toSearch.front());
    m_state->toSearch.pop_front();
    ++m_state->searchers;
    lock.unlock();
    SearchedStep searched{std::move(step), {}, false};
    if (searched.step.kind == WalkStep::File)
        searched.finding = m_search.search(searched.step.path, searched.step.isKnownRegular);
    lock.lock();
    --m_state->searchers;
    m_state->finish(number, std::move(searched));
}

void ParallelSearch::Worker::writeNext(std::unique_lock<std::mutex>& lock) {
    auto [number, step] = std::move(m_state->toWrite.front());
    m_state->toWrite.pop_front();
    ++m_state->writers;
    const FileKey key = step.finding.state ? keyOf(*step.finding.state) : FileKey();
    m_state->moreToDo.wait(lock, [&] { return !m_state->writing.contains(key); });
    const bool again = !m_state->written.insert(key).second;
    m_state->writing.insert(key);
    const qint64 bytesBefore = bytesOf(step.finding);
    lock.unlock();
    if (again || step.finding.state != FileState::of(step.step.path))
        step.finding = m_search.search(step.step.path);
    write(step);
    lock.lock();
    --m_state->writers;
    m_state->writing.erase(key);
    m_state->bytes += bytesOf(step.finding) - bytesBefore;
    m_state->ready.emplace(number, std::move(step));
    m_state->moreToDo.notify_all();
    if (m_state->isWorthTaking())
        m_state->worthTaking.notify_all();
}

/// A file that cannot be written is left as it was, and its matches are listed all the same.
void ParallelSearch::Worker::write(SearchedStep& step) {
    if (step.finding.matches.empty() || step.finding.gaveUp)
        return;
    const std::string text = std::move(step.finding.newText);
    const std::string_view whole = text;
    try {
        const EncodedText encoded = encodeText(std::span(&whole, 1), step.finding.format);
        step.isWritten = !encoded.failure && !UserFileWriter().write(step.step.path, encoded.pieces).error;
    } catch (const std::bad_alloc&) {
        step.isWritten = false;
    }
}

ParallelSearch::ParallelSearch(const SearchRequest& request, std::unique_ptr<FileSource> source)
    : m_state(std::make_shared<State>(request, std::move(source))) {
    for (unsigned left = threadsFor(request); left > 0; --left) {
        m_threads.push_back(
            std::make_unique<BackgroundWork>([state = m_state](const std::atomic<bool>&) { Worker(state).run(); }));
    }
}

ParallelSearch::~ParallelSearch() {
    cancel();
}

void ParallelSearch::cancel() {
    const std::scoped_lock lock(m_state->mutex);
    m_state->cancelled = true;
    m_state->decide();
    m_state->moreToDo.notify_all();
}

std::vector<SearchedStep> ParallelSearch::take(std::chrono::milliseconds limit) {
    std::unique_lock lock(m_state->mutex);
    m_state->endHold();
    m_state->worthTaking.wait_for(lock, limit, [this] { return m_state->isWorthTaking(); });
    std::vector<SearchedStep> steps;
    for (auto first = m_state->ready.begin(); first != m_state->ready.end() && first->first == m_state->taken;
         first = m_state->ready.erase(first)) {
        m_state->bytes -= bytesOf(first->second.finding);
        steps.push_back(std::move(first->second));
        ++m_state->taken;
    }
    m_state->moreToDo.notify_all();
    return steps;
}

bool ParallelSearch::hasMoreToTake() const {
    const std::scoped_lock lock(m_state->mutex);
    return m_state->hasNext() || !m_state->toWrite.empty() || m_state->writers > 0;
}

bool ParallelSearch::atEnd() const {
    const std::scoped_lock lock(m_state->mutex);
    return m_state->isAtEnd();
}
