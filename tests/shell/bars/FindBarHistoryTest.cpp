#include "shell/bars/FindBarHistory.h"

#include <gtest/gtest.h>

namespace {

using FindBarHistory::AddSearchKey;
using FindBarHistory::Change;

QStringList list(std::initializer_list<const char*> texts) {
    QStringList all;
    for (const char* text : texts)
        all << QString::fromUtf8(text);
    return all;
}

QStringList numbers(int from, int to) {
    QStringList all;
    for (int i = from; i <= to; ++i)
        all << QString::number(i);
    return all;
}

}  // namespace

TEST(FindBarHistory, ANewTextStandsOnTop) {
    QStringList keys = list({"a"});
    EXPECT_EQ(AddSearchKey(keys, u"b"_qs, false), Change::Added);
    EXPECT_EQ(keys, list({"b", "a"}));
}

TEST(FindBarHistory, ABlankTextIsPassedOverAndOthersAreKeptUntrimmed) {
    QStringList keys;
    EXPECT_EQ(AddSearchKey(keys, u" \t "_qs, true), Change::Nothing);
    EXPECT_EQ(AddSearchKey(keys, QString(), true), Change::Nothing);
    AddSearchKey(keys, u" a "_qs, true);
    EXPECT_EQ(keys, list({" a "}));
}

TEST(FindBarHistory, AKnownTextMovesToTheTopOnlyWhenThatIsWanted) {
    QStringList keys = list({"c", "b", "a"});
    EXPECT_EQ(AddSearchKey(keys, u"a"_qs, false), Change::Nothing);
    EXPECT_EQ(keys, list({"c", "b", "a"}));
    EXPECT_EQ(AddSearchKey(keys, u"a"_qs, true), Change::Raised);
    EXPECT_EQ(keys, list({"a", "c", "b"}));
}

TEST(FindBarHistory, TextsAreComparedExactly) {
    QStringList keys = list({"a"});
    AddSearchKey(keys, u"A"_qs, true);
    AddSearchKey(keys, u"a "_qs, true);
    EXPECT_EQ(keys, list({"a ", "A", "a"}));
}

TEST(FindBarHistory, TheThirtyNewestAreKept) {
    QStringList keys;
    for (const QString& number : numbers(1, 31))
        AddSearchKey(keys, number, false);
    EXPECT_EQ(keys.size(), 30);
    EXPECT_EQ(keys.first(), u"31"_qs);
    EXPECT_EQ(keys.last(), u"2"_qs);
}

TEST(FindBarHistory, AFileHasTheOldestFirstAndItsDoublesOnce) {
    QStringList keys;
    FindBarHistory::addLines(keys, list({"a", "", "b", "a", "c"}));
    EXPECT_EQ(keys, list({"c", "b", "a"}));
    EXPECT_EQ(FindBarHistory::toLines(keys), list({"a", "b", "c"}));
    FindBarHistory::addLines(keys, numbers(1, 40));
    EXPECT_EQ(keys.size(), 30);
    EXPECT_EQ(keys.first(), u"40"_qs);
}
