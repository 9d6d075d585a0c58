#include "document/DiskChange.h"

#include <gtest/gtest.h>

namespace {

const QString loaded = u"2026/01/02 03:04:05"_qs;
const QString later = u"2026/01/02 03:04:06"_qs;
const QString latest = u"2026/01/02 03:04:07"_qs;

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
    EXPECT_EQ(checkDiskChange(u"zero"_qs, loaded, known, gone), DiskChange::Deleted);
    EXPECT_EQ(checkDiskChange(u"zero"_qs, loaded, known, notAsked), DiskChange::None);
}

TEST(DiskChange, AFileBackAtTheLoadedTimeIsNoChange) {
    QString known = later;
    EXPECT_EQ(checkDiskChange(loaded, loaded, known, notAsked), DiskChange::None);
    EXPECT_EQ(known, loaded);
}
