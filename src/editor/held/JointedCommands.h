#pragma once

#include "text/held/TextMap.h"

class QsciScintillaBase;

/// Commands of the control at which the user would notice the joints of a long line, in a form that crosses them: steps
/// of the caret and deletions.
class JointedCommands {
 public:
    /// All three are owned by the control and outlive this object.
    JointedCommands(QsciScintillaBase& view, const HeldText& text, const TextMap& map)
        : m_view(view), m_text(text), m_map(map) {}

    /// Carries out a Scintilla message, across joints where there are any.
    void run(int message);

 private:
    void stepAcross(int message);
    void deleteAcross(int message, qint64 jointAt, qint64 beyond);
    void moveTo(qint64 byte, bool extend);
    qint64 smartHome() const;
    qint64 caret() const;
    qint64 anchor() const;
    void send(int message);

    QsciScintillaBase& m_view;
    const HeldText& m_text;
    const TextMap& m_map;
};
