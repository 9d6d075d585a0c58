#include "workspace/lists/FileFacts.h"

#include "platform/FileInfo.h"
#include "platform/Paths.h"

#include <QMimeDatabase>
#include <QMimeType>

#include <fcntl.h>
#include <fts.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>

namespace {

constexpr mode_t ModeBits = 07777;

struct TypeRow {
    mode_t format;
    const char* name;
};

constexpr TypeRow TypeRows[] = {
    {S_IFDIR, "Folder"},           {S_IFLNK, "Link"},         {S_IFIFO, "Pipe"}, {S_IFSOCK, "Socket"},
    {S_IFCHR, "Character device"}, {S_IFBLK, "Block device"},
};

QString typeOf(mode_t mode, const QString& path) {
    const auto* row = std::ranges::find(TypeRows, mode & S_IFMT, &TypeRow::format);
    if (row != std::end(TypeRows))
        return QString::fromLatin1(row->name);
    const QMimeType type = QMimeDatabase().mimeTypeForFile(FileNameOf(path), QMimeDatabase::MatchExtension);
    return type.isDefault() ? u"File"_qs : type.comment();
}

QString timeText(const struct statx_timestamp& stamp) {
    return modifiedText(stamp.tv_sec);
}

QString ownerOf(uid_t user, gid_t group) {
    constexpr size_t LongestEntry = 16384;
    std::array<char, LongestEntry> buffer{};
    passwd userEntry{};
    passwd* foundUser = nullptr;
    ::getpwuid_r(user, &userEntry, buffer.data(), buffer.size(), &foundUser);
    const QString userName = foundUser == nullptr ? QString::number(user) : QString::fromLocal8Bit(userEntry.pw_name);
    struct group groupEntry {};
    struct group* foundGroup = nullptr;
    ::getgrgid_r(group, &groupEntry, buffer.data(), buffer.size(), &foundGroup);
    const QString groupName =
        foundGroup == nullptr ? QString::number(group) : QString::fromLocal8Bit(groupEntry.gr_name);
    return userName + u", "_qs + groupName;
}

QString modeText(mode_t mode) {
    constexpr char Letters[] = "rwxrwxrwx";
    QString text;
    for (int bit = 0; bit < 9; ++bit)
        text += QLatin1Char((mode & (0400U >> bit)) != 0 ? Letters[bit] : '-');
    return u"%1 (%2)"_qs.arg(text).arg(mode & ModeBits, 4, 8, QLatin1Char('0'));
}

bool isUnread(const FTSENT& entry) {
    return entry.fts_info == FTS_DNR || entry.fts_info == FTS_ERR || entry.fts_info == FTS_NS;
}

void add(const FTSENT& entry, FolderSum& sum) {
    if (isUnread(entry)) {
        ++sum.unread;
    } else if (entry.fts_info == FTS_D) {
        sum.folders += entry.fts_level == FTS_ROOTLEVEL ? 0 : 1;
    } else if (entry.fts_info != FTS_DP && entry.fts_info != FTS_DC) {
        ++sum.files;
        sum.bytes += entry.fts_statp->st_size;
    }
}

QString targetOf(const QByteArray& name) {
    QByteArray target(PATH_MAX, '\0');
    const ssize_t length = ::readlink(name.constData(), target.data(), static_cast<size_t>(target.size()));
    return length < 0 ? QString() : QString::fromUtf8(target.constData(), length);
}

}  // namespace

FileFacts factsOf(const QString& path) {
    FileFacts facts;
    const auto name = localName(path);
    struct statx status {};
    if (!name || ::statx(AT_FDCWD, name->constData(), AT_SYMLINK_NOFOLLOW, STATX_BASIC_STATS | STATX_BTIME, &status)) {
        facts.error = SystemError::fromErrno(name ? errno : ENOENT);
        return facts;
    }
    facts.isFolder = S_ISDIR(status.stx_mode);
    facts.type = typeOf(status.stx_mode, path);
    facts.size = facts.isFolder ? 0 : static_cast<qint64>(status.stx_size);
    if (S_ISLNK(status.stx_mode))
        facts.linkTarget = targetOf(*name);
    if ((status.stx_mask & STATX_BTIME) != 0)
        facts.created = timeText(status.stx_btime);
    facts.modified = timeText(status.stx_mtime);
    facts.accessed = timeText(status.stx_atime);
    facts.owner = ownerOf(status.stx_uid, status.stx_gid);
    facts.mode = modeText(status.stx_mode);
    return facts;
}

void addUp(const QString& folder, FolderSum& sum, const std::atomic<bool>& cancelled) {
    auto name = localName(folder);
    if (!name)
        return;
    char* const roots[] = {name->data(), nullptr};
    FTS* walk = ::fts_open(roots, FTS_PHYSICAL | FTS_NOCHDIR | FTS_XDEV, nullptr);
    if (walk == nullptr)
        return;
    // Read once in any case: a walk that is closed before its first step is not freed whole.
    for (const FTSENT* entry = ::fts_read(walk); entry != nullptr && !cancelled; entry = ::fts_read(walk))
        add(*entry, sum);
    ::fts_close(walk);
}
