#include "workspace/lists/FolderKey.h"

#include <gtest/gtest.h>

TEST(FolderKey, APathStandsBehindThePrefix) {
    EXPECT_EQ(DecodeFolderKey(u"FOLDER/home/u/src"_qs), u"/home/u/src"_qs);
    EXPECT_EQ(DecodeFolderKey(u"DRIVE/"_qs), u"/"_qs);
    EXPECT_EQ(DecodeFolderKey(u"REMOVABLE/media/u/STICK"_qs), u"/media/u/STICK"_qs);
}

TEST(FolderKey, AnyOtherStartIsAPrefixOfNineLetters) {
    EXPECT_EQ(DecodeFolderKey(u"123456789/x"_qs), u"/x"_qs);
    EXPECT_EQ(DecodeFolderKey(u"short"_qs), QString());
    EXPECT_EQ(DecodeFolderKey({}), QString());
}

TEST(FolderKey, TheKeyOfAFolderKeepsItsLetters) {
    EXPECT_EQ(folderKey(u"/Home/Ünï"_qs), u"FOLDER/Home/Ünï"_qs);
}

TEST(FolderKey, TheKeyOfAVolumeSaysWhetherItIsFixed) {
    EXPECT_EQ(volumeKey(u"/"_qs, true), u"DRIVE/"_qs);
    EXPECT_EQ(volumeKey(u"/media/u/STICK"_qs, false), u"REMOVABLE/media/u/STICK"_qs);
    EXPECT_TRUE(isFixedKey(u"DRIVE/"_qs));
    EXPECT_FALSE(isFixedKey(u"REMOVABLE/media"_qs));
    EXPECT_TRUE(isFolderKey(u"FOLDER/"_qs));
    EXPECT_FALSE(isFolderKey(u"DRIVE/FOLDER"_qs));
}

TEST(FolderKey, APathHasOneSlashBetweenItsParts) {
    EXPECT_EQ(pathIn(u"/"_qs, u"a"_qs), u"/a"_qs);
    EXPECT_EQ(pathIn(u"/a"_qs, u"b"_qs), u"/a/b"_qs);
}
