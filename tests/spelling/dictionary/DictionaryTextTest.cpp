#include "spelling/dictionary/DictionaryText.h"

#include <gtest/gtest.h>

TEST(DictionaryText, Utf8StaysAsItIs) {
    const DictionaryText text("UTF-8");
    EXPECT_TRUE(text.isKnown());
    EXPECT_EQ(text.toDictionary("na\xC3\xAFve"), "na\xC3\xAFve");
    EXPECT_EQ(text.fromDictionary("na\xC3\xAFve"), "na\xC3\xAFve");
}

TEST(DictionaryText, EncodingsAreConvertedBothWays) {
    struct Row {
        const char* encoding;
        const char* utf8;
        const char* bytes;
    };
    for (const Row& row : {Row{"ISO8859-1", "na\xC3\xAFve", "na\xEFve"}, Row{"ISO8859-15", "\xC5\x93uf", "\xBDuf"},
                           Row{"ISO8859-2", "\xC5\x82", "\xB3"}, Row{"KOI8-R", "\xD0\xB0", "\xC1"},
                           Row{"microsoft-cp1251", "\xD0\xB0", "\xE0"}, Row{"TIS620-2533", "\xE0\xB8\x81", "\xA1"}}) {
        const DictionaryText text(row.encoding);
        ASSERT_TRUE(text.isKnown()) << row.encoding;
        EXPECT_EQ(text.toDictionary(row.utf8), row.bytes) << row.encoding;
        EXPECT_EQ(text.fromDictionary(row.bytes), row.utf8) << row.encoding;
    }
}

TEST(DictionaryText, ACharacterWithoutAPlaceIsNoError) {
    const DictionaryText text("ISO8859-1");
    EXPECT_FALSE(text.toDictionary("\xD0\xB0"));
    EXPECT_EQ(text.toDictionary("then"), "then");
}

TEST(DictionaryText, AnUnknownEncodingIsReported) {
    EXPECT_FALSE(DictionaryText("NONSENSE-7").isKnown());
    EXPECT_FALSE(DictionaryText("x y").isKnown());
}
