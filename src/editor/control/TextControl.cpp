#include "editor/control/TextControl.h"

#include "editor/access/EditorAccessible.h"
#include "editor/commands/LineCommands.h"
#include "editor/control/CommandNumbers.h"
#include "editor/control/EditScope.h"
#include "editor/control/KeptBookmarks.h"
#include "editor/control/LanguageIndent.h"
#include "editor/control/MacroRecorder.h"
#include "editor/windows/SearchWindows.h"
#include "text/codec/Utf8Text.h"

#include <QFontDatabase>

#include <algorithm>
#include <array>
#include <span>
#include <utility>

using Sci = QsciScintillaBase;

namespace {

/// Milliseconds without a key after which typing begins a new undo step.
constexpr qint64 TypingPause = 2000;
/// Commands that are made of several edits.
constexpr auto Composed = std::to_array<int>({Sci::SCI_PASTE, Sci::SCI_TAB, Sci::SCI_BACKTAB, Sci::SCI_NEWLINE});
/// Commands that take or put in something wherever something is selected.
constexpr auto Edits = std::to_array<int>({Sci::SCI_NEWLINE, Sci::SCI_TAB, Sci::SCI_BACKTAB, Sci::SCI_CLEAR,
                                           Sci::SCI_DELETEBACK, Sci::SCI_DELWORDRIGHT, Sci::SCI_DELWORDLEFT});
/// Commands that keep to a column.
constexpr auto Vertical = std::to_array<int>(
    {Sci::SCI_LINEUP, Sci::SCI_LINEDOWN, Sci::SCI_LINEUPEXTEND, Sci::SCI_LINEDOWNEXTEND, Sci::SCI_LINEUPRECTEXTEND,
     Sci::SCI_LINEDOWNRECTEXTEND, Sci::SCI_PAGEUP, Sci::SCI_PAGEDOWN, Sci::SCI_PAGEUPEXTEND, Sci::SCI_PAGEDOWNEXTEND,
     Sci::SCI_PAGEUPRECTEXTEND, Sci::SCI_PAGEDOWNRECTEXTEND});
/// Typed texts of more units than this are inserted as a whole.
constexpr qsizetype TypedAtOnce = 64;

bool contains(std::span<const int> messages, int message) {
    return std::ranges::find(messages, message) != messages.end();
}

}  // namespace

TextControl::TextControl(QWidget* parent) : QsciScintillaBase(parent) {
    EditorAccessible::install();
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    m_fontName = fixed.family();
    if (fixed.pointSize() > 0)
        m_fontSize = fixed.pointSize();
    setUpView();
    applyDocumentState();
    connect(this, &QsciScintillaBase::SCN_MODIFIED, this,
            [this](int at, int type, const char*, int length) { textAboutToChange(at, type, length); });
    connect(this, &QsciScintillaBase::SCN_UPDATEUI, this, &TextControl::lookAtSelectionLater);
    connect(this, &QsciScintillaBase::SCN_STYLENEEDED, this, [this](int to) { m_colouring.styleTo(to); });
}

TextControl::~TextControl() {
    SearchWindows::removeFrom(*this);
}

qint64 TextControl::send(unsigned message, qint64 first, qint64 second) const {
    return SendScintilla(message, static_cast<unsigned long>(first), static_cast<long>(second));
}

// Changes and what is told of them

void TextControl::textAboutToChange(qint64 at, int type, qint64 length) {
    const bool inserts = (type & SC_MOD_BEFOREINSERT) != 0;
    if (!inserts && (type & SC_MOD_BEFOREDELETE) == 0)
        return;
    ++m_changes;
    EditorAccessible::textAboutToChange(*this, at, length, inserts);
    if (inserts)
        m_map.beforeInsert(at, length);
    else
        m_map.beforeDelete(at, length);
    if (!std::exchange(m_changed, true))
        m_touchedFrom = m_touchedTo = at;
    m_touchedFrom = std::min(m_touchedFrom, at);
    m_touchedTo = inserts ? std::max(m_touchedTo, at) + length : std::max(at, m_touchedTo - length);
}

void TextControl::closeScope() {
    if (m_scopes > 1) {
        --m_scopes;
        return;
    }
    if (m_changed)
        m_longLines.keepShort(m_touchedFrom, m_touchedTo);
    if (std::exchange(m_grouped, false))
        send(SCI_ENDUNDOACTION);
    if (std::exchange(m_scrollDue, false))
        send(SCI_SCROLLCARET);
    m_scopes = 0;
    const bool changed = std::exchange(m_changed, false);
    const Selection now = selection();
    const bool moved = std::exchange(m_toldSelection, now) != now;
    if (!std::exchange(m_noted, false) && (changed || moved) && m_unrecorded == 0 && recording() != nullptr)
        recording()->missed();
    if (changed) {
        showLineNumbers();
        followPieces();
    }
    if (changed || moved)
        showBraces();
    if (moved)
        EditorAccessible::selectionChanged(*this);
    if (changed)
        Q_EMIT Change();
    if (moved)
        Q_EMIT SelChange();
}

/// Scintilla moves the selection by itself too, as when a drag scrolls; it tells so while it paints.
void TextControl::lookAtSelectionLater() {
    if (m_scopes == 0 && (m_changed || selection() != m_toldSelection)) {
        QMetaObject::invokeMethod(
            this, [this] { const EditScope scope(*this); }, Qt::QueuedConnection);
    }
}

/// What is typed from here on is an undo step of its own.
void TextControl::breakUndo() {
    send(SCI_BEGINUNDOACTION);
    send(SCI_ENDUNDOACTION);
}

void TextControl::runCommand(int message) {
    // What has grown in pieces is cut again with it; taking back and bringing back are no edits of their own.
    const bool takesBack = message == SCI_UNDO || message == SCI_REDO;
    const int times = message == SCI_CANCEL ? std::min(takeRepeatCount(), 1) : takeRepeatCount();
    const bool composed = contains(Composed, message);
    const bool grouped = !takesBack && (times > 1 || composed || !m_map.joints().empty());
    const EditScope scope(*this, grouped ? EditScope::Grouped : EditScope::Separate);
    // Deletions one after the other are taken back together, all else one by one.
    if (std::exchange(m_lastCommand, message) != message || message == SCI_NEWLINE || m_typing)
        breakUndo();
    m_typing = false;
    const bool vertical = contains(Vertical, message);
    if (vertical)
        chooseColumn();
    if (contains(Edits, message))
        loosenRectangle();
    for (int done = 0; done < times; ++done)
        carryOut(message);
    if (vertical)
        knowColumn();
    noteCommand(message, {}, times);
}

void TextControl::carryOut(int message) {
    switch (message) {
        case SCI_CUT:
            return Cut();
        case SCI_COPY:
            return Copy();
        case SCI_PASTE:
            return Paste();
        case SCI_UNDO:
            return Undo();
        case SCI_REDO:
            return Redo();
        case SCI_NEWLINE:
            return newLine();
        case SCI_TAB:
        case SCI_BACKTAB:
            return tabKey(message);
        default:
            return m_commands.run(message);
    }
}

/// Scintilla would move each piece of a long line as if it were a line.
void TextControl::tabKey(int message) {
    const bool jointed = !m_map.joints().empty() && message == SCI_BACKTAB;
    if (!isStream() || Locked() || (StartLineNo() == EndLineNo() && !jointed))
        return m_commands.run(message);
    message == SCI_TAB ? LineCommands::indent(*this) : LineCommands::unindent(*this);
}

void TextControl::type(const QString& text) {
    const QByteArray utf8 = withOwnLineEnds(text);
    const int times = takeRepeatCount();
    const bool outgrows = m_longLines.wouldOutgrow(selection().caret, utf8.size() * times);
    const EditScope scope(*this, outgrows || times > 1 ? EditScope::Grouped : EditScope::Separate);
    loosenRectangle();
    if (!m_typing || times > 1 || m_sinceTyped.elapsed() > TypingPause)
        breakUndo();
    m_typing = times == 1;
    m_sinceTyped.start();
    for (int done = 0; done < times; ++done)
        putTyped(text, utf8);
    if (m_options.autoIndent && m_typing && text.size() == 1 && isStream() && !Locked())
        LanguageIndent::closeTypedLevel(*this);
    noteTyped(text, times);
}

void TextControl::putTyped(const QString& text, const QByteArray& utf8) {
    if (text.size() > TypedAtOnce && isStream())
        return replaceSelection(utf8);
    QInputMethodEvent event;
    event.setCommitString(QString::fromUtf8(utf8));
    QsciScintillaBase::inputMethodEvent(&event);
}

// Text

/// The bytes by which a text enters as it is. In a text with joints its line ends become the text's own, so that none
/// is taken for a joint.
QByteArray TextControl::heldForm(const QString& text) const {
    return m_map.joints().kind() == JointKind::None ? wellFormedUtf8(text) : withOwnLineEnds(text);
}

QByteArray TextControl::withOwnLineEnds(const QString& text) const {
    QString converted = text;
    converted.replace(u"\r\n"_qs, u"\n"_qs).replace(u'\r', u'\n');
    if (m_eolMode == SC_EOL_CRLF)
        converted.replace(u'\n', u"\r\n"_qs);
    else if (m_eolMode == SC_EOL_CR)
        converted.replace(u'\n', u'\r');
    return wellFormedUtf8(converted);
}

/// The text between two bytes without its joints, in runs that are good until the next change.
std::vector<std::string_view> TextControl::plainRuns(qint64 from, qint64 to) const {
    std::vector<std::string_view> runs;
    const auto take = [&runs](std::string_view run) { runs.push_back(run); };
    const auto& joints = m_map.joints().offsets();
    for (auto joint = std::lower_bound(joints.begin(), joints.end(), from); joint != joints.end() && *joint < to;
         ++joint) {
        m_text.forEachRun(from, *joint, take);
        from = *joint + 1;
    }
    m_text.forEachRun(from, to, take);
    return runs;
}

QByteArray TextControl::bytes(qint64 from, qint64 to) const {
    QByteArray plain;
    plain.reserve(to - from);
    for (const std::string_view run : plainRuns(from, to))
        plain.append(run.data(), static_cast<qsizetype>(run.size()));
    return plain;
}

QString TextControl::Text() const {
    return QString::fromUtf8(bytes(0, m_text.length()));
}

void TextControl::setText(const QString& text) {
    const EditScope scope(*this, EditScope::Grouped);
    const KeptBookmarks kept(*this);
    const QByteArray utf8 = heldForm(text);
    send(SCI_SETTARGETRANGE, 0, m_text.length());
    SendScintilla(SCI_REPLACETARGET, static_cast<uintptr_t>(utf8.size()), utf8.constData());
    placeCaret(0);
}

QString TextControl::SelText() const {
    const auto [anchor, caret] = selection();
    return QString::fromUtf8(bytes(std::min(anchor, caret), std::max(anchor, caret)));
}

void TextControl::setSelText(const QString& text) {
    const EditScope scope(*this, EditScope::Grouped);
    const KeptBookmarks kept(*this);
    replaceSelection(heldForm(text));
}

/// Unlike the message for it this takes NUL bytes.
void TextControl::replaceSelection(const QByteArray& utf8) {
    const EditScope scope(*this, EditScope::Grouped);
    const auto [anchor, caret] = selection();
    const qint64 from = std::min(anchor, caret);
    send(SCI_SETTARGETRANGE, from, std::max(anchor, caret));
    const qint64 added = SendScintilla(SCI_REPLACETARGET, static_cast<uintptr_t>(utf8.size()), utf8.constData());
    if (!Locked())
        placeCaret(from + added);
}

/// For the caret behind an edit. It is brought into view when the edit is over: to know where a place of a line too
/// long is on the screen, all of that line would be laid out, and it is going to be cut.
void TextControl::placeCaret(qint64 byte) {
    send(SCI_CLEARSELECTIONS);
    send(SCI_SETSELECTION, byte, byte);
    m_scrollDue = true;
}

void TextControl::AddText(const QString& text) {
    const EditScope scope(*this, EditScope::Grouped);
    const QByteArray utf8 = heldForm(text);
    SendScintilla(SCI_APPENDTEXT, static_cast<uintptr_t>(utf8.size()), utf8.constData());
}

QString TextControl::GetLine(qint64 line) const {
    if (line < 0 || line >= m_map.lineCount())
        return {};
    const qint64 begin = m_map.lineBegin(line);
    return QString::fromUtf8(bytes(begin, m_map.lineEndOf(begin)));
}

qint64 TextControl::TotalLines() const {
    return m_map.lineCount();
}

// Commands

bool TextControl::Locked() const {
    return m_locked || m_forcedLock;
}

void TextControl::setLocked(bool locked) {
    m_locked = locked;
    send(SCI_SETREADONLY, Locked());
}

bool TextControl::CanUndo() const {
    return send(SCI_CANUNDO) != 0;
}

bool TextControl::CanRedo() const {
    return send(SCI_CANREDO) != 0;
}

void TextControl::Undo() {
    const EditScope scope(*this);
    const KeptBookmarks kept(*this);
    m_typing = false;
    send(SCI_UNDO);
}

void TextControl::Redo() {
    const EditScope scope(*this);
    const KeptBookmarks kept(*this);
    m_typing = false;
    send(SCI_REDO);
}

void TextControl::SelectAll() {
    const EditScope scope(*this);
    send(SCI_SELECTALL);
    noteCommand(Command::SelectAll, {}, 1);
}

void TextControl::GotoTextLine(qint64 line) {
    const EditScope scope(*this);
    const qint64 byte = m_map.lineBegin(std::clamp<qint64>(line, 0, TotalLines() - 1));
    send(SCI_GOTOPOS, byte);
    send(SCI_VERTICALCENTRECARET);
}

void TextControl::Redraw() {
    viewport()->update();
}
