#include "WeakDisk.h"

#include <algorithm>

namespace {

constexpr qsizetype BlockSize = 512;
constexpr qsizetype PageSize = 4096;

QByteArray folderOf(const QByteArray& name) {
    return name.left(name.lastIndexOf('/'));
}

template <typename Values>
const auto& anyOf(const Values& values, std::mt19937& random) {
    return values[random() % values.size()];
}

template <typename Values>
auto survivorOf(const Values& values, WeakDisk::Survivors survivors, std::mt19937& random) {
    if (survivors == WeakDisk::Survivors::None)
        return values.front();
    return survivors == WeakDisk::Survivors::All ? values.back() : anyOf(values, random);
}

QByteArray resized(QByteArray bytes, qsizetype length) {
    const qsizetype before = bytes.size();
    bytes.resize(length);
    if (length > before)
        std::fill(bytes.begin() + before, bytes.end(), '\0');
    return bytes;
}

/// Copies one block of `from` over that of `to`, zeros where `from` is shorter.
void copyBlock(QByteArray& to, const QByteArray& from, qsizetype at, qsizetype length) {
    for (qsizetype i = at; i < std::min(to.size(), at + length); ++i)
        to[i] = i < from.size() ? from[i] : '\0';
}

}  // namespace

WeakDisk::WeakDisk(const State& state) : m_first(state) {
    m_first.times.resize(state.files.size());
    m_shown = m_first;
    for (const qint64 time : m_first.times)
        m_clock = std::max(m_clock, time);
}

WeakDisk::FileId WeakDisk::addFile(const QByteArray& bytes) {
    m_first.files.push_back(bytes);
    m_shown.files.push_back(bytes);
    m_first.times.push_back(++m_clock);
    m_shown.times.push_back(m_clock);
    return static_cast<FileId>(m_shown.files.size()) - 1;
}

void WeakDisk::setFile(FileId file, const QByteArray& bytes) {
    m_shown.files[static_cast<std::size_t>(file)] = bytes;
    m_shown.times[static_cast<std::size_t>(file)] = ++m_clock;
    m_log.push_back({Change::FileBytes, file, {}, bytes, m_clock});
}

void WeakDisk::setTime(FileId file, qint64 time) {
    m_shown.times[static_cast<std::size_t>(file)] = time;
    m_log.push_back({.kind = Change::FileTime, .file = file, .time = time});
}

void WeakDisk::setName(const QByteArray& name, FileId file) {
    m_shown.names[name] = file;
    m_log.push_back({Change::Name, file, name});
}

WeakDisk::FileId WeakDisk::fileOf(const QByteArray& name) const {
    const auto found = m_shown.names.find(name);
    return found == m_shown.names.end() ? NoFile : found->second;
}

WeakDisk WeakDisk::upTo(int place) const {
    WeakDisk disk = *this;
    disk.m_log.resize(static_cast<std::size_t>(place));
    disk.m_shown = shown(place);
    return disk;
}

WeakDisk::State WeakDisk::shown(int place) const {
    std::mt19937 none;
    return Moment(*this, place).cut(Survivors::All, none);
}

WeakDisk::Moment::Moment(const WeakDisk& disk, int place) {
    for (const QByteArray& bytes : disk.m_first.files)
        m_files.push_back({bytes});
    for (const auto& [name, file] : disk.m_first.names)
        m_names[name] = {file};
    for (const qint64 time : disk.m_first.times)
        m_times.push_back({time});
    for (int i = 0; i < place; ++i)
        apply(disk.m_log[static_cast<std::size_t>(i)]);
}

void WeakDisk::Moment::apply(const Change& change) {
    const auto file = static_cast<std::size_t>(change.file);
    switch (change.kind) {
        case Change::FileBytes:
            m_files[file].push_back(change.bytes);
            [[fallthrough]];
        case Change::FileTime:
            m_times[file].push_back(change.time);
            break;
        case Change::FileFlush:
            m_times[file] = {m_times[file].back()};
            [[fallthrough]];
        case Change::BytesFlush:
            m_files[file] = {m_files[file].back()};
            break;
        case Change::Name: {
            std::vector<FileId>& files = m_names[change.name];
            if (files.empty())
                files.push_back(NoFile);
            files.push_back(change.file);
            break;
        }
        case Change::FolderFlush:
            for (auto& [name, files] : m_names) {
                if (folderOf(name) == change.name)
                    files = {files.back()};
            }
            break;
    }
}

WeakDisk::State WeakDisk::Moment::cut(Survivors survivors, std::mt19937& random) const {
    State state;
    for (const Versions& versions : m_files)
        state.files.push_back(cutFile(versions, survivors, random));
    for (const std::vector<qint64>& times : m_times)
        state.times.push_back(survivorOf(times, survivors, random));
    for (const auto& [name, files] : m_names)
        state.names[name] = survivorOf(files, survivors, random);
    return state;
}

QByteArray WeakDisk::Moment::cutFile(const Versions& versions, Survivors survivors, std::mt19937& random) const {
    switch (survivors) {
        case Survivors::None:
            return versions.front();
        case Survivors::All:
            return versions.back();
        case Survivors::Bytes:
            return resized(versions.back(), versions.front().size());
        case Survivors::Sizes:
            return resized(versions.front(), versions.back().size());
        case Survivors::AnyBlocks:
        case Survivors::AnyPages:
            break;
    }
    if (versions.size() == 1)
        return versions.front();
    QByteArray bytes = resized(anyOf(versions, random), anyOf(versions, random).size());
    const qsizetype length = survivors == Survivors::AnyPages ? PageSize : BlockSize;
    for (qsizetype at = 0; at < bytes.size(); at += length)
        copyBlock(bytes, anyOf(versions, random), at, length);
    return bytes;
}
