#include "platform/Folders.h"
#include "platform/SpecialFolders.h"

#include <QDir>

#include <gtest/gtest.h>

namespace {

TEST(SpecialFolders, EachCodeHasItsFolder) {
    EXPECT_EQ(specialFolder(1), u"/usr"_qs);
    EXPECT_EQ(specialFolder(-1), u"/etc"_qs);
    EXPECT_EQ(specialFolder(99), temporaryFolder());
    EXPECT_EQ(specialFolder(0), QDir::homePath() + u"/Desktop"_qs);
    EXPECT_EQ(specialFolder(5), QDir::homePath() + u"/Documents"_qs);
}

TEST(SpecialFolders, AnyOtherCodeHasNone) {
    EXPECT_EQ(specialFolder(2), QString());
}

}  // namespace
