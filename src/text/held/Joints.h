#pragma once

#include <QtGlobal>

#include <cstddef>
#include <string_view>
#include <vector>

/// The byte that marks a joint, which is a place where a line too long to be laid out as a whole is cut into pieces. It
/// is always a single byte that the control treats as a line end, and that can be told apart from the line ends of the
/// text itself:
enum class JointKind {
    None,    ///< no joints
    AnyCr,   ///< the text has no CR: every CR is a joint
    LoneCr,  ///< the text has CR only in CR LF: a CR without LF is a joint
    AnyLf,   ///< the text has no LF: every LF is a joint
    Listed,  ///< the text uses all line ends: joints are LFs at known offsets, and the text must not be edited
};

/// Lines of more bytes than this are cut into pieces.
inline constexpr qint64 LongLine = 65536;
/// The maximum length of a new piece in bytes. A piece ends before the start of a word if there is one nearby.
inline constexpr qint64 PieceLength = 4096;

char jointByte(JointKind kind);

/// The kinds of line end that occur in a text.
struct LineEndsSeen {
    bool lf = false;
    bool cr = false;
    bool crLf = false;

    /// Adds the line ends of a run of the text, which must not begin inside a CR LF. `next` is the byte after the run:
    /// a CR at the end of the run counts as CR alone unless `next` is LF.
    void look(std::string_view run, char next = '\0');
    bool operator==(const LineEndsSeen&) const = default;
};

/// Returns the kind of joint that fits a text with these line ends.
JointKind jointKindFor(LineEndsSeen seen);

/// Returns the length of the first piece of a line, in bytes: at most PieceLength, after a space or punctuation
/// character if there is one nearby, never inside a character. `line` must be longer than PieceLength.
qint64 pieceEnd(std::string_view line);

/// The joints of one text as sorted byte offsets into the held text, updated with each change of the text. Owned by the
/// TextMap. Changes near each other are cheap however many joints follow: the offsets after the change are corrected
/// later, when they are needed.
class JointList {
 public:
    void reset(JointKind kind, std::vector<qint64> offsets);

    JointKind kind() const { return m_kind; }
    bool empty() const { return m_offsets.empty(); }
    std::size_t count() const { return m_offsets.size(); }
    qint64 offsetAt(std::size_t number) const { return m_offsets[number] + (number >= m_stepAt ? m_step : 0); }
    /// All offsets; valid until the next change.
    const std::vector<qint64>& offsets() const {
        moveStep(m_offsets.size());
        return m_offsets;
    }

    bool isJoint(qint64 byte) const;
    /// The number of joints before this offset.
    qint64 before(qint64 byte) const;

    /// `next` is the byte after the inserted text; '\0' at the end of the text.
    void textInserted(qint64 at, std::string_view text, char next);
    void textDeleted(qint64 at, qint64 length);

 private:
    void moveStep(std::size_t number) const;

    JointKind m_kind = JointKind::None;
    /// The offsets from index m_stepAt on still lack m_step.
    mutable std::vector<qint64> m_offsets;
    mutable std::size_t m_stepAt = 0;
    mutable qint64 m_step = 0;
};
