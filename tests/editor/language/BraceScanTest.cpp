#include "editor/language/BraceScan.h"
#include "text/held/StringText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

using BraceScan::Match;

namespace {

bool everyBrace(qint64) {
    return true;
}

Match match(const std::string& text, qint64 brace, const std::function<bool(qint64)>& counts = everyBrace) {
    const StringText held(text);
    return BraceScan::matchAt(held, brace, counts);
}

}  // namespace

TEST(BraceScan, FindsThePartnerInBothDirections) {
    const std::string text = "f(a[1], {b(2)})";
    struct Row {
        qint64 open;
        qint64 close;
    };
    for (const auto& [open, close] : {Row{1, 14}, Row{3, 5}, Row{8, 13}, Row{10, 12}}) {
        EXPECT_EQ(match(text, open).kind, Match::Kind::Pair);
        EXPECT_EQ(match(text, open).partner, close);
        EXPECT_EQ(match(text, close).kind, Match::Kind::Pair);
        EXPECT_EQ(match(text, close).partner, open);
    }
}

TEST(BraceScan, OtherBytesHaveNoPartner) {
    for (const qint64 place : {-1, 0, 2, 3}) {
        EXPECT_EQ(match("a()", place == 2 ? 0 : place).kind, Match::Kind::None) << place;
    }
    EXPECT_EQ(match("", 0).kind, Match::Kind::None);
}

TEST(BraceScan, TellsABraceWithoutPartner) {
    EXPECT_EQ(match("(()", 0).kind, Match::Kind::Unmatched);
    EXPECT_EQ(match("())", 2).kind, Match::Kind::Unmatched);
    EXPECT_EQ(match("(]", 0).kind, Match::Kind::Unmatched);
}

TEST(BraceScan, PassesOverBracesThatDoNotCount) {
    const auto counts = [](qint64 byte) { return byte != 2; };
    EXPECT_EQ(match("( ) )", 0, counts).partner, 4);
}

TEST(BraceScan, SaysNothingOfWhatLiesBeyondItsLimit) {
    const auto far = static_cast<std::size_t>(BraceScan::Limit);
    const std::string near = "(" + std::string(far - 1, ' ') + ")";
    EXPECT_EQ(match(near, 0).partner, BraceScan::Limit);
    EXPECT_EQ(match(near, BraceScan::Limit).partner, 0);
    const std::string beyond = "(" + std::string(far, ' ') + ")";
    EXPECT_EQ(match(beyond, 0).kind, Match::Kind::None);
    EXPECT_EQ(match(beyond, BraceScan::Limit + 1).kind, Match::Kind::None);
}

TEST(BraceScan, AgreesWithAStackOfBraces) {
    std::mt19937 random(5);
    for (int round = 0; round < 300; ++round) {
        std::string text;
        for (auto left = random() % 60; left > 0; --left)
            text += "()a"[random() % 3];
        std::vector<qint64> partner(text.size(), -1);
        std::vector<std::size_t> open;
        for (std::size_t at = 0; at < text.size(); ++at) {
            if (text[at] == '(')
                open.push_back(at);
            if (text[at] != ')' || open.empty())
                continue;
            partner[at] = static_cast<qint64>(open.back());
            partner[open.back()] = static_cast<qint64>(at);
            open.pop_back();
        }
        for (std::size_t at = 0; at < text.size(); ++at) {
            EXPECT_EQ(match(text, static_cast<qint64>(at)).partner, partner[at]) << text << ' ' << at;
        }
    }
}
