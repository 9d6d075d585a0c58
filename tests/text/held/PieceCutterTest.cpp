#include "text/held/PieceCutter.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>

namespace {

/// The result of cutting a text that is passed in parts of a given size.
struct Cut {
    std::string out;
    std::vector<qint64> joints;
    LineEndsSeen lineEnds;
    qint64 longestCut = 0;

    std::string withoutJoints() const {
        std::string plain = out;
        for (auto joint = joints.rbegin(); joint != joints.rend(); ++joint)
            plain.erase(static_cast<std::size_t>(*joint), 1);
        return plain;
    }
};

Cut cutInParts(const std::string& text, std::size_t partSize, std::optional<char> joint = '\r') {
    PieceCutter cutter(joint);
    Cut cut;
    std::string waiting;
    for (std::size_t at = 0; at < text.size() || !waiting.empty();) {
        const std::size_t size = std::min(partSize, text.size() - at);
        waiting += text.substr(at, size);
        at += size;
        const qint64 taken = cutter.feed(waiting, at == text.size(), [&cut](std::string_view run) { cut.out += run; });
        waiting.erase(0, static_cast<std::size_t>(taken));
    }
    cut.joints = cutter.joints();
    cut.lineEnds = cutter.lineEnds();
    cut.longestCut = cutter.longestCut();
    return cut;
}

qint64 longestLine(const std::string& text) {
    qint64 longest = 0;
    qint64 here = 0;
    for (const char c : text) {
        here = c == '\n' || c == '\r' ? 0 : here + 1;
        longest = std::max(longest, here);
    }
    return longest;
}

std::string lines(std::initializer_list<qint64> lengths, const std::string& end) {
    std::string text;
    for (const qint64 length : lengths) {
        for (qint64 i = 0; i < length; ++i)
            text += i % 9 == 8 ? ' ' : static_cast<char>('a' + i % 26);
        text += end;
    }
    return text;
}

}  // namespace

TEST(PieceCutter, LeavesShortLinesAlone) {
    const std::string text = lines({10, 0, LongLine, 200}, "\n");
    const Cut cut = cutInParts(text, 1 << 20);
    EXPECT_EQ(cut.out, text);
    EXPECT_TRUE(cut.joints.empty());
}

TEST(PieceCutter, CutsALineOfOneByteTooMany) {
    const std::string text = lines({10, LongLine + 1, 10}, "\n");
    const Cut cut = cutInParts(text, 1 << 20);
    EXPECT_EQ(cut.withoutJoints(), text);
    EXPECT_LE(longestLine(cut.out), PieceLength);
    EXPECT_GE(cut.joints.size(), static_cast<std::size_t>(LongLine / PieceLength));
}

TEST(PieceCutter, PutsAJointAtEachPlaceItNames) {
    const Cut cut = cutInParts(lines({3 * LongLine}, ""), 100'000);
    for (const qint64 joint : cut.joints) {
        EXPECT_EQ(cut.out[static_cast<std::size_t>(joint)], '\r');
    }
}

TEST(PieceCutter, GivesTheSameWhateverThePartsAre) {
    const std::string text = lines({50, LongLine + 5000, 3, 2 * LongLine}, "\r\n") + "tail";
    const Cut whole = cutInParts(text, text.size());
    for (const std::size_t part : {1'000U, 4'096U, 65'536U, 65'537U, 70'001U}) {
        const Cut cut = cutInParts(text, part);
        EXPECT_EQ(cut.withoutJoints(), text) << part;
        EXPECT_EQ(cut.lineEnds, whole.lineEnds) << part;
        EXPECT_LE(longestLine(cut.out), PieceLength) << part;
    }
}

TEST(PieceCutter, MeasuresTheLongestLineThatItCuts) {
    const std::string text = lines({LongLine, LongLine + 7, 3 * LongLine + 5, 2 * LongLine}, "\r\n");
    for (const std::size_t part : {1'000UL, 65'536UL, text.size()}) {
        EXPECT_EQ(cutInParts(text, part).longestCut, 3 * LongLine + 5) << part;
        EXPECT_EQ(cutInParts(text + std::string(4 * LongLine, 'x'), part).longestCut, 4 * LongLine) << part;
    }
    EXPECT_EQ(cutInParts(lines({LongLine}, "\n"), 1'000).longestCut, 0);
}

TEST(PieceCutter, WithoutAByteForJointsLeavesEveryLineWhole) {
    const std::string text = lines({50, 3 * LongLine, 3}, "\r\n") + lines({2 * LongLine}, "\n") + "a\rb";
    for (const std::size_t part : {1'000UL, 65'537UL, text.size()}) {
        const Cut cut = cutInParts(text, part, std::nullopt);
        EXPECT_EQ(cut.out, text) << part;
        EXPECT_TRUE(cut.joints.empty()) << part;
        EXPECT_EQ(cut.lineEnds, (LineEndsSeen{true, true, true})) << part;
    }
}

TEST(PieceCutter, NeverPutsAJointBesideALineEnd) {
    for (const std::string end : {"\n", "\r\n"}) {
        for (const qint64 extra : {0, 1, 2, 4095, 4096, 4097}) {
            const Cut cut = cutInParts(lines({LongLine + 1 + extra, 5}, end), 30'000);
            for (const qint64 joint : cut.joints) {
                EXPECT_NE(cut.out[static_cast<std::size_t>(joint + 1)], '\n');
                EXPECT_NE(cut.out[static_cast<std::size_t>(joint + 1)], '\r');
                EXPECT_NE(cut.out[static_cast<std::size_t>(joint - 1)], '\n');
            }
        }
    }
}

TEST(PieceCutter, KeepsCharactersWhole) {
    std::string text;
    while (text.size() < 2 * LongLine)
        text += "\xF0\x9F\x98\x80\xE6\xBC\xA2";
    const Cut cut = cutInParts(text, 7'777);
    EXPECT_EQ(cut.withoutJoints(), text);
    for (const qint64 joint : cut.joints) {
        EXPECT_NE(static_cast<unsigned char>(cut.out[static_cast<std::size_t>(joint + 1)]) & 0xC0U, 0x80U);
    }
}

TEST(PieceCutter, AgreesOverRandomTextsAndParts) {
    std::mt19937 random(3);
    const std::vector<std::string> ends{"\n", "\r\n", "\r"};
    for (int round = 0; round < 40; ++round) {
        std::string text;
        for (int line = 0; line < 6; ++line)
            text += lines({static_cast<qint64>(random() % 150'000)}, ends[random() % 3]);
        const Cut cut = cutInParts(text, 1 + random() % 200'000);
        ASSERT_EQ(cut.withoutJoints(), text);
        ASSERT_LE(longestLine(cut.out), LongLine);
        LineEndsSeen seen;
        seen.look(text);
        ASSERT_EQ(cut.lineEnds, seen);
    }
}
