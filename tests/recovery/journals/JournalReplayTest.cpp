// Random edits of texts with each kind of line end, in every encoding, cut short again and again: what comes back is
// what a plain model of the text holds.

#include "recovery/journals/JournalFixture.h"
#include "text/codec/TextCodec.h"

#include <algorithm>
#include <ostream>
#include <random>

namespace {

std::string encoded(const std::string& text, TextFormat format) {
    const std::string_view piece = text;
    const EncodedText result = encodeText({&piece, 1}, format);
    EXPECT_FALSE(result.failure);
    std::string bytes;
    for (const std::string_view each : result.pieces)
        bytes += each;
    return bytes;
}

enum class LineEnds { Lf, CrLf, Cr, Mixed };

/// A document that is edited at random, and what it holds.
class RandomText {
 public:
    RandomText(unsigned seed, LineEnds lineEnds) : m_random(seed), m_lineEnds(lineEnds) {
        for (int i = number(200); i > 0; --i)
            m_text += word();
    }

    int number(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }
    const std::string& text() const { return m_text; }

    void insert(Journal& journal, std::size_t at, const std::string& bytes) {
        journal.insert(static_cast<qint64>(at), bytes);
        m_text.insert(at, bytes);
    }
    void edit(Journal& journal) {
        const auto at = static_cast<std::size_t>(number(static_cast<int>(m_text.size()) + 1));
        switch (number(8)) {
            case 0:
            case 1:
                return insert(journal, at, word());
            case 2:
                return type(journal, at);
            case 3:
                return remove(journal, at, static_cast<std::size_t>(number(30)));
            case 4:
                return backspace(journal, at);
            case 5:
                return insert(journal, at, lineEnd());
            case 6:
                if (number(20) == 0)
                    journal.setWhole({m_text});
                return;
            default:
                return insert(journal, at, std::string(static_cast<std::size_t>(number(300)), 'x'));
        }
    }

 private:
    std::string word() {
        static const std::vector<std::string> Common = {"word ", "a", "\xc3\xa4\xc3\xb6", " ", "longer than that ",
                                                        "=="};
        if (number(6) == 0)
            return lineEnd();
        return Common[static_cast<std::size_t>(number(static_cast<int>(Common.size())))];
    }
    std::string lineEnd() {
        static const std::vector<std::string> Ends = {"\n", "\r\n", "\r"};
        const bool isMixed = m_lineEnds == LineEnds::Mixed;
        return Ends[static_cast<std::size_t>(isMixed ? number(3) : static_cast<int>(m_lineEnds))];
    }
    void type(Journal& journal, std::size_t at) {
        for (int i = number(10); i > 0; --i)
            insert(journal, at++, "k");
    }
    void remove(Journal& journal, std::size_t at, std::size_t length) {
        length = std::min(length, m_text.size() - at);
        journal.remove(static_cast<qint64>(at), static_cast<qint64>(length));
        m_text.erase(at, length);
    }
    void backspace(Journal& journal, std::size_t at) {
        for (int i = number(10); i > 0 && at > 0; --i)
            remove(journal, --at, 1);
    }

    std::mt19937 m_random;
    LineEnds m_lineEnds;
    std::string m_text;
};

struct Case {
    LineEnds lineEnds;
    TextFormat format;
};

/// The tests are named by it.
void PrintTo(const Case& each, std::ostream* out) {
    static constexpr const char* Ends[] = {"Lf", "CrLf", "Cr", "Mixed"};
    static constexpr const char* Encodings[] = {"Utf8", "Utf16Le", "Utf16Be", "Windows1252"};
    *out << Ends[static_cast<int>(each.lineEnds)] << Encodings[static_cast<int>(each.format.encoding)];
}

/// What is not flushed is there all the same as long as the system lives.
class QuickDisk : public FileSystemCalls {
 public:
    int fsync(int /*handle*/) override { return 0; }
};

class JournalReplay : public JournalFixture, public testing::WithParamInterface<Case> {
 protected:
    /// Edits, sometimes with a flush between them, then the end of the process.
    static void edit(RandomText& text, Journals& journals, Journal& journal) {
        text.insert(journal, 0, "first");
        for (int i = text.number(60); i >= 0; --i) {
            text.edit(journal);
            const bool isWritten = text.number(15) != 0 || journals.flush(Long);
            EXPECT_TRUE(isWritten);
        }
    }
};

TEST_P(JournalReplay, AnyEditsComeBackHoweverOftenTheyAreCutShort) {
    QuickDisk disk;
    JournalLimits limits = patient();
    limits.compacted = 3'000;
    for (unsigned seed = 0; seed < 25; ++seed) {
        RandomText text(seed, GetParam().lineEnds);
        const QString path = file(QByteArray::fromStdString(encoded(text.text(), GetParam().format)));
        JournalBase base = baseOf(path);
        base.format = GetParam().format;
        base.textLength = static_cast<qint64>(text.text().size());
        {
            const auto journals = makeJournals(disk, limits);
            edit(text, *journals, *journals->begin(base));
        }
        for (int life = 0; life < 4; ++life) {
            const auto journals = makeJournals(disk, limits);
            auto found = only(journals->takeAbandoned());
            ASSERT_NE(found, nullptr) << seed;
            const Outcome outcome = found->restore();
            if (outcome == Outcome::SameAsFile) {
                ASSERT_EQ(encoded(text.text(), base.format), bytesOf(path).toStdString());
                EXPECT_TRUE(found->discard());
                break;
            }
            ASSERT_EQ(outcome, Outcome::Restored) << seed;
            ASSERT_EQ(bytesOf(found->textPath()).toStdString(), text.text()) << seed;
            const auto journal = found->continueAs();
            EXPECT_FALSE(journal->needsWhole());
            found.reset();
            edit(text, *journals, *journal);
            if (life == 3)
                journal->discard();
        }
        ASSERT_EQ(names(), QStringList()) << seed;
    }
}

std::vector<Case> allCases() {
    std::vector<Case> cases;
    for (const LineEnds lineEnds : {LineEnds::Lf, LineEnds::CrLf, LineEnds::Cr, LineEnds::Mixed}) {
        for (const TextEncoding encoding : {TextEncoding::Utf8, TextEncoding::Utf16LittleEndian,
                                            TextEncoding::Utf16BigEndian, TextEncoding::Windows1252})
            cases.push_back({lineEnds, {encoding, encoding != TextEncoding::Windows1252 && lineEnds != LineEnds::Lf}});
    }
    return cases;
}

INSTANTIATE_TEST_SUITE_P(OfEachForm, JournalReplay, testing::ValuesIn(allCases()), testing::PrintToStringParamName());

}  // namespace
