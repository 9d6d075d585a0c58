#include "shell/start/HandOverMessage.h"

#include <gtest/gtest.h>

#include <utility>

using State = HandOverReader::State;

namespace {

QByteArray bytes(std::initializer_list<int> values) {
    QByteArray all;
    for (const int value : values)
        all.append(static_cast<char>(value));
    return all;
}

/// A reader that was given as many of the bytes as it takes.
HandOverReader readerOf(const QByteArray& message) {
    HandOverReader reader;
    qsizetype used = 0;
    while (reader.missing() > 0 && used < message.size()) {
        const QByteArray next = message.mid(used, reader.missing());
        reader.bytes().append(next);
        used += next.size();
    }
    return reader;
}

State stateOf(const QByteArray& message) {
    return readerOf(message).state();
}

const QByteArray header = bytes({3, 0, 0, 0, 3, 0, 0, 0});

}  // namespace

TEST(HandOverMessage, IsNumberLengthPathAndNul) {
    EXPECT_EQ(HandOverMessage::of(QString::fromUtf8("/ü")), bytes({3, 0, 0, 0, 4, 0, 0, 0, '/', 0xC3, 0xBC, 0}));
}

TEST(HandOverMessage, TheLengthTakesFourBytes) {
    const QByteArray message = HandOverMessage::of(u'/' + QString(0x0203, u'x'));
    EXPECT_EQ(message.left(8), bytes({3, 0, 0, 0, 0x05, 0x02, 0, 0}));
    EXPECT_EQ(message.size(), 8 + 0x0205);
}

TEST(HandOverMessage, OfWhatIsNoPathThereIsNone) {
    EXPECT_TRUE(HandOverMessage::of(QString()).isEmpty());
    EXPECT_TRUE(HandOverMessage::of(u"/a"_qs + QChar(0xDCFF)).isEmpty());
    EXPECT_TRUE(HandOverMessage::of(u"/a"_qs + QChar(0)).isEmpty());
}

TEST(HandOverMessage, TheLongestPathIsPassedAndALongerOneIsNot) {
    const QString longest(HandOverMessage::LongestPath, u'x');
    const HandOverReader reader = readerOf(HandOverMessage::of(longest));
    EXPECT_EQ(reader.state(), State::Complete);
    EXPECT_EQ(reader.path(), longest);
    EXPECT_TRUE(HandOverMessage::of(longest + u'x').isEmpty());
}

TEST(HandOverReader, ReadsWhatWasWritten) {
    for (const char* path : {"/a", "/with blank.txt", "/\xE6\xBC\xA2/\xF0\x9F\x98\x80", "/a\tb", "/a\nb", "relative",
                             "/\xEF\xBB\xBFmark"}) {
        const HandOverReader reader = readerOf(HandOverMessage::of(QString::fromUtf8(path)));
        EXPECT_EQ(reader.state(), State::Complete) << path;
        EXPECT_EQ(reader.path().toUtf8(), path);
    }
}

TEST(HandOverReader, ByteByByteIsIncompleteUntilTheLast) {
    const QByteArray message = HandOverMessage::of(u"/a"_qs);
    for (qsizetype size = 0; size < message.size(); ++size) {
        EXPECT_EQ(stateOf(message.left(size)), State::Incomplete) << size;
    }
    EXPECT_EQ(stateOf(message), State::Complete);
}

TEST(HandOverReader, NeverTakesMoreThanTheMessage) {
    HandOverReader reader;
    EXPECT_EQ(reader.missing(), 8);
    reader.bytes().append(header);
    EXPECT_EQ(reader.missing(), 3);
    reader.bytes().append("/a");
    EXPECT_EQ(reader.missing(), 1);
    reader.bytes().append('\0');
    EXPECT_EQ(reader.missing(), 0);
}

TEST(HandOverReader, AnotherNumberIsNoMessage) {
    for (const int number : {0, 1, 2, 4, 255}) {
        EXPECT_EQ(stateOf(bytes({number, 0, 0, 0, 3, 0, 0, 0, '/', 'a', 0})), State::Malformed) << number;
    }
    const QByteArray rest = bytes({3, 0, 0, 0, '/', 'a', 0});
    for (const auto& other : {bytes({0, 0, 0, 3}), bytes({3, 1, 0, 0}), bytes({3, 0, 0, 128})}) {
        EXPECT_EQ(stateOf(other + rest), State::Malformed);
    }
}

TEST(HandOverReader, AnImpossibleLengthIsMalformedBeforeAnythingFollows) {
    for (const auto& length : {bytes({0, 0, 0, 0}), bytes({1, 0, 0, 0}), bytes({1, 0, 1, 0}), bytes({0, 0, 0, 128}),
                               bytes({255, 255, 255, 255})}) {
        const HandOverReader reader = readerOf(bytes({3, 0, 0, 0}) + length);
        EXPECT_EQ(reader.state(), State::Malformed);
        EXPECT_EQ(reader.missing(), 0);
    }
}

TEST(HandOverReader, ThePathEndsInItsOnlyNul) {
    EXPECT_EQ(stateOf(header + bytes({'/', 'a', 'b'})), State::Malformed);
    EXPECT_EQ(stateOf(header + bytes({'/', 0, 0})), State::Malformed);
    EXPECT_EQ(stateOf(header + bytes({0, 'a', 0})), State::Malformed);
}

TEST(HandOverReader, BytesThatAreNoUtf8AreMalformed) {
    EXPECT_EQ(stateOf(header + bytes({'/', 0xFF, 0})), State::Malformed);
    EXPECT_EQ(stateOf(header + bytes({0xC0, 0xAF, 0})), State::Malformed);
    EXPECT_EQ(stateOf(bytes({3, 0, 0, 0, 4, 0, 0, 0, 0xED, 0xA0, 0x80, 0})), State::Malformed);
}
