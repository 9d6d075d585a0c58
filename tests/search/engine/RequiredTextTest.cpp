#include "search/engine/PlainText.h"
#include "search/engine/RequiredText.h"
#include "text/codec/TextCodec.h"
#include "text/search/MatchScan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <random>
#include <string>

namespace {

constexpr SearchFlags WithCase{.caseSensitive = true};
constexpr SearchFlags Expression{.caseSensitive = true, .regExp = true};
constexpr SearchFlags CaselessExpression{.regExp = true};

QByteArray requiredBy(const QString& text, SearchFlags flags) {
    return RequiredText(text, flags).text();
}

bool hasMatch(const SearchPattern& pattern, std::string_view utf8) {
    const PlainText text(utf8);
    TextMap map(text);
    map.reset(false, JointKind::None, {});
    return MatchScan(pattern, text, map, 0).next();
}

std::string encoded(std::string_view utf8, TextFormat format) {
    const std::array text{utf8};
    const EncodedText result = encodeText(text, format);
    std::string bytes;
    for (const std::string_view piece : result.pieces)
        bytes += piece;
    return bytes;
}

TEST(RequiredTextTest, TheLongestRunOfALiteralTextIsChosen) {
    EXPECT_EQ(requiredBy(u"needle"_qs, WithCase), "needle");
    EXPECT_EQ(requiredBy(u"a\u00e4bcd\u20acef"_qs, WithCase), "bcd");
    EXPECT_EQ(requiredBy(u"a.b*c"_qs, WithCase), "a.b*c");
    EXPECT_EQ(requiredBy(u"\u00e4\u00f6"_qs, WithCase), "");
    EXPECT_EQ(requiredBy({}, WithCase), "");
}

TEST(RequiredTextTest, WithoutCaseLettersWithAnotherFormOutsideOfAsciiAreNotRequired) {
    EXPECT_EQ(requiredBy(u"BoKMark"_qs, {}), "mar");
    EXPECT_EQ(requiredBy(u"Session"_qs, {}), "ion");
    EXPECT_EQ(requiredBy(u"BoKMark"_qs, WithCase), "BoKMark");
    EXPECT_TRUE(RequiredText(u"ask me"_qs, {}).mayBeIn("A\xC5\xBF\xE2\x84\xAA ME"));
    EXPECT_TRUE(RequiredText(u"MAR"_qs, {}).mayBeIn("mAr"));
    EXPECT_FALSE(RequiredText(u"MAR"_qs, WithCase).mayBeIn("mAr"));
}

TEST(RequiredTextTest, OfAnExpressionWhatEveryMatchMustHaveIsChosen) {
    const std::pair<const char16_t*, const char*> Rows[] = {
        {u"abc", "abc"},       {u"ab+cd", "ab"},       {u"ab*cde", "cde"},      {u"ab?c", "a"},
        {u"abc{0}d", "ab"},    {u"a{2}{3}bc", "bc"},   {u"x{,3}yz", "yz"},      {u"a+?bc", "bc"},
        {u"a++bc", "bc"},      {u"a*+bc", "bc"},       {u"\\.h\\+x", ".h+x"},   {u"\\bfoo\\b", "foo"},
        {u"a.bc", "bc"},       {u"^ab$", "ab"},        {u"[abc]de", "de"},      {u"[^]abc]de", "de"},
        {u"[]abc]de", "de"},   {u"[\\]abc]de", "de"},  {u"(abcd)ef", "ef"},     {u"(a(b|[)])c)?de", "de"},
        {u"(?=abcd)ef", "ef"}, {u"(?<!abcd)ef", "ef"}, {u"(?<n>abcd)ef", "ef"}, {u"ab\\Kcde", "cde"},
        {u"a{x}b", "x}b"},     {u"a\\d+bc", "bc"},     {u"#a b", "#a b"},
    };
    for (const auto& [expression, required] : Rows) {
        EXPECT_EQ(requiredBy(QStringView(expression).toString(), Expression), required)
            << QStringView(expression).toString().toStdString();
    }
}

TEST(RequiredTextTest, NothingIsRequiredByAnExpressionThatIsNotUnderstood) {
    const char16_t* const expressions[] = {
        u"abc|def",       u"abc(?i)def",      u"(?i:abc)def",     u"\\Qa|b\\E",      u"(*UTF)abc",  u"abc\\x41",
        u"abc\\1",        u"(?x)a b c",       u"[\\Q]\\Eabc]def", u"[\\E]abc]",      u"[^\\E]abc]", u"[[:alpha:]]abc",
        u"[a[:digit:]]a", u"(a\\)b)(?#c)def", u"abc\\",           u"[abc",           u"(abc",       u"abc)",
        u"\\cAabc",       u"abc\\Cdef",       u"(a(*ACCEPT))b",   u"(?(DEFINE)a)abc"};
    for (const char16_t* const expression : expressions) {
        EXPECT_EQ(requiredBy(QStringView(expression).toString(), Expression), "")
            << QStringView(expression).toString().toStdString();
    }
    EXPECT_TRUE(RequiredText(u"a|b"_qs, Expression).mayBeIn("zzz"));
    EXPECT_TRUE(RequiredText(u"a|b"_qs, Expression).mayBeIn({}));
}

TEST(RequiredTextTest, AUtf16TextIsNeverRuledOut) {
    const RequiredText required(u"needle"_qs, WithCase);
    EXPECT_TRUE(required.mayBeIn(encoded("a needle", {TextEncoding::Utf16LittleEndian, true})));
    EXPECT_TRUE(required.mayBeIn(encoded("a needle", {TextEncoding::Utf16BigEndian, true})));
    EXPECT_TRUE(required.mayBeIn("\xEF\xBB\xBFneedle"));
    EXPECT_FALSE(required.mayBeIn("\xEF\xBB\xBFneedl"));
    EXPECT_TRUE(required.mayBeIn("\x80\xFFneedle\x81"));
}

/// Each text lies in memory of exactly its size, so that a sanitizer sees a byte too many being read.
TEST(RequiredTextTest, ATextIsFoundAtEveryPlaceOfEveryLength) {
    for (const QString& text :
         {u"q"_qs, u"zq"_qs, u"aaab"_qs, u"Quick Brown Fox x"_qs, u"eeeeeeeeeeeeeeeeeeeeeeeq"_qs}) {
        const std::string wanted = text.toStdString();
        for (const SearchFlags flags : {SearchFlags{}, WithCase}) {
            const RequiredText required(text, flags);
            const std::string needle = required.text().toStdString();
            ASSERT_FALSE(needle.empty());
            for (std::size_t size = 0; size < 70; ++size) {
                std::unique_ptr<char[]> bytes(new char[size]);
                std::fill_n(bytes.get(), size, 'e');
                EXPECT_FALSE(required.mayBeIn({bytes.get(), size})) << wanted << ' ' << size;
                for (std::size_t at = 0; at + needle.size() <= size; ++at) {
                    std::fill_n(bytes.get(), size, 'e');
                    std::copy(needle.begin(), needle.end(), bytes.get() + at);
                    EXPECT_TRUE(required.mayBeIn({bytes.get(), size})) << wanted << ' ' << at << ' ' << size;
                    if (needle.size() == 1)
                        continue;
                    bytes[at + needle.size() - 1] = '#';
                    EXPECT_FALSE(required.mayBeIn({bytes.get(), size})) << wanted << ' ' << at << ' ' << size;
                }
            }
        }
    }
}

TEST(RequiredTextTest, WithoutCaseOnlyLettersHaveAnotherForm) {
    const RequiredText required(u"[m]"_qs, {});
    EXPECT_TRUE(required.mayBeIn(std::string(40, 'x') + "[M]"));
    EXPECT_FALSE(required.mayBeIn(std::string(40, 'x') + "{m}")) << "bit 0x20 differs, but these are no letters";
    EXPECT_FALSE(required.mayBeIn(std::string(40, 'x') + "[\r]"));
}

/// Makes random expressions out of everything that changes what the characters in it mean.
class RandomExpression {
 public:
    explicit RandomExpression(std::mt19937& random) : m_random(random) {}

    std::string make(int depth = 0) {
        std::string expression;
        for (auto left = 1 + m_random() % 4; left > 0; --left)
            expression += element(depth);
        return m_random() % 12 == 0 ? expression + '|' + element(depth) : expression;
    }

 private:
    std::string one(std::initializer_list<const char*> of) { return of.begin()[m_random() % of.size()]; }
    std::string literal() { return one({"a", "b", "k", "S", "s", "K", "m", "]", "}", "-", "#", " ", "\xC3\xA4"}); }
    std::string quantifier() {
        const std::string base =
            one({"", "", "", "", "*", "+", "?", "{0}", "{2}", "{1,2}", "{0,}", "{,2}", "{", "{2}{0}"});
        return base + (base.empty() ? "" : one({"", "", "?", "+"}));
    }
    std::string escape() {
        return one({"\\.", "\\]", "\\[", "\\(",    "\\)", "\\\\",  "\\|",      "\\w",   "\\D", "\\b",     "\\s",
                    "\\K", "\\A", "\\z", "\\R",    "\\n", "\\x61", "\\Qa*\\E", "\\Qab", "\\E", "\\x{6d}", "\\cA",
                    "\\N", "\\X", "\\h", "\\p{L}", "\\1", "\\141", "\\B",      "\\G",   "\\e", "\\_"});
    }
    std::string characterClass() {
        std::string made = one({"[", "[^", "[]", "[^]", "[\\E", "[\\E]", "[^\\E]", "[\\Q]\\E", "[\\E^]"});
        for (auto left = m_random() % 4; left > 0; --left) {
            made += one({"a", "b", "k", "\\]", "[", "[:alpha:]", "\\d", "\\Qm]\\E", "(", ")", "|", "\\\\", "^", "a-m",
                         "\\E", ":"});
        }
        return made + "]";
    }
    std::string group(int depth) {
        return one({"(",     "(?:",    "(?=",   "(?!",        "(?<=",  "(?<!",  "(?>",
                    "(?|",   "(?i)(",  "(?i:",  "(?-i)(",     "(?x)(", "(?<n>", "(?#m)(",
                    "(?'q'", "(?P<p>", "(?(1)", "(*COMMIT)(", "(?i",   "(?s-m:"}) +
               make(depth + 1) + ")";
    }
    std::string element(int depth) {
        switch (m_random() % 8) {
            case 0:
                return escape() + quantifier();
            case 1:
                return characterClass() + quantifier();
            case 2:
                return depth < 3 ? group(depth) + quantifier() : literal();
            case 3:
                return one({".", "^", "$"}) + quantifier();
            default:
                return literal() + quantifier();
        }
    }

    std::mt19937& m_random;
};

/// Short, and made of much that the expressions have too.
std::string randomText(std::mt19937& random) {
    static constexpr std::string_view Parts[] = {
        "a",  "b", "k", "s", "K",  "S", "m",        "]", "-", "\xC5\xBF", "\xE2\x84\xAA",
        "\n", " ", "A", "M", "\\", "}", "\xC3\xA4", "{", "#", "2"};
    std::string text;
    for (auto left = random() % 14; left > 0; --left)
        text += Parts[random() % std::size(Parts)];
    return text;
}

TEST(RequiredTextTest, WhereARandomExpressionMatchesItsRequiredTextIsFound) {
    std::mt19937 random(20);
    int matched = 0;
    int required = 0;
    for (int round = 0; round < 40000; ++round) {
        const std::string expression = RandomExpression(random).make();
        const SearchFlags flags = round % 2 == 0 ? Expression : CaselessExpression;
        const QString text = QString::fromStdString(expression);
        const SearchPattern pattern(text, flags);
        if (pattern.error())
            continue;
        const RequiredText needed(text, flags);
        required += needed.text().isEmpty() ? 0 : 1;
        for (int attempt = 0; attempt < 12 && !needed.text().isEmpty(); ++attempt) {
            const std::string searched = randomText(random);
            if (!hasMatch(pattern, searched))
                continue;
            ++matched;
            EXPECT_TRUE(needed.mayBeIn(searched)) << expression << " requires " << needed.text().constData() << " in "
                                                  << testing::PrintToString(searched);
            const std::string windows = encoded(searched, {TextEncoding::Windows1252, false});
            EXPECT_TRUE(windows.empty() || needed.mayBeIn(windows)) << expression;
        }
        if (HasFailure())
            return;
    }
    EXPECT_GT(required, 2000);
    EXPECT_GT(matched, 1000);
}

}  // namespace
