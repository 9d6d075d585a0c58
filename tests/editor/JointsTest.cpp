#include "editor/Joints.h"

#include <gtest/gtest.h>

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
