#include "editor/control/ControlTyping.h"

#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlMacros.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/EditScope.h"
#include "editor/control/EditView.h"
#include "editor/control/LanguageIndent.h"
#include "editor/control/PageUpdate.h"
#include "editor/held/Colouring.h"
#include "editor/language/AutoIndent.h"

#include <QInputMethodEvent>

#include <algorithm>
#include <iterator>
#include <utility>

using Sci = QsciScintillaBase;

namespace {

/// Milliseconds without a key after which typing begins a new undo step.
constexpr qint64 TypingPause = 2000;
/// Typed texts of more units than this are inserted as a whole. A macro's are in any case, since the library lays out
/// the whole line at each character.
constexpr qsizetype TypedOneByOne = 64;
/// Bytes on each side of the caret that are passed to an input method.
constexpr qint64 SurroundingBytes = 1024;

}  // namespace

void ControlTyping::type(const QString& text) {
    const QByteArray utf8 = m_view.withOwnLineEnds(text);
    const int times = m_view.state().takeRepeatCount();
    const bool outgrows = m_view.wouldOutgrow(utf8.size() * times);
    const EditScope scope(m_view, outgrows || times > 1 ? EditScope::Grouped : EditScope::Separate);
    m_selection.loosenRectangle();
    if (!m_view.state().typing || times > 1 || m_sinceTyped.elapsed() > TypingPause)
        m_view.breakUndo();
    m_view.state().typing = times == 1;
    m_sinceTyped.start();
    for (int done = 0; done < times; ++done)
        putTyped(text, utf8);
    if (m_autoIndent && m_view.state().typing && text.size() == 1 && m_selection.isStream() && !m_view.Locked())
        LanguageIndent::closeTypedLevel(m_view);
    m_macros.noteTyped(text, times);
}

/// Whether typing just replaces the selection: there are one caret and no virtual space, and nothing is overtyped.
bool ControlTyping::replacesSelection() const {
    return m_selection.isStream() && m_view.send(Sci::SCI_GETOVERTYPE) == 0 &&
           m_view.send(Sci::SCI_GETSELECTIONNCARETVIRTUALSPACE, 0) == 0 &&
           m_view.send(Sci::SCI_GETSELECTIONNANCHORVIRTUALSPACE, 0) == 0;
}

void ControlTyping::putTyped(const QString& text, const QByteArray& utf8) {
    const qsizetype oneByOne = m_view.state().isPlaying() ? 1 : TypedOneByOne;
    if (text.size() > oneByOne && replacesSelection())
        return m_view.replaceSelection(utf8);
    QInputMethodEvent event;
    event.setCommitString(QString::fromUtf8(utf8));
    m_view.passToLibrary(QEvent::InputMethod, event);
}

void ControlTyping::beginCommand(int message) {
    const bool joinsLast = std::exchange(m_lastCommand, message) == message && message != Sci::SCI_NEWLINE;
    if (!joinsLast || m_view.state().typing)
        m_view.breakUndo();
    m_view.state().typing = false;
}

void ControlTyping::newLine() {
    const bool indents = m_autoIndent && !m_view.Locked();
    if (indents && m_selection.isStream() && m_view.send(Sci::SCI_GETSELECTIONEMPTY) != 0)
        LanguageIndent::closeLevelAtLineEnd(m_view);
    const std::vector<QByteArray> fronts = indents ? frontsOfNewLines() : std::vector<QByteArray>();
    breakLine();
    // A rectangle has become one caret.
    if (std::ssize(fronts) != m_view.send(Sci::SCI_GETSELECTIONS))
        return;
    for (qint64 range = 0; range < std::ssize(fronts); ++range)
        insertAtCaret(range, fronts[static_cast<std::size_t>(range)]);
    if (indents && m_selection.isStream())
        LanguageIndent::closeLevel(m_view);
    m_view.state().scrollDue = true;
}

/// The lines above remain as they are; the library would paint them too.
void ControlTyping::breakLine() {
    qint64 first = m_view.heldText().length();
    for (qint64 range = 0; range < m_view.send(Sci::SCI_GETSELECTIONS); ++range)
        first = std::min(first, m_view.send(Sci::SCI_GETSELECTIONNSTART, range));
    ScrolledPage page(m_view);
    m_view.runAcrossJoints(Sci::SCI_NEWLINE);
    page.setChanged(m_view.heldText().lineOf(first), m_view.heldText().lineCount());
}

/// The start of the new line at each caret. The text after the caret moves down with its own blanks.
std::vector<QByteArray> ControlTyping::frontsOfNewLines() const {
    std::vector<QByteArray> fronts;
    for (qint64 range = 0; range < m_view.send(Sci::SCI_GETSELECTIONS); ++range)
        fronts.push_back(LanguageIndent::frontBehind(m_view, m_view.send(Sci::SCI_GETSELECTIONNSTART, range)));
    return fronts;
}

void ControlTyping::insertAtCaret(qint64 range, const QByteArray& utf8) {
    const qint64 at = m_view.send(Sci::SCI_GETSELECTIONNCARET, range);
    m_view.replaceBytes(at, at, utf8);
    m_view.send(Sci::SCI_SETSELECTIONNCARET, range, at + utf8.size());
    m_view.send(Sci::SCI_SETSELECTIONNANCHOR, range, at + utf8.size());
}

/// Scintilla would move each piece of a long line as if it were a line.
void ControlTyping::tabKey(int message) {
    const bool jointed = !m_view.map().joints().empty() && message == Sci::SCI_BACKTAB;
    if (!m_selection.isStream() || m_view.Locked() ||
        (m_selection.StartLineNo() == m_selection.EndLineNo() && !jointed))
        return m_view.runAcrossJoints(message);
    m_view.ExecuteCmd(message == Sci::SCI_TAB ? Command::Indent : Command::Unindent, {});
}

void ControlTyping::takeInputMethod(QInputMethodEvent& event) {
    const QString committed = event.commitString();
    const bool types = !committed.isEmpty() || !event.preeditString().isEmpty();
    if (types)
        m_macros.leaveHotKey();
    const int times = committed.isEmpty() ? 1 : m_view.state().takeRepeatCount();
    const bool outgrows = m_view.wouldOutgrow(committed.toUtf8().size() * times);
    const EditScope scope(m_view, outgrows || times > 1 ? EditScope::Grouped : EditScope::Separate);
    if (types)
        m_selection.loosenRectangle();
    m_view.passToLibrary(QEvent::InputMethod, event);
    for (int done = 1; done < times; ++done)
        putTyped(committed, m_view.withOwnLineEnds(committed));
    m_macros.noteTyped(committed, times);
}

/// Only the text near the caret: the library itself would return the whole paragraph, which may be the whole text.
QVariant ControlTyping::answer(Qt::InputMethodQuery query) const {
    const qint64 caret = m_view.selection().caret;
    const auto before = [&] {
        const qint64 from = m_view.send(Sci::SCI_POSITIONBEFORE,
                                        std::max(m_view.map().lineBeginOf(caret), caret - SurroundingBytes) + 1);
        return QString::fromUtf8(m_view.bytes(from, caret));
    };
    const auto after = [&] {
        const qint64 to =
            m_view.send(Sci::SCI_POSITIONAFTER, std::min(m_view.map().lineEndOf(caret), caret + SurroundingBytes) - 1);
        return QString::fromUtf8(m_view.bytes(caret, std::max(caret, to)));
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
            return m_view.map().positionOf(caret);
        case Qt::ImCurrentSelection:
            return m_selection.SelEnd() - m_selection.SelStart() > SurroundingBytes ? QString() : m_selection.SelText();
        default:
            return {};
    }
}

void ControlTyping::setTabWidth(int blanks) {
    m_tabWidth = std::clamp(blanks, 1, LargestTabWidth);
    applyTabs();
}

void ControlTyping::setBlanksForTabs(bool on) {
    m_blanksForTabs = on;
    applyTabs();
}

/// The language decides what a level is, unless the text is indented by tabs or blanks already, or blanks are set for
/// all texts.
void ControlTyping::applyTabs() {
    const LanguageDefinition* language = m_view.colouring().language();
    bool tabs = !m_blanksForTabs;
    if (tabs && language != nullptr)
        tabs = AutoIndent::indentedByTabs(m_view.heldText()).value_or(language->indentsWithTabs);
    m_view.send(Sci::SCI_SETTABWIDTH, m_tabWidth);
    m_view.send(Sci::SCI_SETUSETABS, tabs);
    // 0: the width of a tab.
    m_view.send(Sci::SCI_SETINDENT, language == nullptr || tabs ? 0 : language->indentWidth);
}
