#include "editor/control/ControlSelection.h"

#include "editor/control/EditScope.h"
#include "editor/control/EditView.h"
#include "editor/control/KeptView.h"
#include "editor/control/SelectedRanges.h"

#include <algorithm>

using Sci = QsciScintillaBase;

qint64 ControlSelection::SelStart() const {
    return m_view.map().positionOf(m_view.send(Sci::SCI_GETSELECTIONSTART));
}

qint64 ControlSelection::SelEnd() const {
    return m_view.map().positionOf(m_view.send(Sci::SCI_GETSELECTIONEND));
}

QString ControlSelection::SelText() const {
    const auto [anchor, caret] = m_view.selection();
    return QString::fromUtf8(m_view.bytes(std::min(anchor, caret), std::max(anchor, caret)));
}

void ControlSelection::select(qint64 anchor, qint64 caret) {
    const EditScope scope(m_view);
    const TextMap& map = m_view.map();
    qint64 from = map.byteOf(std::max<qint64>(anchor, 0));
    qint64 to = map.byteOf(std::max<qint64>(caret, 0));
    // The first selected character stands behind a joint, in a row of its own.
    qint64& first = from < to ? from : to;
    if (from != to && map.joints().isJoint(first))
        ++first;
    m_view.setSelectionBytes(from, to);
    m_view.send(Sci::SCI_SCROLLRANGE, from, to);
}

qint64 ControlSelection::AnchorPosition() const {
    return m_view.map().positionOf(m_view.selection().anchor);
}

qint64 ControlSelection::CaretPosition() const {
    return m_view.map().positionOf(m_view.selection().caret);
}

qint64 ControlSelection::StartLineNo() const {
    return m_view.map().lineOf(m_view.selection().anchor);
}

qint64 ControlSelection::EndLineNo() const {
    return m_view.map().lineOf(m_view.selection().caret);
}

qint64 ControlSelection::EndColNo() const {
    const qint64 caret = m_view.selection().caret;
    return m_view.map().positionOf(caret) - m_view.map().positionOf(m_view.map().lineBeginOf(caret));
}

TextMatch ControlSelection::selectedBytes() const {
    return {m_view.send(Sci::SCI_GETSELECTIONSTART), m_view.send(Sci::SCI_GETSELECTIONEND)};
}

std::vector<TextMatch> ControlSelection::selectedRanges() const {
    std::vector<TextMatch> all;
    for (qint64 range = 0; range < m_view.send(Sci::SCI_GETSELECTIONS); ++range)
        all.push_back({m_view.send(Sci::SCI_GETSELECTIONNSTART, range), m_view.send(Sci::SCI_GETSELECTIONNEND, range)});
    std::ranges::sort(all, {}, &TextMatch::from);
    std::vector<TextMatch> ranges;
    for (const TextMatch& range : all) {
        if (range.empty())
            continue;
        if (!ranges.empty() && range.from <= ranges.back().to)
            ranges.back().to = std::max(ranges.back().to, range.to);
        else
            ranges.push_back(range);
    }
    if (ranges.empty())
        ranges.push_back(all.front());
    return ranges;
}

qint64 ControlSelection::lineAtPoint(int x, int y) const {
    return m_view.map().lineOf(m_view.send(Sci::SCI_POSITIONFROMPOINT, x, y));
}

void ControlSelection::giveBack(const KeptView& kept) {
    const EditScope scope(m_view);
    kept.giveBackTo(m_view);
}

bool ControlSelection::isStream() const {
    return m_view.send(Sci::SCI_GETSELECTIONS) == 1 && m_view.send(Sci::SCI_SELECTIONISRECTANGLE) == 0;
}

/// Scintilla cuts a rectangle again whenever it measures its styles, during an edit too, and then uses offsets that no
/// longer exist.
void ControlSelection::loosenRectangle() {
    if (!m_view.Locked() && m_view.send(Sci::SCI_SELECTIONISRECTANGLE) != 0)
        SelectedRanges(m_view).select(m_view);
}

void ControlSelection::loosenAtTop() {
    if (m_view.send(Sci::SCI_SELECTIONISRECTANGLE) == 0)
        return;
    loosenRectangle();
    const qint64 last = m_view.send(Sci::SCI_GETSELECTIONS) - 1;
    const bool isUpward = m_view.send(Sci::SCI_GETSELECTIONNSTART, last) < m_view.send(Sci::SCI_GETSELECTIONNSTART, 0);
    m_view.send(Sci::SCI_SETMAINSELECTION, isUpward ? last : 0);
}

/// The corners have moved with the text, and Scintilla would cut the rectangle between them some time later.
void ControlSelection::cutRectangleAnew() {
    if (m_view.send(Sci::SCI_SELECTIONISRECTANGLE) == 0)
        return;
    const qint64 beyond = m_view.send(Sci::SCI_GETRECTANGULARSELECTIONANCHORVIRTUALSPACE);
    m_view.send(Sci::SCI_SETRECTANGULARSELECTIONANCHORVIRTUALSPACE, beyond);
}

void ControlSelection::knowColumn() {
    m_columnKnownAt = {m_view.selection().caret, m_view.changeCount()};
}

/// Scintilla does not count it as a step sideways when the caret is placed somewhere.
void ControlSelection::chooseColumn() {
    if (m_columnKnownAt != Place{m_view.selection().caret, m_view.changeCount()})
        m_view.send(Sci::SCI_CHOOSECARETX);
}

bool ControlSelection::isSelected(qint64 byte) const {
    for (qint64 range = 0; range < m_view.send(Sci::SCI_GETSELECTIONS); ++range) {
        if (byte >= m_view.send(Sci::SCI_GETSELECTIONNSTART, range) &&
            byte < m_view.send(Sci::SCI_GETSELECTIONNEND, range))
            return true;
    }
    return false;
}

void ControlSelection::SelectAll() {
    const EditScope scope(m_view);
    m_view.send(Sci::SCI_SELECTALL);
}
