#include "hex/bytes/HexSearch.h"
#include "hex/bytes/HexText.h"
#include "hex/bytes/MemoryBytes.h"
#include "text/codec/Windows1252.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr qint64 Block = 8;

HexNeedle sequence(const QByteArray& bytes) {
    return *HexNeedle::make(HexText::SpaceHexText(QString::fromLatin1(bytes.toHex())), HexFindType::Bytes);
}

HexNeedle text(const QString& needle, HexFindType type = HexFindType::ExactCase) {
    return *HexNeedle::make(needle, type);
}

qint64 numberOf(const std::optional<FilePosition>& position) {
    return position ? position->number() : -1;
}

class Searching : public testing::Test {
 protected:
    qint64 down(const HexNeedle& needle, qint64 start, bool goesOn = false) {
        return numberOf(HexSearch(m_file, Block).findDown(needle, FilePosition(start), goesOn));
    }
    qint64 up(const HexNeedle& needle, qint64 cursor, bool goesOn = false) {
        return numberOf(HexSearch(m_file, Block).findUp(needle, FilePosition(cursor), goesOn));
    }
    qint64 count(const HexNeedle& needle) { return HexSearch(m_file, Block).count(needle); }

    /// A search whose watch notes what it is called with, and ends it at the call of that number, from 1.
    HexSearch watched(int lastCall) {
        return HexSearch(m_file, Block, [this, lastCall](int percent) {
            m_percents.push_back(percent);
            return static_cast<int>(m_percents.size()) < lastCall;
        });
    }

    MemoryBytes m_file;
    std::vector<int> m_percents;
};

}  // namespace

TEST(Needles, OfWhatIsNoSequenceOrNoBytesAreNone) {
    EXPECT_FALSE(HexNeedle::make(QString(), HexFindType::Bytes));
    EXPECT_FALSE(HexNeedle::make(QString(), HexFindType::AnyCase));
    EXPECT_FALSE(HexNeedle::make(u"hello"_qs, HexFindType::Bytes));
    EXPECT_FALSE(HexNeedle::make(u"\u0416"_qs, HexFindType::ExactCase));
    EXPECT_TRUE(HexNeedle::make(u"\u20AC"_qs, HexFindType::ExactCase));
}

TEST(Needles, OverlapByTheirCharactersOrOneLessThanTheirBytes) {
    EXPECT_EQ(sequence("abc").overlap(), 2);
    EXPECT_EQ(sequence("a").overlap(), 0);
    EXPECT_EQ(text(u"abc"_qs).overlap(), 3);
    EXPECT_EQ(text(u"abc"_qs, HexFindType::AnyCase).overlap(), 3);
}

TEST_F(Searching, FindsTheFirstMatchFromTheStartOn) {
    m_file.bytes = "one two one two";
    EXPECT_EQ(down(text(u"two"_qs), 1), 5);
    EXPECT_EQ(down(text(u"two"_qs), 5), 5);
    EXPECT_EQ(down(text(u"two"_qs), 6), 13);
    EXPECT_EQ(down(text(u"two"_qs), 14), -1);
    EXPECT_EQ(down(text(u"none"_qs), 1), -1);
}

TEST_F(Searching, GoesOnFromTheTopOnceWhenAskedTo) {
    m_file.bytes = "one two one two";
    EXPECT_EQ(down(text(u"two"_qs), 14, true), 5);
    EXPECT_EQ(down(text(u"none"_qs), 14, true), -1);
}

TEST_F(Searching, AStartBehindTheEndFindsNothingAndDoesNotGoOn) {
    m_file.bytes = "one two";
    EXPECT_EQ(down(text(u"one"_qs), 8, true), -1);
    m_file.bytes.clear();
    EXPECT_EQ(down(text(u"one"_qs), 1, true), -1);
    EXPECT_EQ(up(text(u"one"_qs), 1, true), -1);
}

TEST_F(Searching, FindsMatchesThatStraddleTwoBlocks) {
    for (qsizetype at = 0; at <= 40; ++at) {
        m_file.bytes = QByteArray(44, '.');
        m_file.bytes.replace(at, 4, "abcd");
        for (const HexNeedle& needle : {text(u"abcd"_qs), text(u"aBcD"_qs, HexFindType::AnyCase), sequence("abcd")}) {
            EXPECT_EQ(down(needle, 1), at + 1);
            const bool acrossTheLastBlock = at <= 2;
            EXPECT_TRUE(acrossTheLastBlock || up(needle, 44) == at + 1) << at;
        }
        EXPECT_EQ(count(sequence("abcd")), 1);
    }
}

TEST_F(Searching, InProductBlocksFindsAMatchAcrossTheirJoint) {
    m_file.bytes = QByteArray(70'000, '.');
    m_file.bytes.replace(31'998, 4, "abcd");
    HexSearch search(m_file);
    for (const HexNeedle& needle : {text(u"abcd"_qs), sequence("abcd")}) {
        EXPECT_EQ(numberOf(search.findDown(needle, FilePosition(1), false)), 31'999);
        EXPECT_EQ(numberOf(search.findUp(needle, FilePosition(70'000), false)), 31'999);
        EXPECT_EQ(search.count(needle), 1);
    }
    EXPECT_LE(m_file.mostRead, 32'004);
}

TEST_F(Searching, DownAgreesWithAPlainSearch) {
    std::mt19937 random(11);
    for (int run = 0; run < 3000; ++run) {
        m_file.bytes.clear();
        const auto length = random() % 60;
        for (unsigned i = 0; i < length; ++i)
            m_file.bytes += static_cast<char>('a' + random() % 2);
        QByteArray what;
        for (unsigned i = 0; i <= random() % 10; ++i)
            what += static_cast<char>('a' + random() % 2);
        const qint64 start = 1 + random() % 62;
        const bool goesOn = random() % 2 == 0;
        qint64 expected = -1;
        if (start <= m_file.length()) {
            expected = m_file.bytes.indexOf(what, start - 1) + 1;
            if (expected == 0 && goesOn)
                expected = m_file.bytes.indexOf(what) + 1;
            if (expected == 0)
                expected = -1;
        }
        EXPECT_EQ(down(sequence(what), start, goesOn), expected);
        EXPECT_EQ(down(text(QString::fromLatin1(what)), start, goesOn), expected);
        EXPECT_EQ(down(text(QString::fromLatin1(what).toUpper(), HexFindType::AnyCase), start, goesOn), expected);
    }
}

TEST_F(Searching, UpFindsTheLastMatchBeforeTheCursor) {
    m_file.bytes = "one two one two one two";
    EXPECT_EQ(up(text(u"two"_qs), 23), 21);
    EXPECT_EQ(up(text(u"two"_qs), 21), 13);
    EXPECT_EQ(up(text(u"two"_qs), 13), 5);
    EXPECT_EQ(up(text(u"two"_qs), 5), -1);
    EXPECT_EQ(up(text(u"two"_qs), 2, true), 21);
    EXPECT_EQ(up(text(u"two"_qs), 5, true), 5);
}

TEST_F(Searching, UpFromTheFirstTwoBytesGoesOnAtOnceOrFindsNothing) {
    m_file.bytes = "abcdefghijklmnop";
    for (const qint64 cursor : {1, 2}) {
        EXPECT_EQ(up(text(u"m"_qs), cursor, false), -1);
        EXPECT_EQ(up(text(u"m"_qs), cursor, true), 13);
        EXPECT_EQ(up(text(u"a"_qs), cursor, false), -1);
    }
    EXPECT_EQ(up(text(u"a"_qs), 3, false), 1);
}

TEST_F(Searching, UpTakesATextThatBeginsBeforeTheCursorButASequenceOneByteEarlier) {
    m_file.bytes = QByteArray(20, '.') + "abcd" + QByteArray(20, '.');
    EXPECT_EQ(up(text(u"abcd"_qs), 22), 21);
    EXPECT_EQ(up(sequence("abcd"), 22), -1);
    EXPECT_EQ(up(sequence("abcd"), 23), 21);
}

TEST_F(Searching, UpDoesNotSeeAMatchAcrossTheEndOfItsLastBlock) {
    m_file.bytes = QByteArray(44, '.');
    m_file.bytes.replace(1, 4, "abcd");
    EXPECT_EQ(up(sequence("abcd"), 44), -1);  // blocks from 35, 27, 19, 11, 3, and the first three bytes
    EXPECT_EQ(up(sequence("abcd"), 46), 2);
}

TEST_F(Searching, UpAfterGoingOnSeesOnlyPartOfEachStep) {
    // From byte 5 the last block is four bytes long, and so are all blocks from the end on, in steps of eight.
    const auto foundAt = [&](qsizetype index) {
        m_file.bytes = QByteArray(40, '.');
        m_file.bytes[index] = 'x';
        return up(sequence("x"), 5, true);
    };
    EXPECT_EQ(foundAt(32), 33);
    EXPECT_EQ(foundAt(34), 35);
    EXPECT_EQ(foundAt(35), -1);
    EXPECT_EQ(foundAt(39), -1);
    EXPECT_EQ(foundAt(23), 24);
    EXPECT_EQ(foundAt(27), -1);
    EXPECT_EQ(foundAt(7), 8);
}

TEST_F(Searching, NeverStandsStillWhateverTheNeedle) {
    m_file.bytes = QByteArray(100, 'a');
    for (qsizetype length = 1; length <= 101; ++length) {
        const QByteArray what(length, 'a');
        EXPECT_EQ(down(sequence(what), 1), length <= 100 ? 1 : -1);
        EXPECT_EQ(down(text(QString::fromLatin1(what)), 100, true), length <= 100 ? (length == 1 ? 100 : 1) : -1);
        EXPECT_EQ(down(text(u"b"_qs), 97, true), -1);
        EXPECT_EQ(up(sequence(what + 'b'), 50, true), -1);
        EXPECT_EQ(count(sequence(what)), 101 - length);
    }
}

TEST_F(Searching, CountsOverlappingMatchesOneByOne) {
    m_file.bytes = "\xAA\xAA\xAA";
    EXPECT_EQ(count(sequence("\xAA\xAA")), 2);
    EXPECT_EQ(count(text(u"\u00AA\u00AA"_qs)), 2);
}

TEST_F(Searching, MeetsATextThatEndsABlockTwice) {
    m_file.bytes = "......ab........";
    EXPECT_EQ(count(text(u"ab"_qs)), 2);
    EXPECT_EQ(count(sequence("ab")), 1);
    m_file.bytes = ".....ab.........";
    EXPECT_EQ(count(text(u"ab"_qs)), 1);
    m_file.bytes = "......ab";
    EXPECT_EQ(count(text(u"ab"_qs)), 1);
}

TEST_F(Searching, CountsAMatchOncePerBlockThatHoldsIt) {
    std::mt19937 random(3);
    for (int run = 0; run < 2000; ++run) {
        m_file.bytes.clear();
        for (unsigned i = 0; i < 1 + random() % 50; ++i)
            m_file.bytes += static_cast<char>('a' + random() % 2);
        QByteArray what;
        for (unsigned i = 0; i <= random() % 4; ++i)
            what += static_cast<char>('a' + random() % 2);
        for (const HexNeedle& needle : {sequence(what), text(QString::fromLatin1(what))}) {
            std::vector<qint64> expected;
            for (qint64 at = 0;; at += Block - needle.overlap()) {
                const QByteArray block = m_file.bytes.mid(at, Block);
                for (qsizetype k = block.indexOf(what); k >= 0; k = block.indexOf(what, k + 1))
                    expected.push_back(at + k + 1);
                if (m_file.length() - at <= Block)
                    break;
            }
            std::vector<qint64> found;
            HexSearch(m_file, Block).forEachMatch(needle, [&](FilePosition at) { found.push_back(at.number()); });
            EXPECT_EQ(found, expected);
            EXPECT_EQ(count(needle), static_cast<qint64>(expected.size()));
        }
    }
}

TEST_F(Searching, ReplacesInPlaceAndPastAShorterMatch) {
    m_file.bytes = "ab..ab..ab";
    EXPECT_EQ(HexSearch(m_file, 100).replaceAll(sequence("ab"), "xyz").matches, 3);
    EXPECT_EQ(m_file.bytes, "xyz.xyz.xy");
}

TEST_F(Searching, TakesLaterMatchesOfABlockFromItsOldBytes) {
    m_file.bytes = "abab....";
    EXPECT_EQ(HexSearch(m_file, Block).replaceAll(sequence("ab"), "xyz").matches, 2);
    EXPECT_EQ(m_file.bytes, "xyxyz...");
}

TEST_F(Searching, ReplacesNothingWhenNothingIsFound) {
    m_file.bytes = "abab";
    EXPECT_EQ(HexSearch(m_file, Block).replaceAll(sequence("x"), "y").matches, 0);
    EXPECT_EQ(m_file.bytes, "abab");
}

TEST_F(Searching, TakesUpperAndLowerCaseOfWindows1252Alike) {
    const std::pair<QString, QByteArray> same[] = {
        {u"HELLO"_qs, "hello"}, {u"hello"_qs, "HeLLo"}, {u"\u00C4"_qs, "\xE4"},
        {u"\u00E4"_qs, "\xC4"}, {u"\u0178"_qs, "\xFF"}, {u"\u00FF"_qs, "\x9F"},
        {u"\u0160"_qs, "\x9A"}, {u"\u0153"_qs, "\x8C"}, {u"\u017E"_qs, "\x8E"}};
    for (const auto& [needle, bytes] : same) {
        m_file.bytes = "--" + bytes;
        EXPECT_EQ(down(text(needle, HexFindType::AnyCase), 1), 3) << needle.toStdString();
        EXPECT_EQ(up(text(needle, HexFindType::AnyCase), 7 + bytes.size(), false) > 0, true);
    }
    m_file.bytes = "[{\xD7\xF7";
    for (const auto& needle : {u"{{"_qs, u"\u00F7\u00D7"_qs}) {
        EXPECT_EQ(down(text(needle, HexFindType::AnyCase), 1), -1);
    }
}

TEST_F(Searching, TakesEachByteForItsLowerCaseAndNoOther) {
    const auto lowerOf = [](int byte) {
        const int lower = Windows1252::byteOf(QChar::toLower(Windows1252::characterOf(static_cast<quint8>(byte))));
        return lower < 0 ? byte : lower;
    };
    for (int what = 0; what < 256; ++what) {
        const QString needle(QChar(Windows1252::characterOf(static_cast<quint8>(what))));
        for (int there = 0; there < 256; ++there) {
            // Long enough for the fast way, with a rest.
            m_file.bytes = QByteArray(70, what == '-' ? '+' : '-') + QByteArray(4, static_cast<char>(there));
            const bool isSame = lowerOf(what) == lowerOf(there);
            ASSERT_EQ(HexSearch(m_file)
                          .findDown(*HexNeedle::make(needle, HexFindType::AnyCase), FilePosition(1), false)
                          .has_value(),
                      isSame)
                << what << ' ' << there;
            m_file.bytes = QByteArray(64, static_cast<char>(there));
            ASSERT_EQ(HexSearch(m_file).count(*HexNeedle::make(needle, HexFindType::AnyCase)) > 0, isSame);
        }
    }
}

TEST_F(Searching, EndsWhereTheFileCannotBeRead) {
    m_file.bytes = "abab";
    m_file.fails = true;
    EXPECT_EQ(down(sequence("ab"), 1, true), -1);
    EXPECT_EQ(up(sequence("ab"), 4, true), -1);
    EXPECT_EQ(count(sequence("ab")), 0);
}

TEST_F(Searching, AnyCaseAgreesWithAPlainSearchOfLowerCaseInLongBlocks) {
    static constexpr quint8 Letters[] = {'a', 'A', 'b', 0xE4, 0xC4, 0xD7, 0xF7, 0x8A, 0x9A};
    const auto someBytes = [](std::mt19937& random, unsigned length) {
        QByteArray bytes;
        for (unsigned i = 0; i < length; ++i)
            bytes += static_cast<char>(Letters[random() % std::size(Letters)]);
        return bytes;
    };
    const auto decoded = [](const QByteArray& bytes) {
        QString text;
        for (const char byte : bytes)
            text += QChar(Windows1252::characterOf(static_cast<quint8>(byte)));
        return text;
    };
    std::mt19937 random(29);
    int hits = 0;
    for (int run = 0; run < 2000; ++run) {
        m_file.bytes = someBytes(random, 1 + random() % 400);
        const QByteArray what = someBytes(random, 1 + random() % 5);
        const qsizetype start = static_cast<qsizetype>(random() % static_cast<unsigned>(m_file.bytes.size()));
        const qsizetype index = decoded(m_file.bytes).toLower().indexOf(decoded(what).toLower(), start);
        hits += index >= 0 ? 1 : 0;
        const HexNeedle needle = text(decoded(what), HexFindType::AnyCase);
        EXPECT_EQ(numberOf(HexSearch(m_file).findDown(needle, FilePosition(start + 1), false)),
                  index < 0 ? -1 : index + 1);
    }
    EXPECT_GT(hits, 500);
    EXPECT_LT(hits, 1500);
}

TEST_F(Searching, ANeedleThatNearlyMatchesEverywhereIsStillFound) {
    m_file.bytes = QByteArray(20'000, 'A') + 'B' + QByteArray(100, 'a') + "end";
    const QString needle = QString(100, u'a') + u'b' + QString(100, u'A');
    EXPECT_EQ(numberOf(HexSearch(m_file).findDown(text(needle, HexFindType::AnyCase), FilePosition(1), false)), 19'901);
    EXPECT_EQ(numberOf(HexSearch(m_file).findDown(text(needle + u'b', HexFindType::AnyCase), FilePosition(1), false)),
              -1);
    EXPECT_EQ(HexSearch(m_file).count(text(needle, HexFindType::AnyCase)), 1);
}

TEST_F(Searching, CallsItsWatchWithHowFarItIs) {
    m_file.bytes = QByteArray(100, '.');
    EXPECT_EQ(watched(1000).count(sequence("a")), 0);
    EXPECT_GE(m_percents.size(), 10U);
    EXPECT_TRUE(std::is_sorted(m_percents.begin(), m_percents.end()));
    EXPECT_LE(m_percents.back(), 100);
    m_percents.clear();
    EXPECT_EQ(watched(1000).findUp(sequence("a"), FilePosition(100), false), std::nullopt);
    EXPECT_GE(m_percents.size(), 10U);
    EXPECT_TRUE(std::is_sorted(m_percents.begin(), m_percents.end()));
}

TEST_F(Searching, EndsWhenItsWatchSaysSoWithWhatItHas) {
    m_file.bytes = QByteArray(100, 'a') + 'b';
    EXPECT_EQ(watched(3).count(sequence("a")), 3 * Block);
    EXPECT_EQ(m_percents.size(), 3U);
    EXPECT_EQ(watched(4).findDown(sequence("b"), FilePosition(1), true), std::nullopt);
    EXPECT_EQ(m_percents.size(), 4U);
    EXPECT_EQ(watched(5).findUp(sequence("c"), FilePosition(100), true), std::nullopt);
    EXPECT_EQ(m_percents.size(), 5U);
    const HexSearch::Replaced replaced = watched(6).replaceAll(sequence("a"), "x");
    EXPECT_EQ(replaced.matches, Block);
    EXPECT_EQ(m_file.bytes, QByteArray(Block, 'x') + QByteArray(100 - Block, 'a') + 'b');
}

TEST_F(Searching, CallsItsWatchAmongTheMatchesOfOneBlock) {
    m_file.bytes = QByteArray(20'000, 'a');
    int calls = 0;
    const HexSearch search(m_file, HexSearch::BlockSize, [&calls](int) { return ++calls < 3; });
    EXPECT_EQ(search.count(sequence("aa")), 3 * 1024);
}

TEST_F(Searching, TouchesNothingOnceItsWatchHasEndedIt) {
    auto file = std::make_unique<MemoryBytes>(QByteArray(100, 'a'));
    HexSearch search(*file, Block, [&file](int) {
        file.reset();
        return false;
    });
    EXPECT_EQ(search.replaceAll(sequence("a"), "b").matches, Block);
}
