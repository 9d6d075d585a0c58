#pragma once

#include "text/held/Joints.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Cuts the long lines of a text into pieces while the text is loaded in parts. Its output is the held text, with
/// joints. Bytes that it does not take must be passed again at the start of the next part. Owned by the code that loads
/// the text. Offsets are bytes from the start of the output.
class PieceCutter {
 public:
    /// `joint` is the byte that marks a joint; without one no line is cut.
    explicit PieceCutter(std::optional<char> joint) : m_joint(joint) {}

    using Give = std::function<void(std::string_view)>;

    /// Passes as much of the next part to `give` as can be decided now, in as few runs as possible. The runs are valid
    /// only during the call. Returns how many bytes of `part` were taken; all of them when `last` is set, which marks
    /// the end of the text.
    qint64 feed(std::string_view part, bool last, const Give& give);

    const std::vector<qint64>& joints() const { return m_joints; }
    LineEndsSeen lineEnds() const { return m_seen; }
    /// The length in bytes of the longest line that was cut; 0 when none was.
    qint64 longestCut() const { return m_longestCut; }

 private:
    std::size_t cut(std::string_view part, bool last);
    qint64 shortLines(std::string_view rest, bool last);
    qint64 piecesOfLongLine(std::string_view rest, bool last);
    void pass(std::string_view run);

    std::optional<char> m_joint;
    bool m_inLongLine = false;
    qint64 m_given = 0;  ///< output before this part
    qint64 m_uncut = 0;  ///< leading bytes of this part that are output unchanged
    std::string m_out;   ///< the output after them, with its joints
    std::vector<qint64> m_joints;
    qint64 m_lineTaken = 0;  ///< of the long line that is being cut, before this part
    qint64 m_longestCut = 0;
    LineEndsSeen m_seen;
};
