#include "document/OpenMode.h"

#include <gtest/gtest.h>

namespace {

bool binary() {
    return true;
}

bool plain() {
    return false;
}

bool notAsked() {
    ADD_FAILURE() << "the content was looked at";
    return true;
}

}  // namespace

TEST(OpenMode, WithoutTheBinaryCheckTheWishDecidesAlone) {
    for (const bool setting : {false, true}) {
        EXPECT_TRUE(chooseTextMode(false, true, setting, notAsked));
        EXPECT_FALSE(chooseTextMode(false, false, setting, notAsked));
    }
}

TEST(OpenMode, WithTheBinaryCheckTheContentDecidesAndTheWishDoesNot) {
    for (const bool wish : {false, true}) {
        EXPECT_FALSE(chooseTextMode(true, wish, true, binary));
        EXPECT_TRUE(chooseTextMode(true, wish, true, plain));
    }
}

TEST(OpenMode, WithTheSettingOffTheBinaryCheckAlwaysGivesText) {
    for (const bool wish : {false, true}) {
        EXPECT_TRUE(chooseTextMode(true, wish, false, notAsked));
    }
}
