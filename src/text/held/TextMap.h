#pragma once

#include "text/held/HeldText.h"
#include "text/held/Joints.h"

#include <vector>

/// Converts between the held bytes of a text and its positions and lines. Bytes are offsets into the held text (UTF-8,
/// joints included). Positions count UTF-16 units and lines count the lines of the text itself, both from 0 and without
/// joints.
///
/// Owned by the control, which must report each change before it happens. A query counts at most 256 KiB from the
/// nearest mark; only the first query far beyond all earlier ones counts everything up to it.
class TextMap {
 public:
    /// The text outlives the map.
    explicit TextMap(const HeldText& text) : m_text(text) {}

    /// Call it when another text is held. `ascii`: the text is known to be pure ASCII.
    void reset(bool ascii, JointKind kind, std::vector<qint64> joints);
    /// Sets the kind of joints that may be inserted from now on; the text must not contain joints yet.
    void setJointKind(JointKind kind);
    /// The inserted bytes are examined later, when they are in the text: at the next query or change.
    void beforeInsert(qint64 at, qint64 length);
    void beforeDelete(qint64 at, qint64 length);
    /// Call it before many changes after this byte: discards the counts after it, so that not every change has to
    /// update them.
    void forgetBehind(qint64 byte);

    /// Whether the text is known to be pure ASCII.
    bool ascii() const {
        settle();
        return m_ascii;
    }
    const JointList& joints() const {
        settle();
        return m_joints;
    }

    qint64 positionOf(qint64 byte) const;
    /// Returns the byte of a position, and the end of the text for positions beyond it. At a joint it returns the byte
    /// before the joint.
    qint64 byteOf(qint64 position) const;

    qint64 lineCount() const;
    qint64 lineOf(qint64 byte) const;
    /// The first byte of a line; lineBeginOf() and lineEndOf() take a byte of the line. lineEndOf() returns the offset
    /// of its line end, or the end of the text.
    qint64 lineBegin(qint64 line) const;
    qint64 lineBeginOf(qint64 byte) const;
    qint64 lineEndOf(qint64 byte) const;
    /// The first byte after the line that contains this byte and after its line end.
    qint64 nextLineOf(qint64 byte) const;

 private:
    /// The number of UTF-16 units before a byte; each joint counts as one.
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
    /// The counts made so far, about one mark for each MarkDistance bytes. The rest is counted when it is needed.
    mutable std::vector<Mark> m_marks{Mark{}};
    /// The result of the last query: a query a little further on starts counting here instead of at a mark.
    mutable Mark m_lastAsked;
};
