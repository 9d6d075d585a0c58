#include "workspace/lists/FolderKey.h"

namespace {

constexpr QStringView Folder = u"FOLDER";
constexpr QStringView Drive = u"DRIVE";
constexpr QStringView Removable = u"REMOVABLE";
constexpr qsizetype LongPrefix = Removable.size();

}  // namespace

QString DecodeFolderKey(const QString& key) {
    if (key.startsWith(Folder))
        return key.mid(Folder.size());
    if (key.startsWith(Drive))
        return key.mid(Drive.size());
    return key.mid(LongPrefix);
}

QString folderKey(const QString& path) {
    return Folder.toString() + path;
}

QString volumeKey(const QString& mountPoint, bool isFixed) {
    return (isFixed ? Drive : Removable).toString() + mountPoint;
}

bool isFolderKey(const QString& key) {
    return key.startsWith(Folder);
}

bool isFixedKey(const QString& key) {
    return key.startsWith(Drive);
}

QString pathIn(const QString& folder, const QString& name) {
    return folder.endsWith(u'/') ? folder + name : folder + u'/' + name;
}
