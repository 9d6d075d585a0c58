#include "spelling/dictionary/DictionaryHead.h"

#include <gtest/gtest.h>

using DictionaryHead::affixFault;
using DictionaryHead::wordsFault;

TEST(DictionaryHead, AGoodAffixFileHasNoFault) {
    EXPECT_EQ(affixFault(""), "");
    EXPECT_EQ(affixFault("SET UTF-8\n"), "");
    EXPECT_EQ(affixFault("\xEF\xBB\xBFSET UTF-8\r\nREP 1\r\nREP a b\r\n"), "");
    EXPECT_EQ(affixFault("PFX A Y 1\nPFX A 0 re .\nSFX B N 2\nSFX B y ies y\nSFX B 0 s .\n"), "");
    EXPECT_EQ(affixFault("BREAK 0\n"), "");
    EXPECT_EQ(affixFault("COMPOUNDRULE 1\nCOMPOUNDRULE n*1t\n"), "");
}

TEST(DictionaryHead, WhatIsNoTextIsRefused) {
    EXPECT_EQ(affixFault(std::string_view("SET\0UTF-8", 9)), "it is not a text");
    EXPECT_EQ(wordsFault(std::string_view("1\n\0\n", 4), 4), "it is not a text");
}

TEST(DictionaryHead, TablesLongerThanTheFileAreRefused) {
    for (const char* line : {"REP 1000000000", "MAP 4", "PHONE 99999999999999999999", "ICONV 12", "AF 4000000000",
                             "PFX A Y 77", "SFX A N 1000000"}) {
        const std::string fault = affixFault("SET UTF-8\n" + std::string(line) + "\n");
        EXPECT_EQ(fault, "it announces more lines than it has: " + std::string(line));
    }
}

TEST(DictionaryHead, AFaultThatIsNamedStaysShort) {
    EXPECT_LT(affixFault("REP 1000000000 " + std::string(100'000, 'x')).size(), 100U);
}

TEST(DictionaryHead, AGoodWordListHasNoFault) {
    EXPECT_EQ(wordsFault("1\none\n", 6), "");
    EXPECT_EQ(wordsFault("\xEF\xBB\xBF"
                         "2\r\none\r\ntwo\r\n",
                         16),
              "");
    EXPECT_EQ(wordsFault("3 words\none/A\n", 14), "");
}

TEST(DictionaryHead, AWordListBeginsWithTheNumberOfItsWords) {
    EXPECT_EQ(wordsFault("", 0), "it is empty");
    for (const char* head : {"one\ntwo\n", "0\n", "-1\none\n", "\n\n", "1x\none\n"}) {
        EXPECT_EQ(wordsFault(head, 100), "it does not begin with the number of its words") << head;
    }
    EXPECT_EQ(wordsFault("1000\none\n", 9), "it announces more words than it can have");
    EXPECT_EQ(wordsFault("99999999999999999999999\none\n", 9), "it announces more words than it can have");
    EXPECT_EQ(wordsFault("1\n", 2), "it has no words");
}
