#pragma once

#include <QtGlobal>

#include <cstddef>
#include <string_view>
#include <vector>

/// What stands for a joint: the place where a line too long to lay out at once is cut into pieces. It is always one
/// byte that the control takes for a line end and that cannot be mistaken for one of the text's own:
enum class JointKind {
    None,    ///< no joints
    AnyCr,   ///< the text has no CR: every CR is a joint
    LoneCr,  ///< the text has CR only in CR LF: a CR without LF is a joint
    AnyLf,   ///< the text has no LF: every LF is a joint
    Listed,  ///< the text uses all line ends: a joint is an LF at a known place, and the text must not be edited
};

/// Lines of more bytes than this are cut into pieces...
inline constexpr qint64 LongLine = 65536;
/// ...of about this many bytes, at the end of a word where there is one.
inline constexpr qint64 PieceLength = 4096;

char jointByte(JointKind kind);

/// Which line ends a text uses.
struct LineEndsSeen {
    bool lf = false;
    bool cr = false;
    bool crLf = false;

    /// Takes in all line ends of a run that does not begin inside a CR LF; a CR at its end is alone unless `next` is
    /// LF.
    void look(std::string_view run, char next = '\0');
    bool operator==(const LineEndsSeen&) const = default;
};

/// The joint that suits a text with these line ends.
JointKind jointKindFor(LineEndsSeen seen);

/// Where to cut a piece off the front of a line: at most PieceLength bytes, behind a blank or a sign if one is near,
/// never inside a character. `line` is longer than a piece.
qint64 pieceEnd(std::string_view line);

/// The joints of one text, as sorted byte offsets, moved along with its changes. Changes one beside the other are
/// cheap, however many joints lie behind them: these move when they are asked for.
class JointList {
 public:
    void reset(JointKind kind, std::vector<qint64> offsets);

    JointKind kind() const { return m_kind; }
    bool empty() const { return m_offsets.empty(); }
    std::size_t count() const { return m_offsets.size(); }
    qint64 offsetAt(std::size_t number) const { return m_offsets[number] + (number >= m_stepAt ? m_step : 0); }
    /// All of them; good until the next change.
    const std::vector<qint64>& offsets() const {
        moveStep(m_offsets.size());
        return m_offsets;
    }

    bool isJoint(qint64 byte) const;
    /// Joints in front of this offset.
    qint64 before(qint64 byte) const;

    /// `next` is the byte that will stand behind the inserted text.
    void textInserted(qint64 at, std::string_view text, char next);
    void textDeleted(qint64 at, qint64 length);

 private:
    void moveStep(std::size_t number) const;

    JointKind m_kind = JointKind::None;
    /// From number m_stepAt on all offsets are short by m_step.
    mutable std::vector<qint64> m_offsets;
    mutable std::size_t m_stepAt = 0;
    mutable qint64 m_step = 0;
};
