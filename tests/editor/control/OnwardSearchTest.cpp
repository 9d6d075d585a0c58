#include "editor/control/OnwardSearch.h"
#include "text/held/CountingText.h"

#include <gtest/gtest.h>

namespace {

/// Together much longer than the window of a scan, so that windows that overlap do not count as a pass.
constexpr int Lines = 100;
constexpr int LineLength = 50'000;

struct Searching : testing::Test {
    Searching() {
        for (int line = 0; line < Lines; ++line)
            text.bytes += std::string(LineLength, 'x') + '\n';
        map.reset(true, JointKind::None, {});
    }

    OnwardMatch find(const char* what, qint64 from, bool around) {
        pattern = std::make_unique<SearchPattern>(QString::fromUtf8(what), SearchFlags());
        text.countAnew();
        return nextMatch({*pattern, text, map, from}, around);
    }
    double passes() const { return static_cast<double>(text.bytesRead()) / static_cast<double>(text.length()); }

    CountingText text;
    TextMap map{text};
    std::unique_ptr<SearchPattern> pattern;
};

}  // namespace

class AnAbsentText : public Searching {};

TEST_F(AnAbsentText, CostsOnePassFromEitherEnd) {
    for (const qint64 from : {qint64{0}, text.length()}) {
        EXPECT_EQ(find("absent", from, true).scan, nullptr);
        EXPECT_GE(passes(), 1.0) << from;
        EXPECT_LT(passes(), 1.1) << from;
    }
}

/// A window that reaches beyond where the search began is no second pass, which would make it one and a half.
TEST_F(AnAbsentText, CostsNoSecondPassFromTheMiddle) {
    EXPECT_EQ(find("absent", text.length() / 2, true).scan, nullptr);
    EXPECT_GE(passes(), 1.0);
    EXPECT_LT(passes(), 1.4);
}

TEST_F(AnAbsentText, IsLookedForNoFurtherThanTheEndWhenThatIsWhereToStop) {
    EXPECT_EQ(find("absent", text.length() / 2, false).scan, nullptr);
    EXPECT_GE(passes(), 0.5);
    EXPECT_LT(passes(), 0.6);
}

class AMatchInFront : public Searching {
 protected:
    AMatchInFront() { text.bytes.replace(8, 6, "needle"); }
};

TEST_F(AMatchInFront, IsFoundFromTheOtherEndIfThatIsAskedFor) {
    const qint64 from = text.length() / 2;
    EXPECT_EQ(find("needle", from, false).scan, nullptr);
    const OnwardMatch found = find("needle", from, true);
    ASSERT_NE(found.scan, nullptr);
    EXPECT_EQ(found.scan->match(), (TextMatch{8, 14}));
    EXPECT_TRUE(found.wrapped);
    EXPECT_LT(passes(), 0.6);
}

TEST_F(AMatchInFront, IsNoWrapWhenTheSearchBeginsInFrontOfIt) {
    const OnwardMatch found = find("needle", 8, true);
    ASSERT_NE(found.scan, nullptr);
    EXPECT_EQ(found.scan->match(), (TextMatch{8, 14}));
    EXPECT_FALSE(found.wrapped);
}
