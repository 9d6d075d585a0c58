#include "hex/bytes/BytesBefore.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <random>

namespace {

/// A file in memory whose bytes are overwritten.
class OverwrittenBytes : public testing::Test {
 protected:
    BytesBefore::Read reading() {
        return [this](qint64 at, char* buffer, qint64 count) {
            const QByteArray part = m_now.mid(at, count);
            std::copy(part.cbegin(), part.cend(), buffer);
            return static_cast<qint64>(part.size());
        };
    }
    void write(BytesBefore& before, qint64 at, const QByteArray& bytes) {
        EXPECT_FALSE(before.keep(at, bytes.size(), reading()));
        m_now.replace(at, bytes.size(), bytes);
    }
    QByteArray readBefore(const BytesBefore& before, qint64 at, qint64 count) const {
        QByteArray bytes = m_now.mid(at, count);
        before.putInto(at, bytes.data(), bytes.size());
        return bytes;
    }

    QByteArray m_now = "abcdefghij";
};

}  // namespace

TEST_F(OverwrittenBytes, AreAsTheyWereWhateverIsWritten) {
    BytesBefore before;
    write(before, 2, "XY");
    write(before, 6, "Z");
    write(before, 1, "1234567");
    write(before, 2, "--");
    EXPECT_EQ(m_now, "a1--4567ij");
    EXPECT_EQ(readBefore(before, 0, 10), "abcdefghij");
    EXPECT_EQ(readBefore(before, 3, 4), "defg");
    EXPECT_EQ(readBefore(before, 9, 1), "j");
}

TEST_F(OverwrittenBytes, OfRandomWritesAreAsTheyWere) {
    for (unsigned seed = 1; seed <= 50; ++seed) {
        std::mt19937 random(seed);
        const auto below = [&](int end) { return std::uniform_int_distribution<int>(0, end - 1)(random); };
        m_now.clear();
        for (int i = 0; i < 200; ++i)
            m_now += static_cast<char>(i);
        const QByteArray first = m_now;
        BytesBefore before;
        for (int i = 0; i < 60; ++i) {
            const int at = below(200);
            write(before, at, QByteArray(std::min(200 - at, below(30)), static_cast<char>('A' + i)));
            const int from = below(200);
            const int count = below(200 - from + 1);
            ASSERT_EQ(readBefore(before, from, count), first.mid(from, count)) << seed;
        }
    }
}

TEST_F(OverwrittenBytes, ThatTakeTooMuchMemoryAreRefused) {
    BytesBefore before(300);
    write(before, 0, "1");
    write(before, 5, "2");
    EXPECT_EQ(before.keep(8, 1, reading()).number, EBUSY);
    write(before, 5, "3");  // is kept already
    EXPECT_EQ(readBefore(before, 0, 10), "abcdefghij");
}

TEST_F(OverwrittenBytes, ThatCannotBeReadAreRefused) {
    BytesBefore before;
    EXPECT_EQ(before.keep(8, 5, reading()).number, EIO);
    EXPECT_EQ(readBefore(before, 0, 10), "abcdefghij");
}
