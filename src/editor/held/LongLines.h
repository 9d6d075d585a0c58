#pragma once

#include "text/held/HeldText.h"
#include "text/held/TextMap.h"

class QsciScintillaBase;

/// Keeps the lines of an edited text short enough to lay out: cuts those that have grown too long into pieces and
/// removes joints that are now beside a line end. Works inside the undo group of the edit that made it necessary.
class LongLines {
 public:
    /// All three are owned by the control and outlive this object.
    LongLines(QsciScintillaBase& view, const HeldText& text, TextMap& map) : m_view(view), m_text(text), m_map(map) {}

    /// Whether an edit that adds `bytes` at `at` makes the line there too long.
    bool wouldOutgrow(qint64 at, qint64 bytes) const;

    /// The bytes from `low` to `high` have just changed.
    void keepShort(qint64 low, qint64 high);

    /// The line ends of the text may be others: whether a byte is left over to stand for a joint is found out again.
    void lookAgain() { m_usesAllLineEnds = false; }

 private:
    void removeIdleJoints(qint64 low, qint64 high);
    bool isIdle(qint64 joint) const;
    void cut(qint64 begin);
    bool chooseJoint();

    QsciScintillaBase& m_view;
    const HeldText& m_text;
    TextMap& m_map;
    bool m_usesAllLineEnds = false;  ///< known; such a text is not read again at each edit of a long line
};
