#include "hex/bytes/EditRecorder.h"
#include "hex/bytes/HexEdits.h"
#include "hex/bytes/HexReplay.h"
#include "hex/bytes/HexSearch.h"
#include "hex/bytes/MemoryBytes.h"
#include "hex/bytes/ObservedBytes.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <random>

namespace {

const FilePosition FirstPage(1);

QByteArray bytesOfLength(qsizetype length) {
    QByteArray bytes(length, '\0');
    for (qsizetype i = 0; i < length; ++i)
        bytes[i] = static_cast<char>(i % 256);
    return bytes;
}

/// Bytes with the edits of them, as a view has both.
struct Edited {
    explicit Edited(const QByteArray& content) : bytes(content) {}

    MemoryBytes bytes;
    ObservedBytes observed{bytes};
    HexEdits edits{bytes};
};

/// An edit of any kind at a random place, now and then one that fails.
class RandomEdits {
 public:
    RandomEdits(Edited& edited, unsigned seed) : m_edited(edited), m_random(seed) {}

    void make() {
        m_edited.bytes.fails = below(20) == 0;
        switch (below(10)) {
            case 0:
                replace();
                break;
            case 1:
                fill();
                break;
            case 2:
                replaceAll();
                break;
            case 3:
            case 4: {
                SystemError error;
                m_edited.edits.takeBack(error);
                break;
            }
            default:
                m_edited.edits.overwrite(page(), {below(HexPaging::PageRows + 1), below(HexPaging::BytesPerRow)},
                                         static_cast<quint8>(below(4)));
        }
        m_edited.bytes.fails = false;
    }

 private:
    int below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(m_random); }
    FilePosition place() { return FilePosition(1 + below(static_cast<int>(m_edited.bytes.length()))); }
    FilePosition page() { return FilePosition(1 + (place().number() - 1) / 16 * 16); }
    void replace() {
        m_edited.observed.write(place(), QByteArray(1 + below(40), static_cast<char>(below(4))).toStdString());
    }
    void replaceAll() {
        HexSearch search(m_edited.observed);
        search.replaceAll(*HexNeedle::make(u"02 03"_qs, HexFindType::Bytes), QByteArray("\x01\x01\x01", 3));
    }
    void fill() {
        const FilePosition first = place();
        const HexBlock block{first, std::max(first, place())};
        const auto byte = static_cast<quint8>(below(4));
        const HexBlock::Filled filled = block.fill(m_edited.observed.unobserved(), byte);
        m_edited.observed.reportFill(block, byte, filled.bytes, static_cast<bool>(filled.error));
    }

    Edited& m_edited;
    std::mt19937 m_random;
};

class Replay : public testing::Test {
 protected:
    Edited m_edited{bytesOfLength(700)};
    HexReplay m_replay{m_edited.edits, m_edited.bytes};
};

}  // namespace

TEST(AReplay, OfAnyEditsHasTheSameBytesMarksUndoLogAndFlag) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        const QByteArray content = bytesOfLength(1 + seed * 37 % 1500);
        Edited original(content);
        EditRecorder seen;
        original.edits.setObserver(&seen);
        original.observed.setObserver(&seen);
        RandomEdits edits(original, seed);
        for (int i = 0; i < 300; ++i)
            edits.make();
        Edited again(content);
        HexReplay replay(again.edits, again.bytes);
        seen.repeatIn(replay);
        ASSERT_FALSE(replay.error()) << seed;
        ASSERT_EQ(again.bytes.bytes, original.bytes.bytes) << seed;
        ASSERT_EQ(again.edits.state(), original.edits.state()) << seed;
        // And both go on alike.
        SystemError error;
        while (const auto entry = original.edits.takeBack(error)) {
            ASSERT_EQ(again.edits.takeBack(error), entry);
        }
        ASSERT_EQ(again.bytes.bytes, original.bytes.bytes) << seed;
    }
}

TEST_F(Replay, UndoesNothingBeyondItsLog) {
    m_replay.takeBack();
    EXPECT_FALSE(m_replay.error());
    m_replay.type(FirstPage, {0, 3}, 0x55);
    m_replay.takeBack();
    m_replay.takeBack();
    EXPECT_FALSE(m_replay.error());
    EXPECT_EQ(m_edited.bytes.bytes, bytesOfLength(700));
}

TEST_F(Replay, RefusesPlacesThatTheFileDoesNotHave) {
    using Try = std::function<void(HexReplay&)>;
    const FilePosition past(701);
    const std::vector<Try> tries{
        [](HexReplay& replay) {
            replay.type(FilePosition(2), {0, 0}, 1);
        },
        [](HexReplay& replay) {
            replay.type(FilePosition(0), {0, 0}, 1);
        },
        [](HexReplay& replay) {
            replay.type(FilePosition(-15), {0, 0}, 1);
        },
        [](HexReplay& replay) {
            replay.type(FirstPage, {-1, 0}, 1);
        },
        [](HexReplay& replay) {
            replay.type(FirstPage, {0, 16}, 1);
        },
        [](HexReplay& replay) {
            replay.type(FirstPage, {21, 0}, 1);
        },
        [](HexReplay& replay) {
            replay.type(FilePosition(689), {0, 12}, 1);
        },
        [](HexReplay& replay) {
            replay.type(FilePosition(Q_INT64_C(0x7FFFFFFFFFFFFFF1)), {20, 15}, 1);
        },
        [=](HexReplay& replay) { replay.write(past, "x"); },
        [](HexReplay& replay) { replay.write(FilePosition(0), "x"); },
        [=](HexReplay& replay) {
            replay.fill({FirstPage, past}, 1);
        },
        [](HexReplay& replay) {
            replay.fill({FilePosition(0), FirstPage}, 1);
        },
        [](HexReplay& replay) {
            replay.fill({FilePosition(3), FilePosition(2)}, 1);
        },
    };
    for (std::size_t i = 0; i < tries.size(); ++i) {
        HexReplay replay(m_edited.edits, m_edited.bytes);
        tries[i](replay);
        EXPECT_EQ(replay.error().number, EINVAL) << i;
        replay.type(FirstPage, {0, 0}, 9);
        EXPECT_EQ(m_edited.bytes.bytes, bytesOfLength(700)) << i;
        EXPECT_FALSE(m_edited.edits.modified()) << i;
    }
}

TEST_F(Replay, EndsWithTheFirstErrorOfTheSystem) {
    m_edited.bytes.fails = true;
    m_replay.write(FirstPage, "x");
    EXPECT_EQ(m_replay.error().number, EIO);
    m_edited.bytes.fails = false;
    m_replay.write(FirstPage, "x");
    EXPECT_EQ(m_edited.bytes.bytes, bytesOfLength(700));
}

TEST(AReplay, TouchesNothingOnceItsWatchHasEndedIt) {
    Edited edited(bytesOfLength(700));
    int calls = 0;
    HexReplay replay(edited.edits, edited.bytes, [&] { return ++calls < 3; });
    for (int i = 0; i < 10'000; ++i)
        replay.type(FirstPage, {0, 0}, static_cast<quint8>(i));
    const QByteArray then = edited.bytes.bytes;
    EXPECT_EQ(replay.error().number, ECANCELED);
    EXPECT_EQ(calls, 3);
    replay.fill({FirstPage, FilePosition(700)}, 'x');
    EXPECT_EQ(edited.bytes.bytes, then);
    EXPECT_NE(then.at(0), static_cast<char>(9'999 % 256));
}

TEST(AReplay, OfALongFillIsWatched) {
    Edited edited(QByteArray(1'300'000, '.'));
    HexReplay replay(edited.edits, edited.bytes, [] { return false; });
    replay.fill({FirstPage, FilePosition(1'300'000)}, 'x');
    EXPECT_EQ(replay.error().number, ECANCELED);
    EXPECT_EQ(edited.bytes.bytes.count('x'), HexBlock::BytesAtOnce);
}

TEST(ObservedBytes, ReportOnlyWhatIsWithinTheFile) {
    Edited edited(bytesOfLength(10));
    EditRecorder seen;
    edited.observed.setObserver(&seen);
    EXPECT_FALSE(edited.observed.write(FilePosition(9), "abc"));
    EXPECT_FALSE(edited.observed.write(FilePosition(11), "abc"));
    EXPECT_FALSE(edited.observed.write(FilePosition(1), ""));
    EXPECT_EQ(seen.names, std::vector<std::string>({"wrote"}));
    Edited again(bytesOfLength(10));
    HexReplay replay(again.edits, again.bytes);
    seen.repeatIn(replay);
    EXPECT_FALSE(replay.error());
    EXPECT_EQ(again.bytes.bytes, edited.bytes.bytes);
}

namespace {

/// Writes the first bytes of what it should, and fails.
class ShortBytes : public MemoryBytes {
 public:
    using MemoryBytes::MemoryBytes;

    SystemError write(FilePosition from, std::string_view part) override {
        MemoryBytes::write(from, part.substr(0, 3));
        return SystemError::fromErrno(ENOSPC);
    }
};

}  // namespace

TEST(ObservedBytes, ReportWhatAFailedWriteLeftBehind) {
    ShortBytes bytes(bytesOfLength(10));
    ObservedBytes observed(bytes);
    EditRecorder seen;
    observed.setObserver(&seen);
    EXPECT_EQ(observed.write(FilePosition(2), "abcdef").number, ENOSPC);
    const HexBlock block{FilePosition(6), FilePosition(10)};
    const HexBlock::Filled filled = block.fill(observed.unobserved(), 'x');
    EXPECT_EQ(filled.error.number, ENOSPC);
    EXPECT_EQ(filled.bytes, 0);
    observed.reportFill(block, 'x', filled.bytes, true);
    Edited again(bytesOfLength(10));
    HexReplay replay(again.edits, again.bytes);
    seen.repeatIn(replay);
    EXPECT_FALSE(replay.error());
    EXPECT_EQ(bytes.bytes, QByteArray("\0abc\4xxx\x8\x9", 10));
    EXPECT_EQ(again.bytes.bytes, bytes.bytes);
}
