#include "platform/FileInfo.h"

#include "platform/Paths.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <ctime>

namespace {

/// The time shown when there is none: 1 January 1601, the earliest date that some file systems can store.
std::tm zeroTime() {
    std::tm time{};
    time.tm_year = 1601 - 1900;
    time.tm_mday = 1;
    return time;
}

std::tm localTime(std::time_t seconds) {
    std::tm time{};
    return ::localtime_r(&seconds, &time) == nullptr ? zeroTime() : time;
}

std::tm localTime(const struct statx_timestamp& stamp) {
    return localTime(static_cast<std::time_t>(stamp.tv_sec));
}

QString padded(int number, int width = 2) {
    return u"%1"_qs.arg(number, width, 10, QLatin1Char('0'));
}

QString shortDate(const std::tm& time) {
    return padded(time.tm_mon + 1) + u'/' + QString::number(time.tm_mday) + u'/' + padded(time.tm_year + 1900, 4);
}

QString clock(int hour, const std::tm& time) {
    return padded(hour) + u':' + padded(time.tm_min) + u':' + padded(time.tm_sec);
}

QString createdText(const std::tm& time) {
    const int hour = time.tm_hour % 12 == 0 ? 12 : time.tm_hour % 12;
    return shortDate(time) + u' ' + clock(hour, time) + (time.tm_hour < 12 ? u" AM"_qs : u" PM"_qs);
}

QString modifiedText(const std::tm& time) {
    return padded(time.tm_year + 1900, 4) + u'/' + padded(time.tm_mon + 1) + u'/' + padded(time.tm_mday) + u' ' +
           clock(time.tm_hour, time);
}

FileInfo textForms(const std::tm& created, const std::tm& modified, const std::tm& accessed, qint64 size) {
    return {createdText(created), modifiedText(modified), shortDate(accessed), size};
}

/// Reports whether the file could be examined. A regular file must also be readable, although it is not opened here.
bool look(const QString& path, struct statx& status) {
    const auto name = localName(path);
    if (!name || ::statx(AT_FDCWD, name->constData(), 0, STATX_BASIC_STATS | STATX_BTIME, &status) != 0)
        return false;
    if (S_ISDIR(status.stx_mode))
        return false;
    return !S_ISREG(status.stx_mode) || ::faccessat(AT_FDCWD, name->constData(), R_OK, AT_EACCESS) == 0;
}

}  // namespace

FileInfo GetFileInfo(const QString& pFilename) {
    struct statx status {};
    if (!look(pFilename, status))
        return textForms(zeroTime(), zeroTime(), zeroTime(), 0);
    // Not every file system stores the creation time; the last change of the inode is the nearest substitute.
    const bool knowsBirth = (status.stx_mask & STATX_BTIME) != 0;
    return textForms(localTime(knowsBirth ? status.stx_btime : status.stx_ctime), localTime(status.stx_mtime),
                     localTime(status.stx_atime), static_cast<qint64>(status.stx_size));
}

QString modifiedText(qint64 seconds) {
    return modifiedText(seconds == NoFileTime ? zeroTime() : localTime(static_cast<std::time_t>(seconds)));
}
