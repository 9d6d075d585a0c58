#include "document/DiskChange.h"

#include <gtest/gtest.h>

namespace {

const QString loaded = QStringLiteral("2026/01/02 03:04:05");
const QString later = QStringLiteral("2026/01/02 03:04:06");
const QString latest = QStringLiteral("2026/01/02 03:04:07");

bool there() {
    return true;
}

bool gone() {
    return false;
}

bool notAsked() {
    ADD_FAILURE() << "the folder was looked at";
    return true;
}

}  // namespace

TEST(DiskChange, AnUnchangedTimeIsNoChange) {
    QString known = loaded;
    EXPECT_EQ(checkDiskChange(loaded, loaded, known, notAsked), DiskChange::None);
    EXPECT_EQ(known, loaded);
}

TEST(DiskChange, ADocumentWithoutFileHasNoChange) {
    QString known;
    EXPECT_EQ(checkDiskChange(QString(), QString(), known, notAsked), DiskChange::None);
}

TEST(DiskChange, AnotherTimeIsToldOnce) {
    QString known = loaded;
    EXPECT_EQ(checkDiskChange(later, loaded, known, there), DiskChange::Rewritten);
    EXPECT_EQ(known, later);
    EXPECT_EQ(checkDiskChange(later, loaded, known, notAsked), DiskChange::None);
    EXPECT_EQ(checkDiskChange(latest, loaded, known, there), DiskChange::Rewritten);
}

TEST(DiskChange, AnEarlierTimeIsAChangeToo) {
    QString known = later;
    EXPECT_EQ(checkDiskChange(loaded, later, known, there), DiskChange::Rewritten);
}

TEST(DiskChange, AMissingFileIsToldOnce) {
    QString known = loaded;
    EXPECT_EQ(checkDiskChange(QStringLiteral("zero"), loaded, known, gone), DiskChange::Deleted);
    EXPECT_EQ(checkDiskChange(QStringLiteral("zero"), loaded, known, notAsked), DiskChange::None);
}

TEST(DiskChange, AFileBackAtTheLoadedTimeIsNoChange) {
    QString known = later;
    EXPECT_EQ(checkDiskChange(loaded, loaded, known, notAsked), DiskChange::None);
    EXPECT_EQ(known, loaded);
}
