#include "editor/held/LongLines.h"

#include <Qsci/qsciscintillabase.h>

#include <algorithm>

namespace {

bool isLineEnd(std::string_view byte) {
    return byte.empty() || byte == "\r" || byte == "\n";
}

}  // namespace

bool LongLines::wouldOutgrow(qint64 at, qint64 bytes) const {
    const qint64 line = m_text.lineOf(at);
    const qint64 begin = m_text.lineStart(line);
    const qint64 end = line + 1 < m_text.lineCount() ? m_text.lineStart(line + 1) : m_text.length();
    return end - begin + bytes > LongLine;
}

void LongLines::keepShort(qint64 low, qint64 high) {
    removeIdleJoints(low - 1, high + 1);
    // From the start of a line it is enough to check the line that lies LongLine bytes ahead.
    for (qint64 at = m_text.lineStart(m_text.lineOf(std::min(low, m_text.length()))); at < m_text.length();) {
        const qint64 ahead = m_text.lineStart(m_text.lineOf(std::min(at + LongLine + 1, m_text.length())));
        if (ahead > at) {
            at = ahead;
        } else if (m_text.length() - at <= LongLine) {
            return;
        } else {
            if (!chooseJoint())
                return;
            const qint64 grownFrom = m_text.length();
            cut(at);
            high += m_text.length() - grownFrom;
            const qint64 next = m_text.lineOf(at) + 1;
            at = next < m_text.lineCount() ? m_text.lineStart(next) : m_text.length();
        }
        if (at > high)
            return;
    }
}

void LongLines::removeIdleJoints(qint64 low, qint64 high) {
    const JointList& joints = m_map.joints();
    for (auto index = static_cast<std::size_t>(joints.before(low));
         index < joints.count() && joints.offsetAt(index) <= high;) {
        const qint64 joint = joints.offsetAt(index);
        if (isIdle(joint))
            m_view.SendScintilla(QsciScintillaBase::SCI_DELETERANGE, static_cast<unsigned long>(joint), 1L);
        else
            ++index;
    }
}

/// A joint without a piece on one of its sides is useless, and could be taken for a part of the line end there.
bool LongLines::isIdle(qint64 joint) const {
    const bool atStart = joint == 0 || isLineEnd(m_text.range(joint - 1, 1));
    return atStart || joint + 1 >= m_text.length() || isLineEnd(m_text.range(joint + 1, 1));
}

/// Cuts the line that begins here into pieces.
void LongLines::cut(qint64 begin) {
    const char joint = jointByte(m_map.joints().kind());
    const qint64 line = m_text.lineOf(begin);
    qint64 end = line + 1 < m_text.lineCount() ? m_text.lineStart(line + 1) - 2 : m_text.length();
    for (qint64 at = begin; end - at > PieceLength;) {
        at += pieceEnd(m_text.range(at, PieceLength + 1));
        // Unlike the message that inserts a text, this one leaves what is selected.
        m_view.SendScintilla(QsciScintillaBase::SCI_SETTARGETRANGE, static_cast<unsigned long>(at),
                             static_cast<long>(at));
        m_view.SendScintilla(QsciScintillaBase::SCI_REPLACETARGET, uintptr_t{1}, &joint);
        ++at;
        ++end;
    }
}

/// False when the text may be edited but has no unused byte for joints; its lines then stay long.
bool LongLines::chooseJoint() {
    if (m_map.joints().kind() != JointKind::None)
        return m_map.joints().kind() != JointKind::Listed;
    if (m_usesAllLineEnds)
        return false;
    LineEndsSeen seen;
    seen.look(m_text.range(0, m_text.length()));
    const JointKind kind = jointKindFor(seen);
    m_usesAllLineEnds = kind == JointKind::Listed;
    if (m_usesAllLineEnds)
        return false;
    m_map.setJointKind(kind);
    return true;
}
