#include "editor/control/ControlBraces.h"

#include "editor/control/EditView.h"
#include "editor/control/PageUpdate.h"
#include "editor/held/Colouring.h"

#include <utility>

using Sci = QsciScintillaBase;

namespace {

constexpr qint64 NoBrace = -1;

}  // namespace

void ControlBraces::setBraceMatching(bool on) {
    m_on = on;
    follow();
}

/// The brace before the caret has precedence over the one after it.
void ControlBraces::follow() {
    if (!m_on)
        return show({});
    const qint64 caret = m_view.selection().caret;
    BraceScan::Match match;
    for (const qint64 place : {caret - 1, caret}) {
        match = matchAt(place);
        if (match.kind != BraceScan::Match::Kind::None)
            break;
    }
    show(match);
}

/// Braces of the language; where their token classes are known, both of the same class, and none in comments and
/// strings.
BraceScan::Match ControlBraces::matchAt(qint64 place) const {
    if (m_view.colouring().isProse(place))
        return {};
    const auto own = m_view.colouring().classAt(place);
    const auto counts = [&](qint64 byte) {
        const auto token = m_view.colouring().classAt(byte);
        return !token || (own ? token == own : !m_view.colouring().isProse(byte));
    };
    return BraceScan::matchAt(m_view.heldText(), place, counts, m_view.colouring().brackets());
}

ControlBraces::Mark ControlBraces::markAt(qint64 byte, bool matched) const {
    if (byte < 0)
        return {};
    const qint64 line = m_view.heldText().lineOf(byte);
    return {line, byte - m_view.heldText().lineStart(line), matched};
}

/// The library would paint the whole page for it.
void ControlBraces::show(const BraceScan::Match& match) {
    using Kind = BraceScan::Match::Kind;
    const bool matched = match.kind == Kind::Pair;
    const Mark brace = markAt(match.kind == Kind::None ? NoBrace : match.brace, matched);
    const Mark partner = markAt(matched ? match.partner : NoBrace, matched);
    if (brace == Mark() && m_brace == Mark())
        return;
    {
        const UpdatesBlocked blocked(*m_view.viewport());
        if (match.kind == Kind::Unmatched)
            m_view.send(Sci::SCI_BRACEBADLIGHT, match.brace);
        else
            m_view.send(Sci::SCI_BRACEHIGHLIGHT, matched ? match.brace : NoBrace, matched ? match.partner : NoBrace);
    }
    replace(m_brace, brace);
    replace(m_partner, partner);
}

void ControlBraces::replace(Mark& shown, const Mark& mark) {
    const Mark before = std::exchange(shown, mark);
    if (before == mark)
        return;
    m_view.redrawLines(before.line, before.line);
    m_view.redrawLines(mark.line, mark.line);
}
