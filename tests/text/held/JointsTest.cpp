#include "text/held/Joints.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

LineEndsSeen seenIn(std::string_view text, char next = '\0') {
    LineEndsSeen seen;
    seen.look(text, next);
    return seen;
}

using Offsets = std::vector<qint64>;

}  // namespace

TEST(LineEndsSeen, TellsTheThreeFormsApart) {
    EXPECT_EQ(seenIn("a\nb"), (LineEndsSeen{true, false, false}));
    EXPECT_EQ(seenIn("a\rb"), (LineEndsSeen{false, true, false}));
    EXPECT_EQ(seenIn("a\r\nb\r\n"), (LineEndsSeen{false, false, true}));
    EXPECT_EQ(seenIn("a\r\r\n\nb"), (LineEndsSeen{true, true, true}));
    EXPECT_EQ(seenIn("none"), LineEndsSeen{});
}

TEST(LineEndsSeen, LooksBehindARunThatEndsInCr) {
    EXPECT_EQ(seenIn("a\r", '\n'), (LineEndsSeen{false, false, true}));
    EXPECT_EQ(seenIn("a\r", 'b'), (LineEndsSeen{false, true, false}));
}

TEST(JointKind, IsALineEndThatTheTextDoesNotUse) {
    EXPECT_EQ(jointKindFor(seenIn("one line")), JointKind::AnyCr);
    EXPECT_EQ(jointKindFor(seenIn("a\nb\n")), JointKind::AnyCr);
    EXPECT_EQ(jointKindFor(seenIn("a\r\nb")), JointKind::LoneCr);
    EXPECT_EQ(jointKindFor(seenIn("a\rb")), JointKind::AnyLf);
    EXPECT_EQ(jointKindFor(seenIn("a\r\nb\n")), JointKind::Listed);
    EXPECT_EQ(jointKindFor(seenIn("a\rb\n")), JointKind::Listed);
}

TEST(PieceEnd, LiesInFrontOfAWordNearTheEndOfThePiece) {
    std::string line(PieceLength + 100, 'x');
    line[PieceLength - 50] = ' ';
    EXPECT_EQ(pieceEnd(line), PieceLength - 49);
}

TEST(PieceEnd, IsTheFullPieceWhereThereIsNoWordToSpare) {
    EXPECT_EQ(pieceEnd(std::string(PieceLength + 1, 'x')), PieceLength);
}

TEST(PieceEnd, NeverLiesInsideACharacter) {
    std::string line;
    while (line.size() < PieceLength + 8)
        line += "\xE6\xBC\xA2";
    EXPECT_EQ(pieceEnd(line) % 3, 0);
}

TEST(JointList, CountsTheJointsInFrontOfAByte) {
    JointList joints;
    joints.reset(JointKind::AnyCr, {3, 7});
    EXPECT_EQ(joints.before(3), 0);
    EXPECT_EQ(joints.before(4), 1);
    EXPECT_EQ(joints.before(100), 2);
    EXPECT_TRUE(joints.isJoint(7));
    EXPECT_FALSE(joints.isJoint(6));
}

TEST(JointList, MovesWithAnInsertionAndFindsTheJointsInIt) {
    JointList joints;
    joints.reset(JointKind::AnyCr, {3, 7});
    joints.textInserted(5, "a\rb", 'x');
    EXPECT_EQ(joints.offsets(), (Offsets{3, 6, 10}));
}

TEST(JointList, MovesAJointThatStandsWhereTextIsInserted) {
    JointList joints;
    joints.reset(JointKind::AnyCr, {3});
    joints.textInserted(3, "zz", '\r');
    EXPECT_EQ(joints.offsets(), (Offsets{5}));
}

TEST(JointList, DropsTheJointsOfADeletion) {
    JointList joints;
    joints.reset(JointKind::AnyCr, {3, 7, 12});
    joints.textDeleted(3, 5);
    EXPECT_EQ(joints.offsets(), (Offsets{7}));
}

TEST(JointList, TakesACrOfCrLfForNoJoint) {
    JointList joints;
    joints.reset(JointKind::LoneCr, {});
    joints.textInserted(0, "a\r\nb\rc\r", '\n');
    EXPECT_EQ(joints.offsets(), (Offsets{4}));
}

TEST(JointList, TakesEveryLfForAJointWhereTheTextHasOnlyCr) {
    JointList joints;
    joints.reset(JointKind::AnyLf, {});
    joints.textInserted(0, "a\rb\nc", 'x');
    EXPECT_EQ(joints.offsets(), (Offsets{3}));
}

TEST(JointList, AgreesWithAPlainTextThroughManyChanges) {
    std::mt19937 random(5);
    std::string text;
    JointList joints;
    joints.reset(JointKind::AnyCr, {});
    for (int step = 0; step < 3000; ++step) {
        const auto at = static_cast<std::size_t>(random()) % (text.size() + 1);
        const auto signedAt = static_cast<qint64>(at);
        if (random() % 3 != 0 || text.empty()) {
            std::string added(random() % 4, 'x');
            if (random() % 2 == 0)
                added += '\r';
            joints.textInserted(signedAt, added, at < text.size() ? text[at] : '\0');
            text.insert(at, added);
        } else {
            const std::size_t length = std::min<std::size_t>(random() % 9, text.size() - at);
            joints.textDeleted(signedAt, static_cast<qint64>(length));
            text.erase(at, length);
        }
        const auto asked = static_cast<std::size_t>(random()) % (text.size() + 1);
        ASSERT_EQ(joints.before(static_cast<qint64>(asked)),
                  std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(asked), '\r'));
        ASSERT_EQ(joints.isJoint(static_cast<qint64>(asked)), asked < text.size() && text[asked] == '\r');
        if (step % 7 != 0)
            continue;
        Offsets expected;
        for (std::size_t byte = 0; byte < text.size(); ++byte) {
            if (text[byte] == '\r')
                expected.push_back(static_cast<qint64>(byte));
        }
        ASSERT_EQ(joints.offsets(), expected) << "step " << step;
    }
}
