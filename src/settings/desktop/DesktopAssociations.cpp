#include "settings/desktop/DesktopAssociations.h"

#include "platform/FolderLock.h"
#include "platform/Paths.h"
#include "settings/desktop/DesktopEntry.h"
#include "settings/desktop/DesktopFiles.h"
#include "settings/desktop/MimePackage.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace {

using Group = MimeAppsList::Group;

const QString EntryFile = u"Quillmark.desktop"_qs;
const QByteArray EntryName = "Quillmark.desktop";
const QString TextType = u"text/plain"_qs;

/// The marks of files and folders that did not exist before.
const QByteArray ListMark = "made mimeapps.list";
const QByteArray EntryMark = "made entry ";
const QByteArray CacheMark = "made mimeinfo.cache";
const QByteArray MimeMark = "made mime";

/// What update-mime-database leaves in a folder without packages.
constexpr const char* GeneratedFiles[] = {
    "XMLnamespaces", "aliases",    "generic-icons", "globs",     "globs2", "icons",
    "magic",         "mime.cache", "subclasses",    "treemagic", "types",  "version",
};

QStringList defaultsOf(const DesktopRecord& record) {
    QStringList types;
    for (const QStringList& each : record.types)
        types += each;
    types.removeDuplicates();
    return types;
}

QStringList addedOf(const DesktopRecord& record) {
    QStringList types = defaultsOf(record);
    if (record.contextMenu && !types.contains(TextType))
        types.append(TextType);
    return types;
}

void removeMissing(MimeAppsList& list, Group group, const QStringList& before, const QStringList& after,
                   MimeAppsList::Marks& marks) {
    for (const QString& type : before) {
        if (!after.contains(type))
            list.remove(group, type.toLatin1(), marks);
    }
}

void insertAll(MimeAppsList& list, Group group, const QStringList& types, MimeAppsList::Marks& marks) {
    for (const QString& type : types)
        list.insert(group, type.toLatin1(), marks);
}

bool isOwnType(const QStringList& types) {
    return types.size() == 1 && MimePackage::isOwn(types.first());
}

bool isLess(const DesktopRecord& after, const DesktopRecord& before) {
    return after.types.size() < before.types.size() || after.contextMenu < before.contextMenu;
}

/// A link to nothing counts too.
bool isThere(const QString& path) {
    const QFileInfo file(path);
    return file.exists() || file.isSymLink();
}

/// The file itself, when the path is a link.
bool removeFile(const QString& path) {
    return QFile::remove(QFileInfo(path).canonicalFilePath());
}

QByteArray entryMark(const QByteArray& entry) {
    return EntryMark + QCryptographicHash::hash(entry, QCryptographicHash::Sha256).toHex();
}

void removeEntryMarks(MimeAppsList::Marks& marks) {
    marks.removeIf([](const QByteArray& mark) { return mark.startsWith(EntryMark); });
}

}  // namespace

DesktopAssociations::DesktopAssociations(RegistryStore& store, DesktopFolders folders)
    : m_store(store), m_folders(std::move(folders)) {}

void DesktopAssociations::add(const QString& extension, const QString& description, bool hasIcon) {
    if (!MimePackage::isUsable(extension))
        return;
    const FolderLock lock(listFolder());
    const DesktopRecord before = DesktopRecord::load(m_store);
    DesktopRecord after = before;
    QStringList types = before.types.value(extension);
    if (types.isEmpty())
        types = MimePackage::typesOf(extension);
    after.types[extension] = types;
    if (change(before, after, types, types) && isOwnType(types))
        writePackage(extension, MimePackage::bytes(types.first(), extension, description, hasIcon), after);
}

void DesktopAssociations::remove(const QString& extension) {
    const FolderLock lock(listFolder());
    const DesktopRecord before = DesktopRecord::load(m_store);
    DesktopRecord after = before;
    const QStringList types = after.types.take(extension);
    if (!types.isEmpty() && change(before, after, {}, {}) && isOwnType(types))
        deletePackage(extension, after);
}

void DesktopAssociations::addToContextMenu() {
    const FolderLock lock(listFolder());
    const DesktopRecord before = DesktopRecord::load(m_store);
    DesktopRecord after = before;
    after.contextMenu = true;
    change(before, after, {}, {TextType});
}

void DesktopAssociations::removeFromContextMenu() {
    const FolderLock lock(listFolder());
    const DesktopRecord before = DesktopRecord::load(m_store);
    DesktopRecord after = before;
    after.contextMenu = false;
    if (before.contextMenu)
        change(before, after, {}, {});
}

bool DesktopAssociations::isTakenOver(const QString& extension) const {
    const DesktopRecord record = DesktopRecord::load(m_store);
    const MimeAppsList list(DesktopFiles::read(m_folders.mimeAppsList).value_or(QByteArray()), EntryName);
    return std::ranges::any_of(record.types.value(extension), [&](const QString& each) {
        const QByteArray type = each.toLatin1();
        const QList<QByteArray> programs = list.applications(Group::Default, type);
        return MimeAppsList::isInserted(Group::Default, type, record.marks) && !programs.isEmpty() &&
               programs.first() != EntryName;
    });
}

/// Brings the desktop from one record to the other; `defaults` and `added` are types that are inserted even if they
/// were before, since others may have removed them. False: `before` is still the record.
bool DesktopAssociations::change(const DesktopRecord& before, DesktopRecord& after, const QStringList& defaults,
                                 const QStringList& added) {
    if (!editList(before, after, defaults, added) && isLess(after, before))
        return false;
    if (!after.save(m_store))
        return false;
    updateEntry(after);
    after.save(m_store);
    return true;
}

/// The record is saved first: what is not recorded could not be undone. False: the list is unchanged.
bool DesktopAssociations::editList(const DesktopRecord& before, DesktopRecord& after, const QStringList& defaults,
                                   const QStringList& added) {
    const auto old = DesktopFiles::read(m_folders.mimeAppsList);
    if (!old)
        return false;
    MimeAppsList list(*old, EntryName);
    removeMissing(list, Group::Default, defaultsOf(before), defaultsOf(after), after.marks);
    removeMissing(list, Group::Added, addedOf(before), addedOf(after), after.marks);
    insertAll(list, Group::Default, defaults, after.marks);
    insertAll(list, Group::Added, added, after.marks);
    const QByteArray bytes = list.bytes();
    if (bytes == *old)
        return true;
    if (!isThere(m_folders.mimeAppsList))
        after.marks.insert(ListMark);
    const bool isUnneeded = bytes.isEmpty() && after.marks.remove(ListMark);
    if (after.save(m_store) &&
        (isUnneeded ? removeFile(m_folders.mimeAppsList) : DesktopFiles::replace(m_folders.mimeAppsList, bytes)))
        return true;
    before.save(m_store);
    after.marks = before.marks;
    return false;
}

/// It is locked during each change, so that processes change the files and the record one after the other.
QString DesktopAssociations::listFolder() const {
    return QFileInfo(m_folders.mimeAppsList).path();
}

QString DesktopAssociations::entryPath() const {
    return m_folders.applications + u'/' + EntryFile;
}

/// An entry of the same name that was installed for everybody serves as well.
bool DesktopAssociations::isEntryInstalled() const {
    return std::ranges::any_of(m_folders.sharedFolders, [](const QString& folder) {
        return fileExists(folder + u"/applications/"_qs + EntryFile);
    });
}

/// The hidden entry is ours as long as its bytes are those that we wrote.
bool DesktopAssociations::hasHiddenEntry(const DesktopRecord& record) const {
    const auto entry = DesktopFiles::read(entryPath());
    return entry && record.marks.contains(entryMark(*entry));
}

/// Leaves an entry alone that is in the menu, or another program's.
void DesktopAssociations::updateEntry(DesktopRecord& record) {
    const bool isHidden = hasHiddenEntry(record);
    if (!isHidden)
        removeEntryMarks(record.marks);
    if (record.isEmpty() && isHidden && removeFile(entryPath()))
        removeEntryMarks(record.marks);
    if (!record.isEmpty() && (isHidden || (!isThere(entryPath()) && !isEntryInstalled()))) {
        DesktopEntry entry = DesktopEntry::ofProgram(m_folders.program);
        entry.types = addedOf(record);
        entry.hidden = true;
        const QByteArray bytes = entry.bytes();
        removeEntryMarks(record.marks);
        if (DesktopFiles::replace(entryPath(), bytes))
            record.marks.insert(entryMark(bytes));
    }
    updateCache(record);
}

void DesktopAssociations::updateCache(DesktopRecord& record) const {
    if (!IsFolderPath(m_folders.applications))
        return;
    const QString cache = m_folders.applications + u"/mimeinfo.cache"_qs;
    const bool wasThere = isThere(cache);
    DesktopFiles::runTool(u"update-desktop-database"_qs, {m_folders.applications});
    if (!wasThere && isThere(cache))
        record.marks.insert(CacheMark);
    const bool isUnneeded = record.isEmpty() && DesktopFiles::read(cache).value_or("=").indexOf('=') < 0;
    if (isUnneeded && record.marks.remove(CacheMark))
        QFile::remove(cache);
}

bool DesktopAssociations::isInMenu() const {
    return fileExists(entryPath()) && !hasHiddenEntry(DesktopRecord::load(m_store));
}

void DesktopAssociations::addToMenu() {
    const FolderLock lock(listFolder());
    DesktopRecord record = DesktopRecord::load(m_store);
    DesktopEntry entry = DesktopEntry::ofProgram(m_folders.program);
    entry.types = addedOf(record);
    if (!DesktopFiles::replace(entryPath(), entry.bytes()))
        return;
    removeEntryMarks(record.marks);
    updateCache(record);
    record.save(m_store);
}

/// Files still open in the program, if they did: then the entry becomes a hidden one.
void DesktopAssociations::removeFromMenu() {
    const FolderLock lock(listFolder());
    if (!isInMenu() || !QFile::remove(entryPath()))
        return;
    DesktopRecord record = DesktopRecord::load(m_store);
    updateEntry(record);
    record.save(m_store);
}

void DesktopAssociations::writePackage(const QString& extension, const QByteArray& package, DesktopRecord& record) {
    const bool isNew = !isThere(m_folders.mime);
    if (!DesktopFiles::replace(m_folders.mimePackages() + u'/' + MimePackage::fileName(extension), package))
        return;
    DesktopFiles::runTool(u"update-mime-database"_qs, {m_folders.mime});
    if (isNew)
        record.marks.insert(MimeMark);
    record.save(m_store);
}

void DesktopAssociations::deletePackage(const QString& extension, DesktopRecord& record) {
    if (!QFile::remove(m_folders.mimePackages() + u'/' + MimePackage::fileName(extension)))
        return;
    DesktopFiles::runTool(u"update-mime-database"_qs, {m_folders.mime});
    const bool isUnneeded = QDir(m_folders.mimePackages()).isEmpty();
    if (!isUnneeded || !record.marks.remove(MimeMark))
        return;
    deleteGenerated();
    record.save(m_store);
}

/// Folders that hold anything else stay.
void DesktopAssociations::deleteGenerated() const {
    QDir folder(m_folders.mime);
    for (const char* name : GeneratedFiles)
        folder.remove(QString::fromLatin1(name));
    for (const QString& name : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        folder.rmdir(name);
    QDir().rmdir(m_folders.mime);
}
