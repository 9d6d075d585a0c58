#include "platform/Folders.h"

#include "platform/Paths.h"

#include <QByteArray>

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>

namespace {

constexpr mode_t Private = 0700;
constexpr int NamesToTry = 20;

QString folderFromEnvironment(const char* variable) {
    const QString folder = pathText(std::getenv(variable)).value_or(QString());
    return folder.startsWith(u'/') ? absolutePath(folder, {}) : QString();
}

QString homeFolder() {
    QString home = folderFromEnvironment("HOME");
    if (!home.isEmpty())
        return home;
    const passwd* user = ::getpwuid(::geteuid());
    return user == nullptr ? u"/"_qs : pathText(user->pw_dir).value_or(u"/"_qs);
}

QString userFolder(const char* variable, const QString& underHome) {
    const QString folder = folderFromEnvironment(variable);
    return absolutePath(folder.isEmpty() ? homeFolder() + u'/' + underHome : folder, {});
}

/// The program's own folder in one of these.
QString ownFolder(const QString& userFolder) {
    return absolutePath(userFolder + u"/quillmark"_qs, {});
}

QString parentOf(const QString& path) {
    return path.left(qMax(path.lastIndexOf(u'/'), 1));
}

/// A folder without any write bit is not writable for root either.
bool isWritableFolder(const QString& path) {
    const auto name = localName(path);
    struct stat status {};
    return name && ::stat(name->constData(), &status) == 0 && S_ISDIR(status.st_mode) &&
           (status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) != 0 &&
           ::faccessat(AT_FDCWD, name->constData(), W_OK | X_OK, AT_EACCESS) == 0;
}

bool isTakenByOthers(const QString& path) {
    struct stat status {};
    if (::lstat(localName(path).value_or(QByteArray()).constData(), &status) != 0)
        return false;
    return !S_ISDIR(status.st_mode) || status.st_uid != ::geteuid();
}

int closeToOthers(int handle) {
    struct stat status {};
    if (::fstat(handle, &status) != 0)
        return errno;
    if (status.st_uid != ::geteuid())
        return EACCES;
    const bool isClosed = (status.st_mode & ALLPERMS) == Private;
    return isClosed || ::fchmod(handle, Private) == 0 ? 0 : errno;
}

/// Uses a handle, so that the folder can't be replaced by another one between the calls.
int closeToOthers(const QByteArray& name) {
    const int handle = ::open(name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (handle < 0)
        return errno;
    const int failure = closeToOthers(handle);
    ::close(handle);
    return failure;
}

}  // namespace

void forgetRelativeFolders() {
    for (const char* variable :
         {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
        const char* value = std::getenv(variable);
        if (value != nullptr && *value != '/')
            ::unsetenv(variable);
    }
}

QString executableFolder() {
    std::array<char, PATH_MAX> buffer;
    const ssize_t length = ::readlink("/proc/self/exe", buffer.data(), buffer.size());
    if (length <= 0)
        return u"/"_qs;
    return parentOf(pathText({buffer.data(), length}).value_or(u"/"_qs));
}

QString userConfigFolder() {
    return userFolder("XDG_CONFIG_HOME", u".config"_qs);
}

QString userDataFolder() {
    return userFolder("XDG_DATA_HOME", u".local/share"_qs);
}

QString configFolder() {
    return ownFolder(userConfigFolder());
}

QString stateFolder() {
    return ownFolder(userFolder("XDG_STATE_HOME", u".local/state"_qs));
}

QString ProgramFolder(const QString& executable) {
    if (IsFolderPath(executable + u"/languages"_qs) && isWritableFolder(executable))
        return executable;
    return ownFolder(userDataFolder());
}

QString shareFolder(const QString& executable) {
    return absolutePath(parentOf(executable) + u"/share/quillmark"_qs, {});
}

QString temporaryFolder() {
    const QString folder = folderFromEnvironment("TMPDIR");
    const QString stem =
        (folder.isEmpty() ? u"/var/tmp"_qs : folder) + u"/quillmark-"_qs + QString::number(::geteuid());
    QString name = absolutePath(stem, {});
    for (int i = 1; i < NamesToTry && isTakenByOthers(name); ++i)
        name = absolutePath(stem, {}) + u'.' + QString::number(i);
    return name;
}

QString runtimeFolder() {
    const QString folder = folderFromEnvironment("XDG_RUNTIME_DIR");
    return isWritableFolder(folder) && !isTakenByOthers(folder + u'/') ? folder : temporaryFolder();
}

SystemError makeRuntimeFolder() {
    const QString folder = runtimeFolder();
    return folder == temporaryFolder() ? makePrivateFolder(folder) : SystemError();
}

SystemError makeFolder(const QString& path) {
    const auto name = localName(path);
    if (!name)
        return SystemError::fromErrno(ENOENT);
    if (::mkdir(name->constData(), Private) == 0)
        return {};
    const int failure = errno;
    if (IsFolderPath(path))
        return {};
    if (failure != ENOENT || parentOf(path) == path)
        return SystemError::fromErrno(failure);
    if (SystemError error = makeFolder(parentOf(path)))
        return error;
    return ::mkdir(name->constData(), Private) == 0 || IsFolderPath(path) ? SystemError()
                                                                          : SystemError::fromErrno(errno);
}

SystemError makePrivateFolder(const QString& path) {
    const auto name = localName(path);
    if (!name)
        return SystemError::fromErrno(ENOENT);
    if (::mkdir(name->constData(), Private) != 0 && errno != EEXIST)
        return SystemError::fromErrno(errno);
    const int failure = closeToOthers(*name);
    return failure == 0 ? SystemError() : SystemError::fromErrno(failure);
}
