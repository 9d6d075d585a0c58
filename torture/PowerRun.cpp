#include "PowerRun.h"

#include "Contents.h"
#include "HashSum.h"
#include "KeptBytes.h"
#include "SceneFiles.h"
#include "platform/UserFileWriter.h"
#include "recovery/saves/SaveRecords.h"
#include "recovery/saves/SaveRecovery.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string_view>
#include <thread>

namespace {

/// States of each kind at each place, in a round; fewer where they repeat.
constexpr int MostStatesOfAKind = 40;
constexpr int MostStatesInAShortRun = 6;
constexpr int MostRepeats = 2;

}  // namespace

void PowerRun::run() {
    const std::vector<Story> all = stories();
    do {
        for (const Story& story : all) {
            for (const bool hasFolder : {true, false})
                tryStory(story, hasFolder);
        }
    } while (m_effort.isLong() && !m_effort.isOver());
    m_report.count("states after a power cut that differ", static_cast<qint64>(m_states.size()));
}

void PowerRun::tryStory(const Story& story, bool hasFolder) {
    play(story, hasFolder);
    for (int place = 0; place <= m_disk.length() && !m_effort.isOver(); ++place) {
        const QByteArray what = "power cut at " + QByteArray::number(place);
        tryPlace(m_disk, place, place, what);
        if (!m_effort.takes())
            continue;
        tryRecovery(m_disk.upTo(place), place, "killed at " + QByteArray::number(place));
        tryRecovery(WeakDisk(WeakDisk::Moment(m_disk, place).cut(WeakDisk::Survivors::AnyBlocks, m_effort.random())),
                    place, what + " and recovered");
    }
}

void PowerRun::play(const Story& story, bool hasFolder) {
    m_story = &story;
    for (const char* folder : {"/files", "/keep", "/state"})
        emptyFolder(m_root + folder);
    mustWork(::rmdir(stateFolder().constData()) == 0, "cannot remove the folder of records");
    WeakDisk::State first;
    if (hasFolder)
        first.names = {{stateFolder(), WeakDisk::Folder}, {recordFolder(), WeakDisk::Folder}};
    first.names[m_root + "/files"] = WeakDisk::Folder;
    for (int i = 0; story.before && i < story.files; ++i) {
        first.names[target(i)] = static_cast<WeakDisk::FileId>(first.files.size());
        first.files.push_back(*story.before);
        putBytes(target(i), *story.before);
    }
    m_disk = WeakDisk(first);
    m_promises.assign(static_cast<std::size_t>(story.files), Promises(story.before));
    LoggedCalls calls(m_disk, m_root);
    {
        SaveRecords records(QString::fromLocal8Bit(recordFolder()), calls);
        SaveRecords ofAnother(QString::fromLocal8Bit(recordFolder()), calls);
        for (const Story::Step& step : story.steps)
            playStep(step, calls, step.isByAnother ? ofAnother : records);
    }
    for (int i = 0; i < story.files; ++i)
        mustWork(::link(target(i).constData(), keeper(i).constData()) == 0, "cannot keep " + target(i));
}

void PowerRun::playStep(const Story::Step& step, LoggedCalls& calls, WriteWitness& records) {
    calls.failAtWrite(step.failAtWrite);
    calls.refuseRecords(!step.hasRecord);
    if (m_story->files == 1)
        return saveFile(0, step, calls, records);
    std::vector<std::thread> threads;
    threads.reserve(static_cast<std::size_t>(m_story->files));
    for (int i = 0; i < m_story->files; ++i)
        threads.emplace_back([&, i] { saveFile(i, step, calls, records); });
    for (std::thread& thread : threads)
        thread.join();
}

void PowerRun::saveFile(int number, const Story::Step& step, LoggedCalls& calls, WriteWitness& records) {
    Promises& promises = m_promises[static_cast<std::size_t>(number)];
    const QByteArray before = bytesOf(target(number)).value_or(QByteArray());
    const QByteArray after = step.bytes + (step.cuts ? QByteArray() : before.mid(step.bytes.size()));
    if (step.hasRecord)
        promises.begun(calls.place(), after);
    else
        promises.begunWithoutRecord(calls.place());
    const auto tail = step.cuts ? UserFileWriter::Tail::Cut : UserFileWriter::Tail::Keep;
    const QString path = QString::fromLocal8Bit(target(number));
    UserFileWriter writer(calls, &records);
    const std::string_view piece(step.bytes.constData(), static_cast<std::size_t>(step.bytes.size()));
    Parts source(step.bytes, step.part);
    const WriteResult result =
        step.part > 0 ? writer.write(path, source, tail) : writer.write(path, BytePieces(&piece, 1), tail);
    if (!result.error)
        promises.reported(calls.place(), after);
    if (bool(result.error) != (step.failAtWrite > 0))
        m_report.fault(m_story->name, "the story did not happen as it should");
}

void PowerRun::tryPlace(const WeakDisk& disk, int place, int promised, const QByteArray& what) {
    const WeakDisk::Moment moment(disk, place);
    const std::uint64_t allowed = allowedAt(promised);
    const int most = m_effort.isLong() ? MostStatesOfAKind : MostStatesInAShortRun;
    for (int kind = 0; kind < WeakDisk::SurvivorKinds; ++kind) {
        int repeats = 0;
        for (int i = 0; i < most && repeats < MostRepeats; ++i) {
            const WeakDisk::State state = moment.cut(static_cast<WeakDisk::Survivors>(kind), m_effort.random());
            m_report.count("states after a power cut");
            m_states.insert(hashOf(state));
            if (!m_tried.insert({hashWithTimes(state), allowed}).second) {
                ++repeats;
                continue;
            }
            put(state);
            SaveRecovery(QString::fromLocal8Bit(recordFolder())).run();
            examine(promised, what + ", survivors " + QByteArray::number(kind));
        }
    }
}

void PowerRun::tryRecovery(WeakDisk disk, int promised, const QByteArray& what) {
    const int begin = disk.length();
    put(disk.shown(begin));
    LoggedCalls calls(disk, m_root);
    SaveRecovery(QString::fromLocal8Bit(recordFolder()), calls).run();
    for (int place = begin; place <= disk.length() && !m_effort.isOver(); ++place)
        tryPlace(disk, place, promised, what + ", power cut in the recovery at " + QByteArray::number(place - begin));
}

/// A number of what the files may hold: the judgement of a state depends on nothing else.
std::uint64_t PowerRun::allowedAt(int place) const {
    HashSum sum;
    for (const Promises& promises : m_promises)
        promises.addAllowed(place, sum);
    return sum.value();
}

void PowerRun::put(const WeakDisk::State& state) {
    const auto has = [&state](const QByteArray& name) {
        const auto found = state.names.find(name);
        return found == state.names.end() ? WeakDisk::NoFile : found->second;
    };
    for (const QByteArray& name : namesIn(recordFolder()))
        ::unlink((recordFolder() + '/' + name).constData());
    ::rmdir(recordFolder().constData());
    ::rmdir(stateFolder().constData());
    for (int i = 0; i < m_story->files; ++i)
        putTarget(i, has(target(i)), state);
    if (has(stateFolder()) != WeakDisk::Folder || has(recordFolder()) != WeakDisk::Folder)
        return;
    mustWork(::mkdir(stateFolder().constData(), 0700) == 0 && ::mkdir(recordFolder().constData(), 0700) == 0,
             "cannot make the folder of records");
    for (const auto& [name, file] : state.names) {
        if (file >= 0 && name.startsWith(recordFolder()))
            putBytes(name, state.files[static_cast<std::size_t>(file)]);
    }
}

/// Its inode stays, as on a disk: it has a second name elsewhere.
void PowerRun::putTarget(int number, WeakDisk::FileId file, const WeakDisk::State& state) const {
    struct stat status {};
    const bool isThere = ::lstat(target(number).constData(), &status) == 0;
    if (file < 0) {
        if (isThere)
            mustWork(::unlink(target(number).constData()) == 0, "cannot remove " + target(number));
        return;
    }
    putBytes(keeper(number), state.files[static_cast<std::size_t>(file)]);
    const timespec time = LoggedCalls::systemTime(state.times[static_cast<std::size_t>(file)]);
    const timespec times[] = {time, time};
    mustWork(::utimensat(AT_FDCWD, keeper(number).constData(), times, 0) == 0, "cannot set the time");
    if (!isThere)
        mustWork(::link(keeper(number).constData(), target(number).constData()) == 0, "cannot link");
}

/// A record may be kept for a file that is as it was, and has another time: the new bytes can be had from it.
void PowerRun::examine(int promised, const QByteArray& what) {
    bool isBehind = false;
    for (int i = 0; i < m_story->files; ++i) {
        const Promises::Contents contents = bytesOf(target(i));
        const Promises& promises = m_promises[static_cast<std::size_t>(i)];
        isBehind = isBehind || !promises.isLast(promised, contents);
        if (!promises.allows(promised, contents))
            m_report.fault(m_story->name, what + ": the file has bytes that were not promised");
    }
    for (const QByteArray& name : namesIn(recordFolder())) {
        if (isKeptOfTornFile(recordFolder() + '/' + name, promised))
            m_report.count("torn files that were kept before they were completed");
        else if (!isBehind || !name.endsWith(SaveRecovery::AsideSuffix))
            m_report.fault(m_story->name, what + ": a record is left: " + name);
        else
            m_report.count("records of files as they were before, set aside");
    }
}

bool PowerRun::isKeptOfTornFile(const QByteArray& record, int promised) const {
    const std::optional<KeptBytes> kept = KeptBytes::read(record);
    for (int i = 0; kept && i < m_story->files; ++i) {
        if (kept->target == target(i))
            return !m_promises[static_cast<std::size_t>(i)].allows(promised, kept->contents);
    }
    return false;
}
