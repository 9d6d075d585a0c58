// What is typed into the control: keys and input methods.

#include "editor/control/ControlGlobals.h"
#include "editor/control/EditScope.h"
#include "editor/control/EditorKeys.h"
#include "editor/control/TextControl.h"

#include <QInputMethodEvent>
#include <QKeyEvent>

#include <algorithm>

namespace {

/// Bytes on each side of the caret that an input method is told of.
constexpr qint64 SurroundingBytes = 1024;

}  // namespace

void TextControl::keyPressEvent(QKeyEvent* event) {
    event->accept();
    if (takeHotKey(*event))
        return;
    if (EditorKeys::typesText(*event))
        type(event->text());
    else
        event->ignore();
}

/// What a second stroke is waited for goes past the menus.
bool TextControl::event(QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride || m_globals == nullptr)
        return QsciScintillaBase::event(event);
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (m_globals->isAwaited(key)) {
        event->accept();
        return true;
    }
    if (!EditorKeys::isModifier(key))
        leaveHotKey();
    return QsciScintillaBase::event(event);
}

void TextControl::focusOutEvent(QFocusEvent* event) {
    leaveHotKey();
    QsciScintillaBase::focusOutEvent(event);
}

void TextControl::inputMethodEvent(QInputMethodEvent* event) {
    const QString committed = event->commitString();
    const bool types = !committed.isEmpty() || !event->preeditString().isEmpty();
    if (types)
        leaveHotKey();
    const int times = committed.isEmpty() ? 1 : takeRepeatCount();
    const bool outgrows = m_longLines.wouldOutgrow(selection().caret, committed.toUtf8().size() * times);
    const EditScope scope(*this, outgrows || times > 1 ? EditScope::Grouped : EditScope::Separate);
    if (types)
        loosenRectangle();
    QsciScintillaBase::inputMethodEvent(event);
    for (int done = 1; done < times; ++done)
        putTyped(committed, withOwnLineEnds(committed));
    noteTyped(committed, times);
}

/// Only the neighbourhood of the caret: the library's own answer is the whole paragraph, which may be the whole text.
QVariant TextControl::inputMethodQuery(Qt::InputMethodQuery query) const {
    const qint64 caret = selection().caret;
    const auto before = [&] {
        const qint64 from = send(SCI_POSITIONBEFORE, std::max(m_map.lineBeginOf(caret), caret - SurroundingBytes) + 1);
        return QString::fromUtf8(bytes(from, caret));
    };
    const auto after = [&] {
        const qint64 to = send(SCI_POSITIONAFTER, std::min(m_map.lineEndOf(caret), caret + SurroundingBytes) - 1);
        return QString::fromUtf8(bytes(caret, std::max(caret, to)));
    };
    switch (query) {
        case Qt::ImSurroundingText:
            return before() + after();
        case Qt::ImCursorPosition:
        case Qt::ImAnchorPosition:
            return before().size();
        case Qt::ImTextBeforeCursor:
            return before();
        case Qt::ImTextAfterCursor:
            return after();
        case Qt::ImAbsolutePosition:
            return m_map.positionOf(caret);
        case Qt::ImCurrentSelection:
            return SelEnd() - SelStart() > SurroundingBytes ? QString() : SelText();
        default:
            return QsciScintillaBase::inputMethodQuery(query);
    }
}
