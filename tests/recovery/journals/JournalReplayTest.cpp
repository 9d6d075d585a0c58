// Random edits of texts with joints of every kind, in every encoding, cut short again and again: what comes back is
// what a plain model of the text holds.

#include "recovery/journals/JournalFixture.h"
#include "text/codec/TextCodec.h"

#include <algorithm>
#include <ostream>
#include <random>

namespace {

/// What a save would write, in UTF-8.
std::string withoutJoints(const std::string& held, JointKind kind) {
    std::string plain;
    for (std::size_t at = 0; at < held.size(); ++at) {
        const bool isBeforeLf = at + 1 < held.size() && held[at + 1] == '\n';
        const bool isJoint = (kind == JointKind::AnyCr && held[at] == '\r') ||
                             (kind == JointKind::LoneCr && held[at] == '\r' && !isBeforeLf) ||
                             (kind == JointKind::AnyLf && held[at] == '\n');
        if (!isJoint)
            plain += held[at];
    }
    return plain;
}

std::string encoded(const std::string& text, TextFormat format) {
    const std::string_view piece = text;
    const EncodedText result = encodeText({&piece, 1}, format);
    EXPECT_FALSE(result.failure);
    std::string bytes;
    for (const std::string_view each : result.pieces)
        bytes += each;
    return bytes;
}

/// A document that is edited at random, and what it holds.
class RandomText {
 public:
    RandomText(unsigned seed, JointKind kind) : m_random(seed), m_kind(kind) {
        for (int i = number(200); i > 0; --i)
            m_held += word();
    }

    int number(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }
    const std::string& held() const { return m_held; }
    std::string plain() const { return withoutJoints(m_held, m_kind); }
    JointKind kind() const { return m_kind; }

    /// Joints at random places of the plain text, as they stand in the held text.
    std::vector<qint64> addJoints() {
        m_held = plain();
        std::vector<qint64> joints;
        if (m_kind == JointKind::None)
            return joints;
        const char joint = jointByte(m_kind);
        for (std::size_t at = 0; at < m_held.size(); ++at) {
            // A joint before LF would be a line end, and one inside CR LF another.
            const bool isFit = m_held[at] != '\n' && m_held[at] != '\r' && (at == 0 || m_held[at - 1] != '\r');
            if (!isFit || number(20) > 0)
                continue;
            m_held.insert(at, 1, joint);
            joints.push_back(static_cast<qint64>(at));
            ++at;
        }
        return joints;
    }

    void insert(Journal& journal, std::size_t at, const std::string& bytes) {
        journal.insert(static_cast<qint64>(at), bytes);
        m_held.insert(at, bytes);
    }
    void edit(Journal& journal) {
        const auto at = static_cast<std::size_t>(number(static_cast<int>(m_held.size()) + 1));
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
                if (m_kind != JointKind::None)
                    return insert(journal, at, std::string(1, jointByte(m_kind)));
                return;
            case 6:
                if (number(20) == 0)
                    journal.setWhole(m_held, m_kind);
                return;
            default:
                return insert(journal, at, std::string(static_cast<std::size_t>(number(300)), 'x'));
        }
    }

 private:
    std::string word() {
        static const std::vector<std::string> Common = {"word ", "a", "\xc3\xa4\xc3\xb6", " ", "longer than that ",
                                                        "=="};
        static const std::vector<std::string> LineEnds = {"\n", "\n", "\r\n", "\r", "\n"};
        if (number(6) == 0)
            return LineEnds[static_cast<std::size_t>(m_kind)];
        return Common[static_cast<std::size_t>(number(static_cast<int>(Common.size())))];
    }
    void type(Journal& journal, std::size_t at) {
        for (int i = number(10); i > 0; --i)
            insert(journal, at++, "k");
    }
    void remove(Journal& journal, std::size_t at, std::size_t length) {
        length = std::min(length, m_held.size() - at);
        journal.remove(static_cast<qint64>(at), static_cast<qint64>(length));
        m_held.erase(at, length);
    }
    void backspace(Journal& journal, std::size_t at) {
        for (int i = number(10); i > 0 && at > 0; --i)
            remove(journal, --at, 1);
    }

    std::mt19937 m_random;
    JointKind m_kind;
    std::string m_held;
};

struct Case {
    JointKind kind;
    TextFormat format;
};

/// The tests are named by it.
void PrintTo(const Case& each, std::ostream* out) {
    static constexpr const char* Kinds[] = {"NoJoints", "AnyCr", "LoneCr", "AnyLf"};
    static constexpr const char* Encodings[] = {"Utf8", "Utf16Le", "Utf16Be", "Windows1252"};
    *out << Kinds[static_cast<int>(each.kind)] << Encodings[static_cast<int>(each.format.encoding)];
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
        RandomText text(seed, GetParam().kind);
        const QString path = file(QByteArray::fromStdString(encoded(text.plain(), GetParam().format)));
        JournalBase base = baseOf(path);
        base.format = GetParam().format;
        base.jointKind = text.kind();
        base.joints = text.addJoints();
        base.heldLength = static_cast<qint64>(text.held().size());
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
                ASSERT_EQ(encoded(text.plain(), base.format), bytesOf(path).toStdString());
                EXPECT_TRUE(found->discard());
                break;
            }
            ASSERT_EQ(outcome, Outcome::Restored) << seed;
            ASSERT_EQ(bytesOf(found->textPath()).toStdString(), text.plain()) << seed;
            auto joints = text.addJoints();
            const auto journal = found->continueAs(text.kind(), std::move(joints));
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
    for (const JointKind kind : {JointKind::None, JointKind::AnyCr, JointKind::LoneCr, JointKind::AnyLf}) {
        for (const TextEncoding encoding : {TextEncoding::Utf8, TextEncoding::Utf16LittleEndian,
                                            TextEncoding::Utf16BigEndian, TextEncoding::Windows1252})
            cases.push_back({kind, {encoding, encoding != TextEncoding::Windows1252 && kind != JointKind::None}});
    }
    return cases;
}

INSTANTIATE_TEST_SUITE_P(Kinds, JournalReplay, testing::ValuesIn(allCases()), testing::PrintToStringParamName());

}  // namespace
