#include "recovery/saves/OldAsides.h"

#include <QDir>

#include <algorithm>
#include <iterator>

namespace {

constexpr qint64 DaysKept = 90;
constexpr qsizetype NumberKept = 20;

/// A name that is changed changes the file's metadata, but not its bytes.
QDateTime timeOf(const QFileInfo& file) {
    return std::max(file.metadataChangeTime(), file.lastModified());
}

}  // namespace

QStringList oldAsides(const QString& folder, const QString& suffix, const QDateTime& now) {
    QFileInfoList files = QDir(folder).entryInfoList({u'*' + suffix}, QDir::Files | QDir::Hidden);
    std::ranges::stable_sort(files, std::ranges::greater(), timeOf);
    files = files.mid(std::min(NumberKept, files.size()));
    QStringList names;
    for (const QFileInfo& file : files) {
        if (timeOf(file).daysTo(now) > DaysKept)
            names.push_back(file.fileName());
    }
    return names;
}
