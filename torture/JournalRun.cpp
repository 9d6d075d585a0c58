#include "JournalRun.h"

#include "Contents.h"
#include "HashSum.h"
#include "SceneFiles.h"
#include "recovery/journals/FoundJournal.h"
#include "recovery/journals/Journal.h"
#include "recovery/journals/Journals.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <memory>

namespace {

constexpr int StoriesOfAShortRun = 10;
/// States of each kind at each place.
constexpr int StatesOfAKind = 3;
constexpr std::chrono::seconds Long{60};

/// Shared bytes would not be seen by the log.
class LoggedJournalCalls : public LoggedCalls {
 public:
    using LoggedCalls::LoggedCalls;
    int cloneFile(int /*to*/, int /*from*/) override {
        errno = EOPNOTSUPP;
        return -1;
    }
};

JournalLimits limits() {
    JournalLimits limits;
    limits.afterLast = std::chrono::hours(1);
    limits.whileEditing = std::chrono::hours(1);
    limits.compacted = 400;
    return limits;
}

int below(std::mt19937& random, std::size_t limit) {
    return static_cast<int>(random() % static_cast<unsigned>(limit));
}

}  // namespace

void JournalRun::run() {
    int stories = 0;
    do {
        m_subject = stories % 2 == 0 ? static_cast<JournalSubject*>(&m_text) : &m_bytes;
        tryStory(m_effort.random()());
        ++stories;
    } while (m_effort.isLong() ? !m_effort.isOver() : stories < StoriesOfAShortRun);
    m_report.count("states of journals after a power cut that differ", static_cast<qint64>(m_states.size()));
}

void JournalRun::tryStory(unsigned seed) {
    m_seed = seed;
    m_tried.clear();
    play(seed);
    for (int place = 0; place <= m_disk.length() && !m_effort.isOver(); ++place)
        tryPlace(place);
}

/// The document itself is on the disk for certain, and outside of the log.
void JournalRun::play(unsigned seed) {
    std::mt19937 random(seed);
    emptyFolder(stateFolder());
    JournalBase base = m_subject->begin(random, QString::fromLocal8Bit(document()));
    WeakDisk::State first;
    first.names = {{stateFolder(), WeakDisk::Folder}};
    m_disk = WeakDisk(first);
    m_promises = {Promise()};
    LoggedJournalCalls calls(m_disk, stateFolder());
    const QString folder = QString::fromLocal8Bit(journalFolder());
    {
        Journals journals(folder, calls, limits());
        playLife(random, calls, journals, *journals.begin(std::move(base)));
    }
    for (int life = below(random, 3); life >= 0; --life) {
        Journals journals(folder, calls, limits());
        const auto found = journals.takeAbandoned();
        if (found.size() != 1 || found.front()->restore() != FoundJournal::Outcome::Restored)
            return m_report.fault("journal", "the story did not happen as it should");
        const auto journal = found.front()->continueAs();
        m_subject->broughtBack();
        playLife(random, calls, journals, *journal);
        if (life > 0)
            continue;
        // With the next change it may be gone.
        m_promises.push_back({calls.place() + 1, std::nullopt});
        m_promises.push_back({calls.place() + 1, m_subject->state()});
        journal->discard();
        journals.flush(Long);
        promise(calls, std::nullopt);
    }
}

void JournalRun::playLife(std::mt19937& random, LoggedCalls& calls, Journals& journals, Journal& journal) {
    for (int batch = 1 + below(random, 6); batch > 0; --batch) {
        for (int i = 1 + below(random, 5); i > 0; --i) {
            m_subject->edit(random, journal);
            if (below(random, 20) == 0)
                m_subject->setWhole(journal);
        }
        // It is a promise only when it is reported as written.
        if (!journals.flush(Long)) {
            m_report.fault("journal", "a batch was not written");
            continue;
        }
        m_subject->written();
        promise(calls, m_subject->state());
    }
}

void JournalRun::promise(LoggedCalls& calls, std::optional<std::string> state) {
    m_promises.push_back({calls.place(), std::move(state)});
}

void JournalRun::tryPlace(int place) {
    const WeakDisk::Moment moment(m_disk, place);
    for (int kind = 0; kind < WeakDisk::SurvivorKinds; ++kind) {
        for (int i = 0; i < StatesOfAKind; ++i) {
            const WeakDisk::State state = moment.cut(static_cast<WeakDisk::Survivors>(kind), m_effort.random());
            const std::uint64_t hash = hashOf(state);
            m_report.count("states of journals after a power cut");
            m_states.insert(hash);
            if (!m_tried.insert({hash, place}).second)
                continue;
            put(state);
            examine(place, "story " + QByteArray::number(m_seed) + ", power cut at " + QByteArray::number(place) +
                               ", survivors " + QByteArray::number(kind));
        }
    }
}

void JournalRun::put(const WeakDisk::State& state) const {
    emptyFolder(stateFolder());
    const auto found = state.names.find(journalFolder());
    if (found == state.names.end() || found->second != WeakDisk::Folder)
        return;
    mustWork(::mkdir(journalFolder().constData(), 0700) == 0, "cannot make the folder of journals");
    for (const auto& [name, file] : state.names) {
        if (file < 0 || !name.startsWith(journalFolder() + '/'))
            continue;
        putBytes(name, state.files[static_cast<std::size_t>(file)]);
        ::chmod(name.constData(), 0600);
    }
}

/// Every second time the document is another one by then, so that the copy of the base is needed.
void JournalRun::examine(int place, const QByteArray& what) {
    const QByteArray kept = document() + ".kept";
    const bool isFileKept = below(m_effort.random(), 2) == 0;
    if (!isFileKept) {
        mustWork(::rename(document().constData(), kept.constData()) == 0, "cannot move the document");
        putBytes(document(), "another");
    }
    std::vector<std::string> states;
    {
        Journals journals(QString::fromLocal8Bit(journalFolder()), FileSystemCalls::system(), limits());
        for (const auto& found : journals.takeAbandoned()) {
            const FoundJournal::Outcome outcome = found->restore();
            if (outcome == FoundJournal::Outcome::Restored)
                states.push_back(m_subject->stateOf(*found).value_or("unreadable"));
            else if (outcome == FoundJournal::Outcome::Failed)
                m_report.fault("journal", what + ": it could not be read");
        }
    }
    if (!isFileKept)
        mustWork(::rename(kept.constData(), document().constData()) == 0, "cannot move the document back");
    if (states.size() > 1)
        m_report.fault("journal", what + ": there is more than one");
    if (!allows(place, states.empty() ? std::nullopt : std::optional(states.front())))
        m_report.fault("journal", what + (states.empty() ? ": the changes are lost" : ": the changes are others"));
}

/// What was last promised, or, once anything has happened since, what was promised next. Promises of one place are all
/// kept.
bool JournalRun::allows(int place, const std::optional<std::string>& state) const {
    const auto isLater = [](int each, const Promise& promise) { return each < promise.place; };
    const auto next = std::upper_bound(m_promises.begin(), m_promises.end(), place, isLater);
    const int from = std::prev(next)->place;
    const bool isUnderWay = place > from && next != m_promises.end();
    const int to = isUnderWay ? next->place : from;
    return std::any_of(m_promises.begin(), m_promises.end(), [&](const Promise& promise) {
        return promise.place >= from && promise.place <= to && promise.state == state;
    });
}
