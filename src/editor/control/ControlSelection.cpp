// What is selected in the control, and where its caret goes on.

#include "editor/control/EditScope.h"
#include "editor/control/KeptView.h"
#include "editor/control/SelectedRanges.h"
#include "editor/control/TextControl.h"

#include <algorithm>

TextControl::Selection TextControl::selection() const {
    return {send(SCI_GETANCHOR), send(SCI_GETCURRENTPOS)};
}

void TextControl::setSelectionBytes(qint64 anchor, qint64 caret) {
    send(SCI_SETSEL, anchor, caret);
}

/// Whether the selection is one run of text, not a rectangle and not several.
bool TextControl::isStream() const {
    return send(SCI_GETSELECTIONS) == 1 && send(SCI_SELECTIONISRECTANGLE) == 0;
}

/// Called before each edit: from there on the lines of a rectangle are ranges as any. Scintilla cuts a rectangle anew
/// whenever it measures its styles, in the midst of an edit too, and then goes by places that are no longer there.
void TextControl::loosenRectangle() {
    if (!Locked() && send(SCI_SELECTIONISRECTANGLE) != 0)
        SelectedRanges(*this).select(*this);
}

/// For what goes in as a whole: it begins at the topmost of the lines.
void TextControl::loosenAtTop() {
    if (send(SCI_SELECTIONISRECTANGLE) == 0)
        return;
    loosenRectangle();
    const qint64 last = send(SCI_GETSELECTIONS) - 1;
    const bool isUpward = send(SCI_GETSELECTIONNSTART, last) < send(SCI_GETSELECTIONNSTART, 0);
    send(SCI_SETMAINSELECTION, isUpward ? last : 0);
}

/// Called behind an edit of lines that a rectangle crosses: its corners have moved with the text, and Scintilla would
/// cut it between them some time later.
void TextControl::cutRectangleAnew() {
    if (send(SCI_SELECTIONISRECTANGLE) != 0)
        send(SCI_SETRECTANGULARSELECTIONANCHORVIRTUALSPACE, send(SCI_GETRECTANGULARSELECTIONANCHORVIRTUALSPACE));
}

void TextControl::knowColumn() {
    m_columnKnownAt = {selection().caret, m_changes};
}

/// Going up and down keeps to the column of the last step sideways. Scintilla does not count it as one when the caret
/// is placed somewhere.
void TextControl::chooseColumn() {
    if (m_columnKnownAt != Place{selection().caret, m_changes})
        send(SCI_CHOOSECARETX);
}

qint64 TextControl::SelStart() const {
    return m_map.positionOf(send(SCI_GETSELECTIONSTART));
}

qint64 TextControl::SelEnd() const {
    return m_map.positionOf(send(SCI_GETSELECTIONEND));
}

void TextControl::setSelStart(qint64 position) {
    setSelection(position, std::max(position, SelEnd()));
}

void TextControl::setSelEnd(qint64 position) {
    setSelection(std::min(position, SelStart()), position);
}

void TextControl::setSelection(qint64 anchor, qint64 caret) {
    const EditScope scope(*this);
    setSelectionBytes(m_map.byteOf(std::max<qint64>(anchor, 0)), m_map.byteOf(std::max<qint64>(caret, 0)));
}

qint64 TextControl::AnchorPosition() const {
    return m_map.positionOf(selection().anchor);
}

qint64 TextControl::CaretPosition() const {
    return m_map.positionOf(selection().caret);
}

TextMatch TextControl::selectedBytes() const {
    return {send(SCI_GETSELECTIONSTART), send(SCI_GETSELECTIONEND)};
}

void TextControl::giveBack(const KeptView& kept) {
    const EditScope scope(*this);
    kept.giveBackTo(*this);
}

qint64 TextControl::StartLineNo() const {
    return m_map.lineOf(selection().anchor);
}

qint64 TextControl::EndLineNo() const {
    return m_map.lineOf(selection().caret);
}

qint64 TextControl::EndColNo() const {
    const qint64 caret = selection().caret;
    return m_map.positionOf(caret) - m_map.positionOf(m_map.lineBeginOf(caret));
}
