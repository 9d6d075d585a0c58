#include "recovery/journals/JournalFile.h"

#include "platform/Folders.h"
#include "platform/Paths.h"
#include "recovery/saves/FolderFlush.h"

#include <QDir>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <utility>

namespace {

constexpr mode_t FileMode = 0600;
constexpr int NamesToTry = 20;

QByteArray nameOf(const QString& path) {
    return localName(path).value_or(QByteArray());
}

/// Stems ascend, also when the clock was set back, and no two processes use the same one.
QString newStem() {
    static std::atomic<qint64> last{0};
    static std::atomic<unsigned> number{0};
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    qint64 time = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
    qint64 before = last;
    while (!last.compare_exchange_weak(before, std::max(time, before + 1)))
        ;
    time = std::max(time, before + 1);
    return u"%1-%2-%3"_qs.arg(time, 20, 10, QLatin1Char('0')).arg(::getpid()).arg(++number);
}

QString withSuffix(const QString& stem) {
    return stem + QLatin1String(JournalFile::Suffix);
}

QString stemOf(const QString& name) {
    return name.left(name.indexOf(u'.'));
}

}  // namespace

JournalFile::JournalFile(FileSystemCalls& calls, QString folder, QString stem, QString name, int handle)
    : m_calls(calls), m_folder(std::move(folder)), m_stem(std::move(stem)), m_name(std::move(name)), m_handle(handle) {}

JournalFile::~JournalFile() {
    m_calls.close(m_handle);
}

std::unique_ptr<JournalFile> JournalFile::open(FileSystemCalls& calls, const QString& folder, const QString& name,
                                               Opening& opening) {
    int handle = -1;
    opening = lockOwnFile(calls, nameOf(folder + u'/' + name), handle);
    if (opening != Opening::Done)
        return nullptr;
    return std::unique_ptr<JournalFile>(new JournalFile(calls, folder, stemOf(name), name, handle));
}

std::unique_ptr<JournalFile> JournalFile::create(FileSystemCalls& calls, const QString& folder) {
    const QString parent = folder.left(folder.lastIndexOf(u'/'));
    if (makeFolder(parent) || makePrivateFolder(folder))
        return nullptr;
    for (int i = 0; i < NamesToTry; ++i) {
        if (auto file = createNamed(calls, folder, newStem()))
            return file;
        if (errno != EEXIST && errno != EINTR)
            return nullptr;
    }
    return nullptr;
}

std::unique_ptr<JournalFile> JournalFile::createFor(const JournalFile& old) {
    const QString name = withSuffix(old.m_stem) + QLatin1String(NewSuffix);
    old.m_calls.unlink(nameOf(old.m_folder + u'/' + name).constData());
    return createNamed(old.m_calls, old.m_folder, old.m_stem);
}

std::unique_ptr<JournalFile> JournalFile::createNamed(FileSystemCalls& calls, const QString& folder,
                                                      const QString& stem) {
    const QString name = withSuffix(stem) + QLatin1String(NewSuffix);
    const int handle = calls.open(nameOf(folder + u'/' + name).constData(),
                                  O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, FileMode);
    if (handle < 0)
        return nullptr;
    std::unique_ptr<JournalFile> file(new JournalFile(calls, folder, stem, name, handle));
    if (file->lockNew())
        return file;
    file->giveUp();
    errno = EEXIST;
    return nullptr;
}

/// Another process that looks for abandoned journals may have removed this one before it was locked.
bool JournalFile::lockNew() const {
    return uninterrupted([&] { return m_calls.flock(m_handle, LOCK_EX); }) == 0 && isOwnFile(m_calls, m_handle);
}

QString JournalFile::basePath(const QString& stemPath, qint64 number) {
    return stemPath + u'.' + QString::number(number) + QLatin1String(BaseSuffix);
}

QString JournalFile::textPath() const {
    return stemPath() + QLatin1String(TextSuffix);
}

bool JournalFile::isAside() const {
    return m_name.endsWith(QLatin1String(AsideSuffix));
}

bool JournalFile::isGone() const {
    struct stat status {};
    return m_calls.fstat(m_handle, &status) == 0 && status.st_nlink == 0;
}

bool JournalFile::publish() {
    const QString name = withSuffix(m_stem);
    if (uninterrupted([&] { return m_calls.fsync(m_handle); }) != 0 ||
        m_calls.rename(nameOf(path()).constData(), nameOf(m_folder + u'/' + name).constData()) != 0)
        return false;
    m_name = name;
    // From here on the file is the journal, whatever becomes of the flush: it must not be taken away again.
    flushFoldersAbove(m_calls, m_folder);
    flushFolder();
    return true;
}

void JournalFile::giveUp() {
    m_calls.unlink(nameOf(path()).constData());
}

bool JournalFile::remove() {
    const bool isDone = m_calls.unlink(nameOf(path()).constData()) == 0 || m_calls.ftruncate(m_handle, 0) == 0;
    if (isDone)
        removeLeftovers(-1);
    return isDone;
}

bool JournalFile::setAside() {
    const QString name = m_name + QLatin1String(AsideSuffix);
    if (m_calls.rename(nameOf(path()).constData(), nameOf(m_folder + u'/' + name).constData()) != 0)
        return false;
    m_name = name;
    return true;
}

void JournalFile::removeBase(qint64 number) const {
    m_calls.unlink(nameOf(basePath(number)).constData());
}

void JournalFile::removeLeftovers(qint64 keptBase) const {
    const QString kept = FileNameOf(basePath(keptBase));
    const QStringList patterns = {m_stem + u".*"_qs + QLatin1String(BaseSuffix), m_stem + QLatin1String(TextSuffix)};
    for (const QString& name : QDir(m_folder).entryList(patterns, QDir::Files | QDir::Hidden | QDir::System)) {
        if (name != kept)
            m_calls.unlink(nameOf(m_folder + u'/' + name).constData());
    }
}

bool JournalFile::flushFolder() const {
    return ::flushFolder(m_calls, m_folder);
}

/// A file beside a journal is never there before the journal is, which is perhaps not complete yet, and the names of
/// the journal are looked for in the order in which it is renamed.
void removeOrphans(FileSystemCalls& calls, const QString& folder) {
    // Never complete, and of a process that is gone: a living one has it locked.
    const QString pattern = u"*"_qs + QLatin1String(JournalFile::Suffix) + QLatin1String(JournalFile::NewSuffix);
    for (const QString& name : QDir(folder).entryList({pattern}, QDir::Files | QDir::Hidden)) {
        JournalFile::Opening opening = JournalFile::Opening::Missing;
        if (const auto file = JournalFile::open(calls, folder, name, opening))
            calls.unlink(nameOf(file->path()).constData());
    }

    const QStringList patterns = {u"*.*"_qs + QLatin1String(JournalFile::BaseSuffix),
                                  u"*"_qs + QLatin1String(JournalFile::TextSuffix)};
    for (const QString& name : QDir(folder).entryList(patterns, QDir::Files | QDir::Hidden)) {
        const QString journal = folder + u'/' + withSuffix(stemOf(name));
        const auto exists = [&journal](const char* suffix) {
            struct stat status {};
            return ::lstat(nameOf(journal + QLatin1String(suffix)).constData(), &status) == 0;
        };
        const bool isOwned = exists(JournalFile::NewSuffix) || exists("") || exists(JournalFile::AsideSuffix);
        if (!isOwned)
            calls.unlink(nameOf(folder + u'/' + name).constData());
    }
}
