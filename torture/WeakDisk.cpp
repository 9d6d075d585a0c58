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

WeakDisk::WeakDisk(const State& state) : m_first(state), m_shown(state) {}

WeakDisk::FileId WeakDisk::addFile(const QByteArray& bytes) {
    m_first.files.push_back(bytes);
    m_shown.files.push_back(bytes);
    return static_cast<FileId>(m_shown.files.size()) - 1;
}

void WeakDisk::setFile(FileId file, const QByteArray& bytes) {
    m_shown.files[static_cast<std::size_t>(file)] = bytes;
    m_log.push_back({Change::FileBytes, file, {}, bytes});
}

void WeakDisk::setName(const QByteArray& name, FileId file) {
    m_shown.names[name] = file;
    m_log.push_back({Change::Name, file, name, {}});
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
    for (int i = 0; i < place; ++i) {
        const Change& change = disk.m_log[static_cast<std::size_t>(i)];
        switch (change.kind) {
            case Change::FileBytes:
                m_files[static_cast<std::size_t>(change.file)].push_back(change.bytes);
                break;
            case Change::FileFlush: {
                Versions& versions = m_files[static_cast<std::size_t>(change.file)];
                versions = {versions.back()};
                break;
            }
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
}

WeakDisk::State WeakDisk::Moment::cut(Survivors survivors, std::mt19937& random) const {
    State state;
    for (const Versions& versions : m_files)
        state.files.push_back(cutFile(versions, survivors, random));
    for (const auto& [name, files] : m_names) {
        if (survivors == Survivors::None)
            state.names[name] = files.front();
        else
            state.names[name] = survivors == Survivors::All ? files.back() : anyOf(files, random);
    }
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
