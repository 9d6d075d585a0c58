#include "JournalRun.h"

#include "Contents.h"
#include "HashSum.h"
#include "SceneFiles.h"
#include "platform/FileState.h"
#include "recovery/journals/FoundJournal.h"
#include "recovery/journals/Journal.h"
#include "recovery/journals/Journals.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <memory>

namespace {

constexpr int StoriesOfAShortRun = 6;
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

void edit(std::mt19937& random, Journal& journal, std::string& text) {
    const auto at = static_cast<std::size_t>(below(random, text.size() + 1));
    const std::size_t length = std::min<std::size_t>(text.size() - at, static_cast<std::size_t>(below(random, 20)));
    if (below(random, 3) == 0) {
        journal.remove(static_cast<qint64>(at), static_cast<qint64>(length));
        text.erase(at, length);
        return;
    }
    const std::string word(static_cast<std::size_t>(1 + below(random, 40)), static_cast<char>('a' + below(random, 26)));
    journal.insert(static_cast<qint64>(at), word);
    text.insert(at, word);
}

}  // namespace

void JournalRun::run() {
    int stories = 0;
    do {
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
    std::string text(static_cast<std::size_t>(below(random, 3'000)), 'o');
    emptyFolder(stateFolder());
    putBytes(document(), QByteArray::fromStdString(text));
    WeakDisk::State first;
    first.names = {{stateFolder(), WeakDisk::Folder}};
    m_disk = WeakDisk(first);
    m_promises = {Promise()};
    LoggedJournalCalls calls(m_disk, stateFolder());
    const QString folder = QString::fromLocal8Bit(journalFolder());
    {
        Journals journals(folder, calls, limits());
        JournalBase base;
        base.path = QString::fromLocal8Bit(document());
        base.state = FileState::of(base.path);
        playLife(random, calls, journals, *journals.begin(base), text);
    }
    for (int life = below(random, 3); life >= 0; --life) {
        Journals journals(folder, calls, limits());
        const auto found = journals.takeAbandoned();
        if (found.size() != 1 || found.front()->restore() != FoundJournal::Outcome::Restored)
            return m_report.fault("journal", "the story did not happen as it should");
        const auto journal = found.front()->continueAs();
        playLife(random, calls, journals, *journal, text);
        if (life > 0)
            continue;
        // From now on it may be gone.
        m_promises.push_back({calls.place(), std::nullopt});
        m_promises.push_back({calls.place(), text});
        journal->discard();
        journals.flush(Long);
        promise(calls, std::nullopt);
    }
}

void JournalRun::playLife(std::mt19937& random, LoggedCalls& calls, Journals& journals, Journal& journal,
                          std::string& text) {
    for (int batch = 1 + below(random, 6); batch > 0; --batch) {
        for (int i = 1 + below(random, 5); i > 0; --i)
            edit(random, journal, text);
        if (below(random, 8) == 0)
            journal.setWhole(text);
        // It is a promise only when it is reported as written.
        if (journals.flush(Long))
            promise(calls, text);
        else
            m_report.fault("journal", "a batch was not written");
    }
}

void JournalRun::promise(LoggedCalls& calls, std::optional<std::string> text) {
    m_promises.push_back({calls.place(), std::move(text)});
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
    std::vector<std::optional<std::string>> texts;
    {
        Journals journals(QString::fromLocal8Bit(journalFolder()), FileSystemCalls::system(), limits());
        for (const auto& found : journals.takeAbandoned()) {
            const FoundJournal::Outcome outcome = found->restore();
            if (outcome == FoundJournal::Outcome::Restored)
                texts.emplace_back(bytesOf(found->textPath().toLocal8Bit()).value_or("unreadable").toStdString());
            else if (outcome == FoundJournal::Outcome::Failed)
                m_report.fault("journal", what + ": it could not be read");
        }
    }
    if (!isFileKept)
        mustWork(::rename(kept.constData(), document().constData()) == 0, "cannot move the document back");
    if (texts.size() > 1)
        m_report.fault("journal", what + ": there is more than one");
    if (!allows(place, texts.empty() ? std::nullopt : texts.front()))
        m_report.fault("journal", what + (texts.empty() ? ": the text is lost" : ": the text is another one"));
}

/// What was last promised, or anything later.
bool JournalRun::allows(int place, const std::optional<std::string>& text) const {
    std::size_t last = 0;
    for (std::size_t i = 0; i < m_promises.size(); ++i) {
        if (m_promises[i].place <= place)
            last = i;
    }
    // Two promises of one place are both kept.
    while (last > 0 && m_promises[last - 1].place == m_promises[last].place)
        --last;
    return std::any_of(m_promises.begin() + static_cast<std::ptrdiff_t>(last), m_promises.end(),
                       [&](const Promise& promise) { return promise.text == text; });
}
