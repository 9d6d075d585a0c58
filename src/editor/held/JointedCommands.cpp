#include "editor/held/JointedCommands.h"

#include <Qsci/qsciscintillabase.h>

#include <algorithm>

using Sci = QsciScintillaBase;

namespace {

/// Blanks at the start of a line that Home examines, in bytes.
constexpr qint64 IndentLimit = 4096;

}  // namespace

void JointedCommands::send(int message) {
    m_view.SendScintilla(static_cast<unsigned>(message), 0UL, 0L);
}

qint64 JointedCommands::caret() const {
    return m_view.SendScintilla(Sci::SCI_GETCURRENTPOS);
}

qint64 JointedCommands::anchor() const {
    return m_view.SendScintilla(Sci::SCI_GETANCHOR);
}

void JointedCommands::run(int message) {
    if (m_map.joints().empty()) {
        send(message);
        return;
    }
    switch (message) {
        case Sci::SCI_CHARLEFT:
        case Sci::SCI_CHARLEFTEXTEND:
        case Sci::SCI_CHARRIGHT:
        case Sci::SCI_CHARRIGHTEXTEND:
        case Sci::SCI_WORDLEFT:
        case Sci::SCI_WORDLEFTEXTEND:
        case Sci::SCI_WORDRIGHT:
        case Sci::SCI_WORDRIGHTEXTEND:
            return stepAcross(message);
        case Sci::SCI_DELETEBACK:
        case Sci::SCI_DELWORDLEFT:
            return deleteAcross(message, caret() - 1, caret() - 1);
        case Sci::SCI_CLEAR:
        case Sci::SCI_DELWORDRIGHT:
            return deleteAcross(message, caret(), caret() + 1);
        case Sci::SCI_VCHOME:
        case Sci::SCI_VCHOMEEXTEND:
            return moveTo(smartHome(), message == Sci::SCI_VCHOMEEXTEND);
        case Sci::SCI_HOME:
        case Sci::SCI_HOMEEXTEND:
            return moveTo(m_map.lineBeginOf(caret()), message == Sci::SCI_HOMEEXTEND);
        case Sci::SCI_LINEEND:
        case Sci::SCI_LINEENDEXTEND:
            return moveTo(m_map.lineEndOf(caret()), message == Sci::SCI_LINEENDEXTEND);
        default:
            return send(message);
    }
}

/// A step that has only crossed a joint has not moved in the text: it is repeated once.
void JointedCommands::stepAcross(int message) {
    const qint64 from = caret();
    send(message);
    if (caret() != from && m_map.positionOf(caret()) == m_map.positionOf(from))
        send(message);
}

/// Without a selection, and with a joint in the way, the deletion begins on the other side of it.
void JointedCommands::deleteAcross(int message, qint64 jointAt, qint64 beyond) {
    if (caret() == anchor() && m_map.joints().isJoint(jointAt))
        m_view.SendScintilla(Sci::SCI_SETEMPTYSELECTION, static_cast<unsigned long>(beyond));
    send(message);
}

void JointedCommands::moveTo(qint64 byte, bool extend) {
    m_view.SendScintilla(Sci::SCI_SETSEL, static_cast<unsigned long>(extend ? anchor() : byte),
                         static_cast<long>(byte));
    send(Sci::SCI_CHOOSECARETX);
}

/// The first character of the line that is not a blank, or its start when the caret is there already.
qint64 JointedCommands::smartHome() const {
    const qint64 begin = m_map.lineBeginOf(caret());
    const qint64 length = std::min(IndentLimit, m_map.lineEndOf(caret()) - begin);
    const std::size_t indent = m_text.range(begin, length).find_first_not_of(" \t");
    const qint64 text = begin + (indent == std::string_view::npos ? 0 : static_cast<qint64>(indent));
    return m_map.positionOf(caret()) == m_map.positionOf(text) ? begin : text;
}
