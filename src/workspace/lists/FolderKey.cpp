#include "workspace/lists/FolderKey.h"

namespace {

constexpr QStringView Folder = u"FOLDER";
constexpr QStringView Drive = u"DRIVE";
constexpr qsizetype LongPrefix = 9;

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
