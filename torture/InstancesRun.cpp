#include "InstancesRun.h"

#include "Contents.h"
#include "SceneFiles.h"
#include "platform/FileReplacement.h"
#include "platform/UserFileWriter.h"
#include "recovery/saves/SaveRecords.h"
#include "recovery/saves/SaveRecovery.h"
#include "settings/files/OwnTextFile.h"
#include "settings/registry/RegistryData.h"
#include "settings/registry/SqliteRegistry.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <string_view>

namespace {

constexpr int Instances = 16;
constexpr int QuickKills = 60;
constexpr unsigned LongestPauseUs = 20'000;
constexpr qsizetype FileLength = 5'000;
constexpr int Lines = 40;
constexpr RegistryRoot Root = HKEY_CURRENT_USER;
/// The number of what is missing or not whole.
constexpr qint64 Damaged = -1;

const QString Key = u"Software\\Torture"_qs;

/// The paths that an instance writes; all of them write the list with the number -1.
struct Places {
    QByteArray root;

    QString store() const { return at("settings/store.db"); }
    QString records() const { return at("state/saves"); }
    QString list(int instance) const { return at("lists/list" + QByteArray::number(instance)); }
    QString file(int instance) const { return at("files/file" + QByteArray::number(instance)); }

 private:
    QString at(const QByteArray& name) const { return QString::fromLocal8Bit(root + '/' + name); }
};

/// A list of which each line names its writer and its number.
QStringList list(int instance, qint64 number) {
    QStringList lines;
    for (int i = 0; i < Lines + number % 7; ++i)
        lines.append(u"%1 %2 %3"_qs.arg(number).arg(instance).arg(i));
    return lines;
}

qint64 numberOfList(const QString& path, int instance) {
    const QStringList lines = OwnTextFile::readLines(path, OwnTextFile::MostListBytes).value_or(QStringList());
    if (lines.isEmpty())
        return Damaged;
    const QStringList words = lines.first().split(u' ');
    const qint64 number = words.first().toLongLong();
    const int writer = instance >= 0 ? instance : words.value(1).toInt();
    return lines == list(writer, number) ? number : Damaged;
}

QByteArray file(int instance, qint64 number) {
    return QByteArray::number(number) + ' ' +
           noise(FileLength + number % 3'000, static_cast<quint64>(number * 64 + instance));
}

qint64 numberOfFile(const QString& path, int instance) {
    const QByteArray bytes = bytesOf(path.toLocal8Bit()).value_or(QByteArray());
    const qint64 number = bytes.left(bytes.indexOf(' ')).toLongLong();
    return bytes == file(instance, number) ? number : Damaged;
}

QString valueName(InstancesRun::Kind kind, int instance, int part = 0) {
    return u"%1-%2-%3"_qs.arg(int(kind)).arg(instance).arg(part);
}

int writeSetting(RegistryStore& store, const QString& name, qint64 number) {
    return store.writeValue(Root, Key, name, RegistryData::fromInteger(static_cast<qint32>(number)));
}

qint64 numberOfSetting(RegistryStore& store, const QString& name) {
    RegistryValue value;
    const bool isRead = store.readValue(Root, Key, name, value) == RegistryCode::Ok;
    return isRead ? RegistryData::littleEndian(value) : Damaged;
}

qint64 numberOfPair(RegistryStore& store, int instance) {
    const qint64 first = numberOfSetting(store, valueName(InstancesRun::Pair, instance, 0));
    return first == numberOfSetting(store, valueName(InstancesRun::Pair, instance, 1)) ? first : Damaged;
}

/// The means of one instance; made in its own process.
class Writer {
 public:
    Writer(const QByteArray& root, int instance)
        : m_places{root}, m_instance(instance), m_store(m_places.store()), m_records(m_places.records()) {}

    bool write(InstancesRun::Kind kind, qint64 number) {
        switch (kind) {
            case InstancesRun::Setting:
                return writeSetting(m_store, valueName(kind, m_instance), number) == RegistryCode::Ok;
            case InstancesRun::Pair:
                return writePair(number) == RegistryCode::Ok;
            case InstancesRun::OwnList:
                return !OwnTextFile::replace(m_places.list(m_instance), list(m_instance, number));
            case InstancesRun::SharedList:
                return !OwnTextFile::replace(m_places.list(-1), list(m_instance, number));
            default:
                return writeFile(number);
        }
    }

 private:
    int writePair(qint64 number) {
        return m_store.runBatch([&] {
            const int code = writeSetting(m_store, valueName(InstancesRun::Pair, m_instance, 0), number);
            return code != RegistryCode::Ok
                       ? code
                       : writeSetting(m_store, valueName(InstancesRun::Pair, m_instance, 1), number);
        });
    }
    bool writeFile(qint64 number) {
        const QByteArray bytes = file(m_instance, number);
        const std::string_view piece(bytes.constData(), static_cast<std::size_t>(bytes.size()));
        return !UserFileWriter(FileSystemCalls::system(), &m_records)
                    .write(m_places.file(m_instance), BytePieces(&piece, 1))
                    .error;
    }

    const Places m_places;
    const int m_instance;
    SqliteRegistry m_store;
    SaveRecords m_records;
};

}  // namespace

InstancesRun::~InstancesRun() {
    for (Instance& instance : m_instances) {
        if (instance.process > 0) {
            ::kill(instance.process, SIGKILL);
            ::waitpid(instance.process, nullptr, 0);
        }
    }
    ::close(m_pipe[0]);
    ::close(m_pipe[1]);
}

void InstancesRun::run() {
    for (const char* folder : {"/settings", "/lists", "/files", "/state"})
        emptyFolder(m_root + folder);
    mustWork(::pipe2(m_pipe, O_CLOEXEC) == 0 && ::fcntl(m_pipe[0], F_SETFL, O_NONBLOCK) == 0, "cannot make a pipe");
    m_instances.resize(Instances);
    for (int i = 0; i < Instances; ++i) {
        Writer first(m_root, i);
        for (int kind = 0; kind < Kinds; ++kind)
            mustWork(first.write(static_cast<Kind>(kind), 0), "cannot write the first time");
    }
    for (int i = 0; i < Instances; ++i)
        start(i);
    for (int kills = 0; m_effort.isLong() ? !m_effort.isOver() : kills < QuickKills; ++kills) {
        ::usleep(static_cast<useconds_t>(m_effort.random()() % LongestPauseUs));
        const int instance = static_cast<int>(m_effort.random()() % Instances);
        kill(instance);
        examine(instance);
        start(instance);
        m_report.count("kills among instances");
    }
    examineEnd();
}

void InstancesRun::start(int instance) {
    const pid_t process = ::fork();
    mustWork(process >= 0, "cannot start a process");
    if (process == 0)
        writeForEver(instance);
    m_instances[static_cast<std::size_t>(instance)].process = process;
}

void InstancesRun::kill(int instance) {
    Instance& killed = m_instances[static_cast<std::size_t>(instance)];
    mustWork(::kill(killed.process, SIGKILL) == 0 && ::waitpid(killed.process, nullptr, 0) == killed.process,
             "cannot kill");
    killed.process = -1;
    readMessages();
}

void InstancesRun::writeForEver(int instance) {
    SaveRecovery(Places{m_root}.records()).run();
    Writer writer(m_root, instance);
    std::array<Progress, Kinds> progress = m_instances[static_cast<std::size_t>(instance)].progress;
    for (int i = 0;; i = (i + 1) % Kinds) {
        const qint64 number = ++progress[static_cast<std::size_t>(i)].begun;
        send({instance, i, number, -1});
        const auto begin = std::chrono::steady_clock::now();
        const bool isDone = writer.write(static_cast<Kind>(i), number);
        const auto time = std::chrono::steady_clock::now() - begin;
        mustWork(isDone, "an instance cannot write");
        send({instance, i, number, std::chrono::duration_cast<std::chrono::microseconds>(time).count()});
    }
}

void InstancesRun::send(const Message& message) const {
    mustWork(::write(m_pipe[1], &message, sizeof message) == sizeof message, "cannot report");
}

void InstancesRun::readMessages() {
    Message message{};
    while (::read(m_pipe[0], &message, sizeof message) == sizeof message) {
        Progress& progress =
            m_instances[static_cast<std::size_t>(message.instance)].progress[static_cast<std::size_t>(message.kind)];
        progress.begun = message.number;
        if (message.microseconds < 0)
            continue;
        progress.saved = message.number;
        m_longestWrite = std::max(m_longestWrite, message.microseconds);
        m_report.count("writes of instances");
    }
}

/// Of an instance that is dead; the others write on.
void InstancesRun::examine(int instance) {
    const Places places{m_root};
    SaveRecovery(places.records()).run();
    SqliteRegistry store(places.store());
    examineNumber(instance, Setting, numberOfSetting(store, valueName(Setting, instance)));
    examineNumber(instance, Pair, numberOfPair(store, instance));
    examineNumber(instance, OwnList, numberOfList(places.list(instance), instance));
    examineNumber(instance, File, numberOfFile(places.file(instance), instance));
    examineSharedList();
}

void InstancesRun::examineNumber(int instance, Kind kind, qint64 number) {
    static constexpr const char* Names[] = {"setting", "pair of settings", "list", "shared list", "file"};
    Progress& progress = m_instances[static_cast<std::size_t>(instance)].progress[kind];
    if (number < progress.saved || number > progress.begun) {
        fault(instance, QByteArray(Names[kind]) + (number == Damaged ? " is missing or damaged" : " is lost"));
        return;
    }
    progress.saved = number;
    progress.begun = std::max(progress.begun, number);
}

void InstancesRun::examineSharedList() {
    if (numberOfList(Places{m_root}.list(-1), -1) == Damaged)
        fault(-1, "the list of all is missing or damaged");
}

void InstancesRun::examineEnd() {
    for (int i = 0; i < Instances; ++i)
        kill(i);
    for (int i = 0; i < Instances; ++i) {
        examine(i);
        // The next write of a list removes what a kill has left beside it.
        Writer last(m_root, i);
        mustWork(last.write(OwnList, 1) && last.write(SharedList, 1), "cannot write the last time");
    }
    m_report.count("longest write of an instance, in milliseconds", m_longestWrite / 1'000);
    for (const QByteArray& name : namesIn(m_root + "/lists")) {
        if (name.endsWith(ReplacementSuffix))
            fault(-1, "left beside a list: " + name);
    }
    for (const QByteArray& name : namesIn(m_root + "/settings")) {
        if (name.contains("damaged"))
            fault(-1, "the settings were damaged: " + name);
    }
    for (const QByteArray& name : namesIn(m_root + "/state/saves"))
        fault(-1, "a record is left: " + name);
}

void InstancesRun::fault(int instance, const QByteArray& what) {
    m_report.fault("instance " + QByteArray::number(instance), what);
}
