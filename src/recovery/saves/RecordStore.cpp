#include "recovery/saves/RecordStore.h"

#include "platform/Folders.h"
#include "platform/Paths.h"
#include "recovery/saves/FolderFlush.h"
#include "recovery/saves/RecordFormat.h"
#include "recovery/saves/SaveRecord.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <utility>

namespace {

constexpr mode_t RecordMode = 0600;
constexpr int NamesToTry = 20;
/// One file may keep so much space for the next record, others only a little.
constexpr qint64 KeptSize = 72LL * 1024 * 1024;
constexpr const char* Suffix = ".save";
constexpr quint64 HighestSequence = quint64(1) << 63;

std::atomic<quint64> lastSequence{0};

using Records = std::vector<std::shared_ptr<OwnRecord>>;

bool contains(const Records& records, const QByteArray& name) {
    return std::any_of(records.begin(), records.end(), [&](const auto& record) { return record->name() == name; });
}

}  // namespace

RecordStore::~RecordStore() {
    for (const auto& record : m_free)
        record->remove();
}

quint64 RecordStore::nextSequence() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto time = static_cast<quint64>(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count());
    quint64 before = lastSequence;
    while (!lastSequence.compare_exchange_weak(before, std::max(time, before + 1)))
        ;
    return std::max(time, before + 1);
}

std::shared_ptr<OwnRecord> RecordStore::take() {
    std::shared_ptr<OwnRecord> record = takeFree();
    return record != nullptr ? record : make();
}

std::shared_ptr<OwnRecord> RecordStore::takeFree() {
    const std::scoped_lock lock(m_mutex);
    while (!m_free.empty()) {
        const auto largest = std::max_element(m_free.begin(), m_free.end(), [](const auto& left, const auto& right) {
            return left->size() < right->size();
        });
        std::shared_ptr<OwnRecord> record = std::move(*largest);
        m_free.erase(largest);
        if (record->isThere())
            return record;
        std::erase(m_all, record);
    }
    return nullptr;
}

/// No two processes use the same name.
std::shared_ptr<OwnRecord> RecordStore::make() {
    const QString parent = m_folder.left(m_folder.lastIndexOf(u'/'));
    if (makeFolder(parent) || makePrivateFolder(m_folder))
        return nullptr;
    flushThoseOfOthers(all());
    for (int i = 0; i < NamesToTry; ++i) {
        const QString path = u"%1/%2-%3-%4%5"_qs.arg(m_folder)
                                 .arg(nextSequence(), 20, 10, QLatin1Char('0'))
                                 .arg(::getpid())
                                 .arg(++m_number)
                                 .arg(QLatin1String(Suffix));
        const QByteArray name = localName(path).value_or(QByteArray());
        const int handle =
            m_calls.open(name.constData(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, RecordMode);
        if (handle < 0 && errno != EEXIST && errno != EINTR)
            return nullptr;
        if (handle < 0)
            continue;
        auto record = std::make_shared<OwnRecord>(m_calls, name, handle);
        if (record->lock()) {
            const std::scoped_lock lock(m_mutex);
            m_all.push_back(record);
            return record;
        }
        record->remove();
    }
    return nullptr;
}

void RecordStore::giveBack(std::shared_ptr<OwnRecord> record) {
    std::unique_lock lock(m_mutex);
    const bool hasLarge = std::any_of(m_free.begin(), m_free.end(), [](const auto& free) { return free->isLarge(); });
    lock.unlock();
    if (!record->blank(hasLarge ? 0 : KeptSize))
        return drop(record);
    lock.lock();
    m_free.push_back(std::move(record));
}

bool RecordStore::giveSpaceBack() {
    std::unique_lock lock(m_mutex);
    const Records kept = std::exchange(m_free, {});
    lock.unlock();
    for (const auto& record : kept)
        drop(record);
    return !kept.empty();
}

void RecordStore::drop(const std::shared_ptr<OwnRecord>& record) {
    record->remove();
    m_hasRemoved = true;
    const std::scoped_lock lock(m_mutex);
    std::erase(m_all, record);
    std::erase(m_free, record);
}

Records RecordStore::all() {
    const std::scoped_lock lock(m_mutex);
    return m_all;
}

bool RecordStore::owns(const QByteArray& name) {
    const std::scoped_lock lock(m_mutex);
    return contains(m_all, name);
}

/// The folders above were perhaps made for the first record.
bool RecordStore::makeLast(OwnRecord& record) {
    if (!record.isNamed()) {
        const std::scoped_lock lock(m_folderMutex);
        if (!std::exchange(m_areFoldersFlushed, true))
            flushFoldersAbove(m_calls, m_folder);
        m_hasRemoved = false;
        if (!flushFolder(m_calls, m_folder))
            return false;
        record.setNamed();
    }
    flushRemovals(&record);
    return true;
}

void RecordStore::flushRemovals(const OwnRecord* except) {
    const Records own = all();
    for (const auto& record : own) {
        if (record.get() != except && !record->flush())
            drop(record);
    }
    flushFolderOnce();
    flushThoseOfOthers(own);
}

/// A thread that finds nothing to flush has waited for the one that does.
void RecordStore::flushFolderOnce() {
    const std::scoped_lock lock(m_folderMutex);
    if (m_hasRemoved.exchange(false))
        flushFolder(m_calls, m_folder);
}

void RecordStore::flushThoseOfOthers(const Records& own) {
    const QByteArray folder = localName(m_folder).value_or(QByteArray());
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(folder.constData()), &::closedir);
    while (entries != nullptr) {
        const dirent* entry = ::readdir(entries.get());
        if (entry == nullptr)
            return;
        const QByteArray name = folder + '/' + entry->d_name;
        if (!name.endsWith(Suffix) || contains(own, name))
            continue;
        const int handle = m_calls.open(name.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
        if (handle < 0)
            continue;
        noteSequence(handle);
        uninterrupted([&] { return m_calls.fdatasync(handle); });
        m_calls.close(handle);
    }
}

/// A number that leaves no room above it is none of ours.
void RecordStore::noteSequence(int handle) {
    RecordFormat::FileHead head{};
    if (readExactly(m_calls, handle, reinterpret_cast<char*>(&head), sizeof head, 0) ||
        std::memcmp(head.magic, RecordFormat::Magic, sizeof head.magic) != 0 || head.sequence > HighestSequence)
        return;
    quint64 before = lastSequence;
    while (before < head.sequence && !lastSequence.compare_exchange_weak(before, head.sequence))
        ;
}
