#include "KillRun.h"

#include "Contents.h"
#include "SceneFiles.h"
#include "platform/UserFileWriter.h"
#include "recovery/saves/SaveRecords.h"
#include "recovery/saves/SaveRecovery.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string_view>

namespace {

constexpr int QuickKills = 60;
constexpr unsigned LongestLifeUs = 12'000;

/// One of the files that are saved in turn.
struct Saved {
    qsizetype length;
    qsizetype variation;  ///< of the length
    qsizetype part;       ///< 0: all in memory; otherwise the length of the parts of a source
    bool cuts;
    bool isMadeAnew = false;  ///< removed before each save
};
constexpr Saved Files[] = {{100, 400, 0, true},         {20'000, 15'000, 0, true},
                           {300'000, 100'000, 0, true}, {50'000, 40'000, 0, true, true},
                           {60'000, 0, 4'096, false},   {1'000'000, 0, 65'536, false}};

/// The contents with this number; those of a source differ in a few blocks.
QByteArray contents(const Saved& file, qint64 number) {
    const auto seed = static_cast<quint64>(number);
    if (file.part == 0) {
        const auto length = file.length + (file.variation > 0 ? qsizetype(number * 7'919 % file.variation) : 0);
        return noise(length, seed);
    }
    QByteArray bytes = noise(file.length, 7);
    const QByteArray fresh = noise(700, seed);
    for (qsizetype i = 0; i < 5; ++i)
        bytes.replace((number * 3'001 + i * 10'007) % (file.length - fresh.size()), fresh.size(), fresh);
    return bytes;
}

}  // namespace

void KillRun::run() {
    emptyFolder(m_root + "/files");
    emptyFolder(m_root + "/state");
    m_progress.assign(std::size(Files), Progress());
    for (std::size_t file = 0; file < std::size(Files); ++file)
        putBytes(name(file), contents(Files[file], 0));
    for (int kills = 0; m_effort.isLong() ? !m_effort.isOver() : kills < QuickKills; ++kills) {
        m_report.count("saves before kills", killOnce());
        m_report.count("kills");
        SaveRecovery(QString::fromLocal8Bit(recordFolder())).run();
        m_isBehind = false;
        for (std::size_t file = 0; file < std::size(Files); ++file)
            examine(file);
        for (const QByteArray& record : namesIn(recordFolder()))
            examineRecord(record);
    }
}

/// A save that was killed when it had written only bytes that were there before leaves the old file, and its record is
/// set aside.
void KillRun::examineRecord(const QByteArray& record) {
    if (m_isBehind && record.endsWith(SaveRecovery::AsideSuffix))
        m_report.count("records of files as they were before, set aside");
    else
        m_report.fault("kill", "a record is left: " + record);
    mustWork(::unlink((recordFolder() + '/' + record).constData()) == 0, "cannot remove " + record);
}

qint64 KillRun::killOnce() {
    int ends[2];
    mustWork(::pipe(ends) == 0, "cannot make a pipe");
    const pid_t process = ::fork();
    mustWork(process >= 0, "cannot start a process");
    if (process == 0)
        saveForEver(ends[1]);
    ::close(ends[1]);
    ::usleep(static_cast<useconds_t>(m_effort.random()() % LongestLifeUs));
    mustWork(::kill(process, SIGKILL) == 0 && ::waitpid(process, nullptr, 0) == process, "cannot kill");
    const qint64 saves = readProgress(ends[0]);
    ::close(ends[0]);
    return saves;
}

void KillRun::saveForEver(int to) const {
    SaveRecords records(QString::fromLocal8Bit(recordFolder()));
    std::vector<Progress> progress = m_progress;
    for (std::size_t i = 0;; i = (i + 1) % progress.size()) {
        const Saved& file = Files[i];
        const qint64 number = ++progress[i].begun;
        const QByteArray bytes = contents(file, number);
        Message message{static_cast<qint64>(i), number, 0};
        mustWork(::write(to, &message, sizeof message) == sizeof message, "cannot report");
        if (file.isMadeAnew)
            ::unlink(name(i).constData());
        UserFileWriter writer(FileSystemCalls::system(), &records);
        const QString path = QString::fromLocal8Bit(name(i));
        const auto tail = file.cuts ? UserFileWriter::Tail::Cut : UserFileWriter::Tail::Keep;
        const std::string_view piece(bytes.constData(), static_cast<std::size_t>(bytes.size()));
        Parts source(bytes, file.part);
        const WriteResult result =
            file.part > 0 ? writer.write(path, source, tail) : writer.write(path, BytePieces(&piece, 1), tail);
        mustWork(!result.error, "cannot save");
        message.isDone = 1;
        mustWork(::write(to, &message, sizeof message) == sizeof message, "cannot report");
    }
}

qint64 KillRun::readProgress(int from) {
    qint64 saves = 0;
    Message message{};
    while (::read(from, &message, sizeof message) == sizeof message) {
        Progress& progress = m_progress[static_cast<std::size_t>(message.file)];
        progress.begun = message.number;
        if (message.isDone != 0)
            progress.saved = message.number;
        saves += message.isDone;
    }
    return saves;
}

void KillRun::examine(std::size_t file) {
    Progress& progress = m_progress[file];
    const std::optional<QByteArray> bytes = bytesOf(name(file));
    if (!bytes && Files[file].isMadeAnew && progress.begun != progress.saved)
        return;
    for (const qint64 number : {progress.saved, progress.begun}) {
        if (bytes == contents(Files[file], number)) {
            m_isBehind = m_isBehind || number != progress.begun;
            progress.saved = number;
            return;
        }
    }
    m_report.fault("kill", name(file) + " has neither the old nor the new bytes");
    putBytes(name(file), contents(Files[file], progress.saved));
}
