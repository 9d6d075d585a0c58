#include "text/held/CountingText.h"
#include "text/search/MatchScan.h"
#include "text/search/SearchedText.h"

#include <gtest/gtest.h>

#include <random>

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

namespace {

constexpr SearchFlags Expression{.caseSensitive = true, .regExp = true};

SearchPattern expression(const char* pattern) {
    return SearchPattern(QString::fromUtf8(pattern), Expression);
}

/// All matches according to the PCRE2 interpreter, which searches the whole text at once.
class WholeTextSearch {
 public:
    WholeTextSearch(const std::string& pattern, const std::string& text) : m_text(text) {
        int number = 0;
        std::size_t offset = 0;
        pcre2_compile_context* context = pcre2_compile_context_create(nullptr);
        pcre2_set_newline(context, PCRE2_NEWLINE_ANYCRLF);
        m_code = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(pattern.data()), pattern.size(),
                               PCRE2_UTF | PCRE2_UCP | PCRE2_MULTILINE, &number, &offset, context);
        pcre2_compile_context_free(context);
        pcre2_pattern_info(m_code, PCRE2_INFO_HASCRORLF, &m_namesLineEnds);
        m_data = pcre2_match_data_create_from_pattern(m_code, nullptr);
    }
    ~WholeTextSearch() {
        pcre2_match_data_free(m_data);
        pcre2_code_free(m_code);
    }
    WholeTextSearch(const WholeTextSearch&) = delete;
    WholeTextSearch& operator=(const WholeTextSearch&) = delete;

    Matches matches(std::size_t from) const {
        Matches found;
        while (from <= m_text.size() && pcre2_match(m_code, reinterpret_cast<PCRE2_SPTR>(m_text.data()), m_text.size(),
                                                    from, PCRE2_NO_JIT, m_data, nullptr) > 0) {
            const std::size_t* ends = pcre2_get_ovector_pointer(m_data);
            found.emplace_back(static_cast<qint64>(ends[0]), static_cast<qint64>(ends[1]));
            from = ends[0] == ends[1] ? behindCharacter(ends[1]) : ends[1];
        }
        return found;
    }

 private:
    std::size_t behindCharacter(std::size_t at) const {
        if (m_namesLineEnds == 0 && m_text.compare(at, 2, "\r\n") == 0)
            return at + 2;
        do
            ++at;
        while (at < m_text.size() && (static_cast<unsigned char>(m_text[at]) & 0xC0U) == 0x80);
        return at;
    }

    const std::string& m_text;
    pcre2_code* m_code = nullptr;
    pcre2_match_data* m_data = nullptr;
    std::uint32_t m_namesLineEnds = 0;
};

constexpr const char* Patterns[] = {
    "a",
    "ab",
    "ab|b",
    "a+",
    "a*",
    "x?",
    "^",
    "$",
    "^$",
    "^.*$",
    "\\bab\\b",
    "\\b",
    "\\w+",
    "(?<=b)a",
    "(?<!ab)ä",
    "a(?=b)",
    "a(?!b)",
    "[^a]+",
    "(?s)a.*?b",
    "(?s)a.*b",
    "(a|b)*ä",
    "(ab)\\1",
    "a\\Kb",
    "\\Rb",
    "\\n",
    ".",
    "ä{2}",
    "(?i)AB",
    "[ab]{3,5}$",
    "^(\\w)\\1+",
    "(?<=\\A)a|b",
    "\\A.|\\z|漢b",
    "b\\s+\\S+$",
    "\\Z|ab",
    "(?<=^ab)[^b]",
    "(?<=ä漢)a",
    "a??",
    "|a",
    "(?m-s).+?$",
    "\\Bb\\B",
    "(a)?b(?(1)a|ä)",
    "\\G[ab]",
    "(*COMMIT)ab|b",
    "a(*COMMIT)b",
    "x|a(*SKIP)b",
};

std::string randomText(std::mt19937& random, bool withCr) {
    static const char* const letters[] = {"a", "b", "a", "b", "ä", "漢", " ", "\n", "x", "\U0001F600", "\r\n", "\r"};
    std::string text;
    const unsigned length = random() % 60;
    for (unsigned i = 0; i < length; ++i)
        text += letters[random() % (withCr ? 12 : 10)];
    return text;
}

/// Random places for joints: not beside a line end or another joint, and not inside a character.
std::vector<std::size_t> randomCuts(std::mt19937& random, const std::string& text) {
    std::vector<std::size_t> cuts;
    for (std::size_t at = 1; at < text.size(); ++at) {
        const bool within = (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80;
        if (!within && text[at] != '\n' && text[at - 1] != '\n' && random() % 3 == 0)
            cuts.push_back(at);
    }
    return cuts;
}

}  // namespace

TEST(MatchScan, FindsWhatASearchOverTheWholeTextFinds) {
    std::mt19937 random(7);
    for (int round = 0; round < 120; ++round) {
        const bool jointed = round % 2 == 0;
        const std::string plain = randomText(random, !jointed);
        SearchedText text(plain, jointed ? randomCuts(random, plain) : std::vector<std::size_t>());
        text.held.gapAt = static_cast<qint64>(random() % (text.held.bytes.size() + 1));
        for (const char* pattern : Patterns) {
            const WholeTextSearch whole(pattern, plain);
            const Matches expected = whole.matches(0);
            for (const qint64 window : {1, 2, 3, 5, 16, 100}) {
                ASSERT_EQ(allMatches(text, expression(pattern), 0, window), expected)
                    << pattern << " in \"" << plain << "\" window " << window << " round " << round;
            }
        }
    }
}

TEST(MatchScan, SeesTheTextInFrontOfWhereItBegins) {
    std::mt19937 random(8);
    for (int round = 0; round < 200; ++round) {
        const bool jointed = round % 2 == 0;
        const std::string plain = randomText(random, false);
        const SearchedText text(plain, jointed ? randomCuts(random, plain) : std::vector<std::size_t>());
        std::size_t from = random() % (plain.size() + 1);
        while (from < plain.size() && (static_cast<unsigned char>(plain[from]) & 0xC0U) == 0x80)
            ++from;
        for (const char* pattern : Patterns) {
            ASSERT_EQ(allMatches(text, expression(pattern), static_cast<qint64>(from), 4),
                      WholeTextSearch(pattern, plain).matches(from))
                << pattern << " in \"" << plain << "\" from " << from;
        }
    }
}

TEST(MatchScan, TakesAnEmptyMatchOnceAndGoesOnByACharacter) {
    EXPECT_EQ(allMatches(SearchedText("a\r\nb\n"), expression("^")), (Matches{{0, 0}, {3, 3}}));
    EXPECT_EQ(allMatches(SearchedText("ä\xF0\x9F\x98\x80"), expression("x*")), (Matches{{0, 0}, {2, 2}, {6, 6}}));
    EXPECT_EQ(allMatches(SearchedText("axb"), expression("x*")), (Matches{{0, 0}, {1, 2}, {2, 2}, {3, 3}}));
    EXPECT_EQ(allMatches(SearchedText(""), expression("x*")), (Matches{{0, 0}}));
}

TEST(MatchScan, FindsNothingInAnEmptyText) {
    const SearchedText empty("");
    EXPECT_EQ(allMatches(empty, expression("a")), Matches());
}

TEST(MatchScan, GivesTheGroupsOfAMatchWithoutJoints) {
    const SearchedText text("key = value", {2, 5, 8});
    const SearchPattern pattern = expression("(\\w+) = (v)(u)?(\\w+)");
    MatchScan second(pattern, text.held, text.map, 0);
    ASSERT_TRUE(second.next());
    EXPECT_EQ(second.group(0), "key = value");
    EXPECT_EQ(second.group(1), "key");
    EXPECT_EQ(second.group(2), "v");
    EXPECT_EQ(second.group(3), "");
    EXPECT_EQ(second.group(4), "alue");
    EXPECT_EQ(second.group(5), "");
    EXPECT_EQ(second.group(-1), "");
}

TEST(MatchScan, LeavesJointsAtTheEndsOutside) {
    const SearchedText text("abc", {1, 2});
    ASSERT_EQ(text.held.bytes, "a\rb\rc");
    const SearchPattern pattern = expression("b");
    MatchScan scan(pattern, text.held, text.map, 0);
    ASSERT_TRUE(scan.next());
    EXPECT_EQ(scan.match(), (TextMatch{2, 3}));
}

TEST(MatchScan, StopsBehindAPlace) {
    const SearchedText text("a a a a");
    const SearchPattern pattern = expression("a");
    MatchScan scan(pattern, text.held, text.map, 0);
    scan.stopBehind(2);
    EXPECT_TRUE(scan.next());
    EXPECT_TRUE(scan.next());
    EXPECT_FALSE(scan.next());
    EXPECT_FALSE(scan.next());
}

TEST(MatchScan, GivesUpAnExpressionThatExplodes) {
    const SearchedText text(std::string(60, 'a') + "!");
    const SearchPattern pattern = expression("^(a+)+$");
    MatchScan scan(pattern, text.held, text.map, 0);
    EXPECT_FALSE(scan.next());
    EXPECT_TRUE(scan.error());
    EXPECT_EQ(scan.error().position, -1);
    EXPECT_FALSE(scan.next());
}

namespace {

/// Each of these lines takes an expression like (a|aa)+$ some milliseconds, but none reaches the step limit.
std::string slowLines(int count) {
    std::string text;
    for (int line = 0; line < count; ++line)
        text += std::string(22, 'a') + "!\n";
    return text;
}

}  // namespace

TEST(MatchScan, AsksItsWatchHoweverLongItTakesToTheNextMatch) {
    const SearchedText text(slowLines(3000));
    const SearchPattern pattern = expression("(a|aa)+$");
    MatchScan scan(pattern, text.held, text.map, 0, 64);
    int asked = 0;
    scan.watchedBy([&asked] { return ++asked < 20; });
    EXPECT_FALSE(scan.next());
    EXPECT_EQ(asked, 20);
    EXPECT_EQ(scan.error().sentence, u"The search was stopped."_qs);
    EXPECT_FALSE(scan.next());
    EXPECT_EQ(asked, 20);
}

TEST(MatchScan, AsksItsWatchBetweenTheWindowsOfALiteralText) {
    const SearchedText text(std::string(3'000'000, 'a'));
    const SearchPattern pattern(u"b"_qs, {});
    MatchScan scan(pattern, text.held, text.map, 0);
    int asked = 0;
    scan.watchedBy([&asked] { return ++asked > 0; });
    EXPECT_FALSE(scan.next());
    EXPECT_GT(asked, 3);
    EXPECT_FALSE(scan.error());
}

TEST(MatchScan, FindsAMatchBehindTextThatTakesLong) {
    std::string letters = slowLines(2) + std::string(10'000, 'x') + "\naaa\n";
    const auto at = static_cast<qint64>(letters.size()) - 4;
    const SearchedText text(letters);
    EXPECT_EQ(allMatches(text, expression("(a|aa)+$")), (Matches{{at, at + 3}}));
}

TEST(LastMatch, CanBeStopped) {
    const SearchedText text(std::string(3'000'000, 'a'));
    const SearchPattern pattern(u"b"_qs, {});
    SearchError error;
    EXPECT_FALSE(lastMatchBefore(pattern, text.held, text.map, 3'000'000, true, error, [] { return false; }));
    EXPECT_TRUE(error);
}

TEST(MatchScan, GivesUpAnExpressionThatNeedsTooMuchMemory) {
    std::string letters;
    letters.resize(20'000'000, 'a');
    const SearchedText text(letters);
    const SearchPattern pattern = expression("(a|b|(c))*d");
    MatchScan scan(pattern, text.held, text.map, 0);
    EXPECT_FALSE(scan.next());
    EXPECT_TRUE(scan.error());
}

TEST(LastMatch, IsTheLastThatEndsInFront) {
    std::mt19937 random(9);
    for (int round = 0; round < 300; ++round) {
        const bool jointed = round % 2 == 0;
        const std::string plain = randomText(random, !jointed);
        const SearchedText text(plain, jointed ? randomCuts(random, plain) : std::vector<std::size_t>());
        const auto limit = static_cast<qint64>(random() % (plain.size() + 1));
        for (const char* pattern : Patterns) {
            for (const bool emptyAtLimit : {false, true}) {
                SearchError error;
                const auto last =
                    lastMatchBefore(expression(pattern), text.held, text.map, text.heldOf(limit), emptyAtLimit, error);
                Matches expected = WholeTextSearch(pattern, plain).matches(0);
                std::erase_if(expected, [&](const auto& match) {
                    return match.second > limit || (match.first == limit && !emptyAtLimit);
                });
                ASSERT_EQ(last.has_value(), !expected.empty()) << pattern << " in \"" << plain << "\" at " << limit;
                if (last) {
                    ASSERT_EQ(text.plainOf(last->from), expected.back().first)
                        << pattern << " in \"" << plain << "\" at " << limit;
                }
            }
        }
    }
}

TEST(LastMatch, IsFoundFarAwayAndInsideALongLine) {
    std::string plain = "needle\n";
    for (int line = 0; line < 500; ++line)
        plain += "nothing here to see\n";
    const SearchedText text(plain);
    SearchError error;
    const auto last = lastMatchBefore(expression("needle"), text.held, text.map, text.held.length(), false, error);
    ASSERT_TRUE(last);
    EXPECT_EQ(*last, (TextMatch{0, 6}));
    const SearchedText oneLine(std::string(100'000, 'x') + "12345" + std::string(100'000, 'x'), {50'000, 100'002});
    const auto number =
        lastMatchBefore(expression("\\d+"), oneLine.held, oneLine.map, oneLine.held.length(), false, error);
    ASSERT_TRUE(number);
    EXPECT_EQ(oneLine.plainOf(*number), (TextMatch{100'000, 100'005}));
}

TEST(LastMatch, ReadsNoLineInFrontOfTheLowest) {
    CountingText text("needle\n");
    for (int line = 0; line < 50; ++line)
        text.bytes += std::string(1000, 'x') + '\n';
    TextMap map(text);
    map.reset(true, JointKind::None, {});
    const SearchPattern pattern(u"needle"_qs, {});
    SearchError error;
    const qint64 end = text.length();
    EXPECT_FALSE(lastMatchBefore(pattern, text, map, end, true, error, {}, end - 30));
    EXPECT_FALSE(error);
    EXPECT_LT(text.bytesRead(), 3000);
    EXPECT_EQ(lastMatchBefore(pattern, text, map, end, true, error, {}, 3), (TextMatch{0, 6}));
    EXPECT_EQ(lastMatchBefore(pattern, text, map, end, true, error, {}, 7), std::nullopt);
}

TEST(LastMatch, TellsWhyItWasGivenUp) {
    const SearchedText text(std::string(60, 'a') + "!");
    SearchError error;
    EXPECT_FALSE(lastMatchBefore(expression("^(a+)+$"), text.held, text.map, text.held.length(), false, error));
    EXPECT_TRUE(error);
}
