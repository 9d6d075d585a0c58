#pragma once

#include "text/held/HeldText.h"
#include "text/held/Joints.h"

#include <vector>

/// Where characters and lines of a text lie among the bytes that the control holds. Bytes are offsets into the held
/// UTF-8, joints included; positions are UTF-16 units and lines those of the text itself, both from 0, joints not
/// counted. Owned by the control, which tells it of every change before it happens; nothing here costs more than a
/// look at some hundred kilobytes once a place has been passed.
class TextMap {
 public:
    /// The text outlives the map.
    explicit TextMap(const HeldText& text) : m_text(text) {}

    /// A new text is held. `ascii`: it is known to be pure ASCII.
    void reset(bool ascii, JointKind kind, std::vector<qint64> joints);
    /// From now on joints of this kind may be put into the text, which has none yet.
    void setJointKind(JointKind kind);
    /// What is going to be inserted is looked at when it stands in the text: at the next question or change.
    void beforeInsert(qint64 at, qint64 length);
    void beforeDelete(qint64 at, qint64 length);
    /// Much is going to be changed behind this byte: what was counted there is dropped, not kept up with each change.
    void forgetBehind(qint64 byte);

    /// Known to hold nothing but ASCII.
    bool ascii() const {
        settle();
        return m_ascii;
    }
    const JointList& joints() const {
        settle();
        return m_joints;
    }

    qint64 positionOf(qint64 byte) const;
    /// The byte of a position; positions beyond the end give the end. Where a joint stands, the place in front of it.
    qint64 byteOf(qint64 position) const;

    qint64 lineCount() const;
    qint64 lineOf(qint64 byte) const;
    /// First byte of a line, and the byte in front of its line end.
    qint64 lineBegin(qint64 line) const;
    qint64 lineBeginOf(qint64 byte) const;
    qint64 lineEndOf(qint64 byte) const;
    /// The first byte behind the line that holds this byte, its line end included.
    qint64 nextLineOf(qint64 byte) const;

 private:
    /// Units in front of a byte, joints counted as one each.
    struct Mark {
        qint64 byte = 0;
        qint64 units = 0;
    };
    struct Insertion {
        qint64 at = 0;
        qint64 length = 0;
    };
    void settle() const;
    qint64 unitsBefore(qint64 byte) const;
    qint64 countUnits(qint64 from, qint64 to) const;
    void extendMarks(qint64 byte) const;
    qint64 heldLineOfLine(qint64 line) const;
    qint64 byteOfUnits(const Mark& from, qint64 units) const;

    const HeldText& m_text;
    mutable Insertion m_unsettled;
    mutable JointList m_joints;
    mutable bool m_ascii = true;
    /// What has been counted so far, a mark every MarkDistance bytes or so; the rest is counted when it is asked for.
    mutable std::vector<Mark> m_marks{Mark{}};
    /// The place asked for last: who asks for one behind the other is not counted for from a mark each time.
    mutable Mark m_lastAsked;
};
