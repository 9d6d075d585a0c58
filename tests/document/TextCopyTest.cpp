// A text that is edited while it is copied: what the journal gets is the text at the end.

#include "document/TextCopy.h"
#include "recovery/journals/Journal.h"
#include "recovery/journals/JournalEntry.h"
#include "recovery/journals/JournalStream.h"
#include "recovery/journals/Payload.h"
#include "recovery/journals/ReplayedText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>

namespace {

/// A text that reports its edits to its copy.
class CopiedText : public testing::Test {
 protected:
    void insert(qint64 at, const std::string& bytes) {
        m_text.insert(static_cast<std::size_t>(at), bytes);
        m_copy.inserted(at, bytes);
    }
    void remove(qint64 at, qint64 length) {
        m_copy.removed(at, length);
        m_text.erase(static_cast<std::size_t>(at), static_cast<std::size_t>(length));
    }
    void copy(qint64 length) {
        m_copy.append(m_text.substr(static_cast<std::size_t>(m_copy.length()), static_cast<std::size_t>(length)));
    }
    qint64 length() const { return static_cast<qint64>(m_text.size()); }
    bool isCopied() const { return m_copy.length() == length(); }

    /// What a journal has that the copy is passed to. An entry that does not fit would be left out with those behind
    /// it.
    std::string passed() {
        const auto stream = std::make_shared<JournalStream>([] {}, 0);
        Journal journal(stream);
        m_copy.passTo(journal);
        std::string payload;
        for (const std::string& part : stream->take().parts)
            payload += part;
        PayloadReader reader(payload);
        ReplayedText replayed;
        while (!reader.atEnd()) {
            const std::optional<JournalEntry> entry = readEntry(reader);
            if (!entry || !replayed.apply(*entry))
                return "damaged";
        }
        std::string text;
        for (const std::string_view piece : replayed.pieces())
            text += piece;
        return text;
    }

    std::string m_text;
    TextCopy m_copy;
};

TEST_F(CopiedText, ThatIsEmptyIsPassedAsEmpty) {
    copy(0);
    EXPECT_EQ(passed(), "");
}

TEST_F(CopiedText, OfOnePartIsPassedAsItIs) {
    m_text = "one two";
    copy(7);
    EXPECT_EQ(passed(), "one two");
}

TEST_F(CopiedText, HasEditsBeforeAndBehindTheCopiedBeginning) {
    m_text = "one two three";
    copy(4);
    insert(1, "<");
    insert(10, ">");
    EXPECT_EQ(m_copy.length(), 5);
    copy(100);
    ASSERT_TRUE(isCopied());
    EXPECT_EQ(passed(), "o<ne two t>hree");
}

TEST_F(CopiedText, HasAnInsertionAtTheEndOfTheCopiedBeginningOnce) {
    m_text = "one two";
    copy(3);
    insert(3, " and");
    EXPECT_EQ(m_copy.length(), 3);
    copy(100);
    EXPECT_EQ(passed(), "one and two");
}

TEST_F(CopiedText, LosesWhatIsRemovedAcrossTheEndOfTheCopiedBeginning) {
    m_text = "one two three";
    copy(6);
    remove(4, 4);
    EXPECT_EQ(m_copy.length(), 4);
    copy(100);
    EXPECT_EQ(passed(), "one three");
}

TEST_F(CopiedText, MayBeEmptiedMeanwhile) {
    m_text = "one two three";
    copy(6);
    remove(0, 13);
    EXPECT_EQ(m_copy.length(), 0);
    insert(0, "new");
    copy(100);
    EXPECT_EQ(passed(), "new");
}

TEST_F(CopiedText, IsRightAfterAnyEdits) {
    std::mt19937 random(1);
    const auto below = [&random](qint64 limit) { return static_cast<qint64>(random() % static_cast<unsigned>(limit)); };
    for (int round = 0; round < 2'000; ++round) {
        m_copy = {};
        m_text.clear();
        for (qint64 i = below(200); i > 0; --i)
            m_text += static_cast<char>('a' + below(26));
        do {
            for (qint64 i = below(4); i > 0; --i) {
                const qint64 at = below(length() + 1);
                if (below(2) == 0) {
                    insert(at,
                           std::string(static_cast<std::size_t>(1 + below(20)), static_cast<char>('A' + below(26))));
                } else if (at < length()) {
                    remove(at, 1 + below(std::min<qint64>(40, length() - at)));
                }
                ASSERT_LE(m_copy.length(), length());
            }
            copy(1 + below(30));
        } while (!isCopied());
        ASSERT_EQ(passed(), m_text) << round;
    }
}

}  // namespace
