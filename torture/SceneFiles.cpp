#include "SceneFiles.h"

#include "Contents.h"
#include "KeptBytes.h"
#include "platform/FileReplacement.h"
#include "platform/UserFileWriter.h"
#include "recovery/saves/SaveRecovery.h"

#include <dirent.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string_view>
#include <thread>

namespace {

constexpr qsizetype BlockSize = 512;
constexpr const char* AttributeNames[] = {"user.torture", "trusted.torture"};
constexpr const char* AccessListName = "system.posix_acl_access";

/// Version 2: owner rw, one named user rw, group r, mask rw, others r. Each entry: tag, permissions, number.
QByteArray accessList() {
    struct Entry {
        quint16 tag;
        quint16 permissions;
        quint32 number;
    };
    constexpr quint32 Nobody = 65'534;
    constexpr quint32 NoNumber = ~quint32(0);
    constexpr Entry Entries[] = {
        {1, 6, NoNumber}, {2, 6, Nobody}, {4, 4, NoNumber}, {16, 6, NoNumber}, {32, 4, NoNumber}};
    constexpr quint32 Version = 2;
    QByteArray bytes(reinterpret_cast<const char*>(&Version), sizeof Version);
    return bytes.append(reinterpret_cast<const char*>(Entries), sizeof Entries);
}

QByteArray changed(const QByteArray& oldBytes, const Scene& scene, quint64 seed) {
    QByteArray fresh = noise(scene.after, seed);
    if (scene.change == Scene::Change::All)
        return fresh;
    QByteArray bytes = oldBytes.left(scene.after);
    bytes += fresh.mid(bytes.size());
    const qsizetype shared = std::min(oldBytes.size(), bytes.size());
    if (scene.change == Scene::Change::Front)
        bytes.replace(0, std::min(BlockSize, shared), fresh.left(std::min(BlockSize, shared)));
    for (qsizetype at = 100; scene.change == Scene::Change::FewBlocks && at < shared; at += shared / 5 + 1)
        bytes[at] = static_cast<char>(~bytes[at]);
    return bytes;
}

}  // namespace

std::vector<QByteArray> namesIn(const QByteArray& folder) {
    std::vector<QByteArray> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> open(::opendir(folder.constData()), &::closedir);
    while (open != nullptr) {
        const dirent* entry = ::readdir(open.get());
        if (entry == nullptr)
            break;
        if (std::string_view(entry->d_name) != "." && std::string_view(entry->d_name) != "..")
            names.emplace_back(entry->d_name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

void emptyFolder(const QByteArray& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder.constData(), error);
    for (const QByteArray& name : namesIn(folder))
        std::filesystem::remove_all((folder + '/' + name).constData(), error);
    mustWork(namesIn(folder).empty() && ::access(folder.constData(), W_OK) == 0, "cannot empty " + folder);
}

SceneFiles::SceneFiles(QByteArray root, const Scene& scene) : m_root(std::move(root)), m_scene(scene) {
    for (int i = 0; i < scene.files; ++i) {
        const quint64 seed = 2 * static_cast<quint64>(i);
        const QByteArray oldBytes = noise(qMax<qint64>(0, scene.before), seed + 100);
        const QByteArray target = m_root + "/files/file" + QByteArray::number(i);
        const bool isLink = scene.place == Scene::Place::Link || scene.place == Scene::Place::LinkToNothing;
        m_files.push_back({isLink ? m_root + "/files/link" + QByteArray::number(i) : target, target, oldBytes,
                           changed(oldBytes, scene, seed + 101), State(), false});
    }
}

bool SceneFiles::prepare() {
    emptyFolder(m_root + "/files");
    emptyFolder(m_root + "/state");
    return std::all_of(m_files.begin(), m_files.end(), [this](File& file) { return prepareFile(file); });
}

bool SceneFiles::prepareFile(File& file) const {
    file.isReported = false;
    if (file.name != file.target)
        mustWork(::symlink(file.target.constData(), file.name.constData()) == 0, "cannot link " + file.name);
    if (m_scene.before == Scene::NoFile)
        return true;
    putBytes(file.target, file.oldBytes);
    if (m_scene.place == Scene::Place::HardLinks)
        mustWork(::link(file.target.constData(), (file.target + ".other").constData()) == 0, "cannot link");
    mustWork(::chmod(file.target.constData(), m_scene.mode) == 0, "cannot set the mode");
    if (!addExtra(file))
        return false;
    file.state = stateOf(file.target);
    return true;
}

bool SceneFiles::addExtra(const File& file) const {
    const char* name = file.target.constData();
    if (m_scene.extra == Scene::Extra::Attribute) {
        return std::any_of(std::begin(AttributeNames), std::end(AttributeNames),
                           [name](const char* attribute) { return ::setxattr(name, attribute, "value", 5, 0) == 0; });
    }
    const QByteArray list = accessList();
    return m_scene.extra != Scene::Extra::AccessList ||
           ::setxattr(name, AccessListName, list.constData(), static_cast<std::size_t>(list.size()), 0) == 0;
}

SceneFiles::State SceneFiles::stateOf(const QByteArray& name) {
    struct stat status {};
    if (::lstat(name.constData(), &status) != 0)
        return {};
    State state{status.st_ino, status.st_nlink, status.st_mode, status.st_uid, status.st_gid, {}};
    for (const char* attribute : {AttributeNames[0], AttributeNames[1], AccessListName}) {
        char value[256];
        const ssize_t length = ::getxattr(name.constData(), attribute, value, sizeof value);
        if (length >= 0)
            state.attributes[attribute] = QByteArray(value, length);
    }
    return state;
}

void SceneFiles::save(FileSystemCalls& calls, WriteWitness& witness) {
    if (m_files.size() == 1)
        return saveFile(m_files.front(), calls, witness);
    std::vector<std::thread> threads;
    for (File& file : m_files)
        threads.emplace_back([&] { saveFile(file, calls, witness); });
    for (std::thread& thread : threads)
        thread.join();
}

void SceneFiles::saveFile(File& file, FileSystemCalls& calls, WriteWitness& witness) const {
    const QString path = QString::fromLocal8Bit(file.name);
    if (m_scene.owner == Scene::Owner::Program) {
        file.isReported = !replaceFile(path, file.newBytes, calls);
        return;
    }
    UserFileWriter writer(calls, &witness);
    const auto tail = m_scene.cuts ? UserFileWriter::Tail::Cut : UserFileWriter::Tail::Keep;
    if (m_scene.part > 0) {
        Parts source(file.newBytes, m_scene.part);
        file.isReported = !writer.write(path, source, tail).error;
        return;
    }
    // Two pieces, so that they are put together on the way.
    const std::string_view all(file.newBytes.constData(), static_cast<std::size_t>(file.newBytes.size()));
    const std::string_view pieces[] = {all.substr(0, all.size() / 3), all.substr(all.size() / 3)};
    file.isReported = !writer.write(path, pieces, tail).error;
}

void SceneFiles::examine(Report& report, const QByteArray& what) const {
    for (const File& file : m_files) {
        const QByteArray fault = faultOf(file);
        if (!fault.isEmpty())
            report.fault(m_scene.name, what + ": " + fault);
        if (m_scene.owner == Scene::Owner::Program)
            replaceAgain(file);
    }
    const std::vector<QByteArray> expected = expectedNames();
    const std::vector<QByteArray> names = namesIn(m_root + "/files");
    if (!std::includes(expected.begin(), expected.end(), names.begin(), names.end()))
        report.fault(m_scene.name, what + ": a file is left beside the target");
    const bool isBehind =
        std::any_of(m_files.begin(), m_files.end(), [](const File& file) { return isAsBefore(file); });
    for (const QByteArray& name : namesIn(m_root + "/state/saves")) {
        if (isKeptOfTornFile(m_root + "/state/saves/" + name))
            report.count("torn files that were kept before they were completed");
        else if (isBehind && name.endsWith(SaveRecovery::AsideSuffix))
            report.count("records of files as they were before, set aside");
        else
            report.fault(m_scene.name, what + ": a record is left: " + name);
    }
}

bool SceneFiles::isKeptOfTornFile(const QByteArray& record) const {
    const std::optional<KeptBytes> kept = KeptBytes::read(record);
    return kept && std::ranges::any_of(m_files, [&](const File& file) {
               return file.target == kept->target && kept->contents != file.oldBytes &&
                      kept->contents != newContents(file);
           });
}

QByteArray SceneFiles::newContents(const File& file) const {
    return file.newBytes + (m_scene.cuts ? QByteArray() : file.oldBytes.mid(file.newBytes.size()));
}

/// A write that was killed when it had written only bytes that were there before, looks like an old file that somebody
/// restored: the new bytes can be had from its record.
bool SceneFiles::isAsBefore(const File& file) {
    const std::optional<QByteArray> bytes = bytesOf(file.target);
    return bytes == file.oldBytes && bytes != file.newBytes && !file.isReported;
}

/// What a kill has left beside the file, the next write removes.
void SceneFiles::replaceAgain(const File& file) const {
    const std::optional<QByteArray> bytes = bytesOf(file.target);
    const bool isDone = !replaceFile(QString::fromLocal8Bit(file.name), bytes.value_or(QByteArray()));
    mustWork(isDone || m_scene.isRefused(), "cannot replace " + file.name);
}

QByteArray SceneFiles::faultOf(const File& file) const {
    const std::optional<QByteArray> bytes = bytesOf(file.target);
    const bool isNewFile = m_scene.before == Scene::NoFile;
    if (!bytes)
        return isNewFile && !file.isReported ? QByteArray() : QByteArray("the file is gone");
    const bool isNew = *bytes == newContents(file);
    const bool isOld = !isNewFile && *bytes == file.oldBytes;
    if (m_scene.isRefused() && file.isReported)
        return "a file that may not be written was written";
    if (file.isReported && !isNew)
        return "reported as saved, and is not";
    if (!isNew && !isOld)
        return "neither old nor new bytes";
    State state = stateOf(file.target);
    if (m_scene.owner == Scene::Owner::Program)
        state.inode = file.state.inode;
    if (!isNewFile && state != file.state)
        return "inode, links, mode, owner or attributes changed";
    return {};
}

std::vector<QByteArray> SceneFiles::expectedNames() const {
    std::vector<QByteArray> names;
    for (const File& file : m_files) {
        for (const QByteArray& name : {file.name, file.target, file.target + ".other"})
            names.push_back(name.mid(name.lastIndexOf('/') + 1));
    }
    std::sort(names.begin(), names.end());
    return names;
}
