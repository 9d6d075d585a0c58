#pragma once

#include "text/held/Joints.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// Cuts the long lines of a text that comes in parts, while it is loaded. What it gives out is the text with joints;
/// what it keeps back it wants to see again in front of the next part. Bytes count from the start of what was given
/// out.
class PieceCutter {
 public:
    /// The byte put for a joint.
    explicit PieceCutter(char joint) : m_joint(joint) {}

    using Give = std::function<void(std::string_view)>;

    /// Takes the next part of the text and gives out as much of it as can be told by now, in as few runs as may be.
    /// Returns how many bytes of `part` were taken; at the end of the text all of them.
    qint64 feed(std::string_view part, bool last, const Give& give);

    const std::vector<qint64>& joints() const { return m_joints; }
    LineEndsSeen lineEnds() const { return m_seen; }

 private:
    qint64 shortLines(std::string_view rest, bool last);
    qint64 piecesOfLongLine(std::string_view rest, bool last);
    void pass(std::string_view run);

    char m_joint;
    bool m_inLongLine = false;
    qint64 m_given = 0;  ///< before this part
    qint64 m_uncut = 0;  ///< of this part: what goes out as it came
    std::string m_out;   ///< of this part: what follows, with its joints
    std::vector<qint64> m_joints;
    LineEndsSeen m_seen;
};
