#include "hex/bytes/HexEdits.h"
#include "hex/bytes/MemoryBytes.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

/// Two pages of bytes that are their own offsets, and the edits of them.
class Edits : public testing::Test {
 protected:
    static QByteArray countedBytes() {
        QByteArray bytes(2 * HexPaging::PageBytes, '\0');
        for (qsizetype i = 0; i < bytes.size(); ++i)
            bytes[i] = static_cast<char>(i % 256);
        return bytes;
    }
    int byteAt(qsizetype offset) const { return static_cast<quint8>(m_bytes.bytes.at(offset)); }
    bool isChanged(qint64 offset) const {
        return m_edits.isChanged(Offset(offset).position(), static_cast<quint8>(byteAt(offset)));
    }

    MemoryBytes m_bytes{countedBytes()};
    HexEdits m_edits{m_bytes};
    SystemError m_error;
};

const FilePosition FirstPage(1);
const FilePosition SecondPage(1 + HexPaging::PageBytes);

}  // namespace

TEST_F(Edits, WriteTheByteOfACellOfAPage) {
    EXPECT_FALSE(m_edits.overwrite(FirstPage, {1, 2}, 0xEE));
    EXPECT_FALSE(m_edits.overwrite(SecondPage, {0, 1}, 0xDD));
    EXPECT_EQ(byteAt(18), 0xEE);
    EXPECT_EQ(byteAt(HexPaging::PageBytes + 1), 0xDD);
    QByteArray expected = countedBytes();
    expected[18] = static_cast<char>(0xEE);
    expected[HexPaging::PageBytes + 1] = static_cast<char>(0xDD);
    EXPECT_EQ(m_bytes.bytes, expected);
}

TEST_F(Edits, CountAsModifiedEvenWithTheSameByte) {
    EXPECT_FALSE(m_edits.modified());
    EXPECT_FALSE(m_edits.overwrite(FirstPage, {0, 5}, 5));
    EXPECT_TRUE(m_edits.modified());
    EXPECT_FALSE(isChanged(5));
}

TEST_F(Edits, AreMarkedUntilTheByteIsAsItWas) {
    EXPECT_FALSE(m_edits.overwrite(FirstPage, {0, 5}, 7));
    EXPECT_TRUE(isChanged(5));
    EXPECT_FALSE(isChanged(6));
    EXPECT_FALSE(m_edits.overwrite(FirstPage, {0, 5}, 5));
    EXPECT_FALSE(isChanged(5));
}

TEST_F(Edits, AreTakenBackNewestFirst) {
    EXPECT_FALSE(m_edits.overwrite(FirstPage, {0, 5}, 7));
    EXPECT_FALSE(m_edits.overwrite(SecondPage, {1, 0}, 9));
    const HexUndoEntry newest{SecondPage, {1, 0}, static_cast<quint8>((HexPaging::PageBytes + 16) % 256)};
    EXPECT_EQ(m_edits.takeBack(m_error), newest);
    EXPECT_EQ(m_edits.takeBack(m_error), (HexUndoEntry{FirstPage, {0, 5}, 5}));
    EXPECT_EQ(m_edits.takeBack(m_error), std::nullopt);
    EXPECT_FALSE(m_error);
    EXPECT_EQ(m_bytes.bytes, countedBytes());
    EXPECT_FALSE(isChanged(5));
}

TEST_F(Edits, StayModifiedWhenTakenBack) {
    EXPECT_FALSE(m_edits.overwrite(FirstPage, {0, 5}, 7));
    EXPECT_TRUE(m_edits.takeBack(m_error));
    EXPECT_TRUE(m_edits.modified());
}

TEST_F(Edits, LeaveNothingBehindWhenTheByteCannotBeWritten) {
    m_bytes.fails = true;
    EXPECT_EQ(m_edits.overwrite(FirstPage, {0, 5}, 7).number, EIO);
    m_bytes.fails = false;
    EXPECT_FALSE(m_edits.modified());
    EXPECT_EQ(m_edits.takeBack(m_error), std::nullopt);
    EXPECT_EQ(m_bytes.bytes, countedBytes());
}

TEST_F(Edits, BehindTheEndAreAnError) {
    EXPECT_EQ(m_edits.overwrite(SecondPage, {HexPaging::PageRows, 0}, 7).number, EIO);
    EXPECT_FALSE(m_edits.modified());
    EXPECT_EQ(m_bytes.bytes, countedBytes());
}

TEST_F(Edits, AreKeptWhenTakingBackFails) {
    EXPECT_FALSE(m_edits.overwrite(FirstPage, {0, 5}, 7));
    m_bytes.fails = true;
    EXPECT_EQ(m_edits.takeBack(m_error), std::nullopt);
    EXPECT_EQ(m_error.number, EIO);
    m_bytes.fails = false;
    EXPECT_TRUE(isChanged(5));
    EXPECT_EQ(m_edits.takeBack(m_error), (HexUndoEntry{FirstPage, {0, 5}, 5}));
    EXPECT_FALSE(m_error);
    EXPECT_EQ(byteAt(5), 5);
}

TEST_F(Edits, AreForgottenWithTheFile) {
    EXPECT_FALSE(m_edits.overwrite(FirstPage, {0, 5}, 7));
    m_edits.clear();
    EXPECT_FALSE(m_edits.modified());
    EXPECT_FALSE(isChanged(5));
    EXPECT_EQ(m_edits.takeBack(m_error), std::nullopt);
    EXPECT_EQ(byteAt(5), 7);
}

TEST_F(Edits, LoseTheirMarksByASaveButNotTheirUndo) {
    EXPECT_FALSE(m_edits.overwrite(FirstPage, {0, 5}, 7));
    m_edits.beginSave();
    m_edits.endSave(true);
    EXPECT_FALSE(m_edits.modified());
    EXPECT_FALSE(isChanged(5));
    EXPECT_TRUE(m_edits.takeBack(m_error));
    EXPECT_EQ(byteAt(5), 5);
}

TEST_F(Edits, DuringASaveAreModifiedAfterIt) {
    EXPECT_FALSE(m_edits.overwrite(FirstPage, {0, 5}, 7));
    m_edits.beginSave();
    EXPECT_FALSE(m_edits.modified());
    EXPECT_FALSE(m_edits.overwrite(FirstPage, {0, 6}, 7));
    m_edits.endSave(true);
    EXPECT_TRUE(m_edits.modified());
    EXPECT_TRUE(isChanged(5));
    EXPECT_TRUE(isChanged(6));
}

TEST_F(Edits, StayModifiedAfterASaveThatFailed) {
    EXPECT_FALSE(m_edits.overwrite(FirstPage, {0, 5}, 7));
    m_edits.beginSave();
    m_edits.endSave(false);
    EXPECT_TRUE(m_edits.modified());
    EXPECT_TRUE(isChanged(5));
    m_edits.clear();
    m_edits.beginSave();
    m_edits.endSave(false);
    EXPECT_FALSE(m_edits.modified());
}
