#include "editor/control/ControlBraces.h"

#include "editor/control/EditView.h"
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
        return clear();
    const qint64 caret = m_view.selection().caret;
    BraceScan::Match match;
    for (const qint64 place : {caret - 1, caret}) {
        match = matchAt(place);
        if (match.kind != BraceScan::Match::Kind::None)
            break;
    }
    if (match.kind == BraceScan::Match::Kind::None)
        return clear();
    m_shown = true;
    if (match.kind == BraceScan::Match::Kind::Pair)
        m_view.send(Sci::SCI_BRACEHIGHLIGHT, match.brace, match.partner);
    else
        m_view.send(Sci::SCI_BRACEBADLIGHT, match.brace);
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

void ControlBraces::clear() {
    if (std::exchange(m_shown, false))
        m_view.send(Sci::SCI_BRACEHIGHLIGHT, NoBrace, NoBrace);
}
