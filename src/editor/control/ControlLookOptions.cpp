// Options of the control: what it shows besides the text, and how keys and mouse act.

#include "editor/control/EditScope.h"
#include "editor/control/KeptBookmarks.h"
#include "editor/control/LanguageIndent.h"
#include "editor/control/TextControl.h"
#include "editor/held/Margins.h"
#include "editor/held/ScintillaColour.h"
#include "editor/language/AutoIndent.h"
#include "editor/rtf/RtfReader.h"
#include "editor/rtf/RtfWriter.h"
#include "widgets/Contrast.h"
#include "widgets/StoredColour.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr qint64 NoBrace = -1;

}  // namespace

// Margins and colours

void TextControl::setLineNumberStart(qint64 number) {
    m_options.lineNumberStart = std::max<qint64>(number, 0);
    m_numberedLines = -1;
    showLineNumbers();
    Redraw();
}

void TextControl::setDisplayLeftMargin(bool on) {
    m_options.leftMargin = on;
    applyLeftMargin();
}

void TextControl::applyLeftMargin() {
    const QColor text = textLook().colour;
    const QColor own = m_options.leftMarginColour;
    const QColor shown = own.isValid() ? own : Contrast::blended(baseColour(), text, 5);
    send(SCI_SETMARGINBACKN, Margins::Bookmarks, ScintillaColour::number(shown));
    send(SCI_SETMARGINWIDTHN, Margins::Bookmarks, m_options.leftMargin ? Margins::BookmarksWidth : 0);
}

void TextControl::setHImageList(const QList<QPixmap>& images) {
    m_options.images = images;
    showBookmarkSign();
}

void TextControl::showBookmarkSign() {
    if (m_options.images.isEmpty())
        send(SCI_MARKERDEFINE, Markers::Bookmark, SC_MARK_BOOKMARK);
    else
        SendScintilla(SCI_MARKERDEFINEPIXMAP, static_cast<unsigned long>(Markers::Bookmark), m_options.images.first());
}

QColor TextControl::baseColour() const {
    return m_options.background.isValid() ? m_options.background : palette().color(QPalette::Base);
}

QColor ControlOptions::*TextControl::elementMember(Element element) {
    constexpr QColor ControlOptions::*Members[] = {&ControlOptions::background, &ControlOptions::leftMarginColour,
                                                   &ControlOptions::rowHighlight};
    return Members[element];
}

QColor TextControl::elementColour(Element element) const {
    return m_options.*elementMember(element);
}

void TextControl::setElementColour(Element element, const QColor& colour) {
    m_options.*elementMember(element) = colour;
    applyColours();
}

// What is shown of the text

bool TextControl::DisplayWhitespace() const {
    return send(SCI_GETVIEWWS) != SCWS_INVISIBLE;
}

void TextControl::setDisplayWhitespace(bool on) {
    send(SCI_SETVIEWWS, on ? SCWS_VISIBLEALWAYS : SCWS_INVISIBLE);
}

bool TextControl::VScrollVisible() const {
    return send(SCI_GETVSCROLLBAR) != 0;
}

void TextControl::setVScrollVisible(bool on) {
    send(SCI_SETVSCROLLBAR, on);
}

bool TextControl::HScrollVisible() const {
    return send(SCI_GETHSCROLLBAR) != 0;
}

void TextControl::setHScrollVisible(bool on) {
    send(SCI_SETHSCROLLBAR, on);
}

bool TextControl::WordWrap() const {
    return send(SCI_GETWRAPMODE) != SC_WRAP_NONE;
}

void TextControl::setWordWrap(bool on) {
    send(SCI_SETWRAPMODE, on ? SC_WRAP_WORD : SC_WRAP_NONE);
}

void TextControl::setBraceMatching(bool on) {
    m_options.braceMatching = on;
    showBraces();
}

/// The brace in front of the caret goes before the one behind it.
void TextControl::showBraces() {
    if (!m_options.braceMatching)
        return clearBraces();
    const qint64 caret = selection().caret;
    BraceScan::Match match;
    for (const qint64 place : {caret - 1, caret}) {
        match = braceMatchAt(place);
        if (match.kind != BraceScan::Match::Kind::None)
            break;
    }
    if (match.kind == BraceScan::Match::Kind::None)
        return clearBraces();
    m_bracesShown = true;
    if (match.kind == BraceScan::Match::Kind::Pair)
        send(SCI_BRACEHIGHLIGHT, match.brace, match.partner);
    else
        send(SCI_BRACEBADLIGHT, match.brace);
}

/// Braces of the language; where it is known what they belong to, of the same class, and none in comments and strings.
BraceScan::Match TextControl::braceMatchAt(qint64 place) const {
    if (m_colouring.isProse(place))
        return {};
    const auto own = m_colouring.classAt(place);
    const auto counts = [&](qint64 byte) {
        const auto token = m_colouring.classAt(byte);
        return !token || (own ? token == own : !m_colouring.isProse(byte));
    };
    return BraceScan::matchAt(m_text, place, counts, m_colouring.brackets());
}

void TextControl::clearBraces() {
    if (std::exchange(m_bracesShown, false))
        send(SCI_BRACEHIGHLIGHT, NoBrace, NoBrace);
}

// Keys and mouse

void TextControl::setTabWidth(int blanks) {
    m_options.tabWidth = std::clamp(blanks, 1, LargestTabWidth);
    applyTabs();
}

void TextControl::setBlanksForTabs(bool on) {
    m_options.blanksForTabs = on;
    applyTabs();
}

/// The language says what a level is, unless the text is indented by tabs or blanks already, or blanks are wanted in
/// any case.
void TextControl::applyTabs() {
    const LanguageDefinition* language = m_colouring.language();
    bool tabs = !m_options.blanksForTabs;
    if (tabs && language != nullptr)
        tabs = AutoIndent::indentedByTabs(m_text).value_or(language->indentsWithTabs);
    send(SCI_SETTABWIDTH, m_options.tabWidth);
    send(SCI_SETUSETABS, tabs);
    // 0: the width of a tab.
    send(SCI_SETINDENT, language == nullptr || tabs ? 0 : language->indentWidth);
}

/// What the new line of each caret begins with. What stands behind the caret moves down with its own blanks.
std::vector<QByteArray> TextControl::frontsOfNewLines() const {
    std::vector<QByteArray> fronts;
    for (qint64 range = 0; range < send(SCI_GETSELECTIONS); ++range)
        fronts.push_back(LanguageIndent::frontBehind(*this, send(SCI_GETSELECTIONNSTART, range)));
    return fronts;
}

void TextControl::newLine() {
    const bool indents = m_options.autoIndent && !Locked();
    if (indents && isStream() && send(SCI_GETSELECTIONEMPTY) != 0)
        LanguageIndent::closeLevelAtLineEnd(*this);
    const std::vector<QByteArray> fronts = indents ? frontsOfNewLines() : std::vector<QByteArray>();
    m_commands.run(SCI_NEWLINE);
    // A rectangle has become one caret.
    if (std::ssize(fronts) != send(SCI_GETSELECTIONS))
        return;
    for (qint64 range = 0; range < std::ssize(fronts); ++range)
        insertAtCaret(range, fronts[static_cast<std::size_t>(range)]);
    if (indents && isStream())
        LanguageIndent::closeLevel(*this);
    m_scrollDue = true;
}

void TextControl::insertAtCaret(qint64 range, const QByteArray& utf8) {
    const qint64 at = send(SCI_GETSELECTIONNCARET, range);
    send(SCI_SETTARGETRANGE, at, at);
    SendScintilla(SCI_REPLACETARGET, static_cast<uintptr_t>(utf8.size()), utf8.constData());
    send(SCI_SETSELECTIONNCARET, range, at + utf8.size());
    send(SCI_SETSELECTIONNANCHOR, range, at + utf8.size());
}

// The file's line ends and encoding

void TextControl::convertLineEnds(int mode) {
    if (!canConvertLineEnds())
        return;
    const EditScope scope(*this);
    const KeptBookmarks kept(*this);
    m_typing = false;
    m_eolMode = mode;
    send(SCI_SETEOLMODE, mode);
    send(SCI_CONVERTEOLS, mode);
    m_converted = m_converted || m_changed;
    send(SCI_EMPTYUNDOBUFFER);
}

bool TextControl::canReopen() const {
    return !m_path.isEmpty() && !m_converted && send(SCI_GETMODIFY) == 0;
}

SystemError TextControl::reopenAs(int flagWord) {
    return canReopen() ? OpenFileAs(m_path, flagWord) : SystemError{};
}

// Rich text

QByteArray TextControl::TextRTF() const {
    return richText(0, m_text.length());
}

QByteArray TextControl::SelRTF() const {
    const auto [anchor, caret] = selection();
    return richText(std::min(anchor, caret), std::max(anchor, caret));
}

bool TextControl::setTextRTF(const QString& rtf) {
    const std::optional<QString> text = plainTextOfRtf(rtf);
    if (text)
        setText(QString::fromUtf8(withOwnLineEnds(*text)));
    else
        Q_EMIT CommandFailed();
    return text.has_value();
}

bool TextControl::setSelRTF(const QString& rtf) {
    const std::optional<QString> text = plainTextOfRtf(rtf);
    if (text)
        setSelText(QString::fromUtf8(withOwnLineEnds(*text)));
    else
        Q_EMIT CommandFailed();
    return text.has_value();
}

QByteArray TextControl::richText(qint64 from, qint64 to) const {
    m_colouring.completeTo(to);
    RtfWriter writer(m_fontName, m_fontSize);
    while (from < to) {
        const qint64 style = send(SCI_GETSTYLEAT, from);
        qint64 end = from + 1;
        while (end < to && send(SCI_GETSTYLEAT, end) == style)
            ++end;
        const RtfLook look{StoredColour::colourOf(send(SCI_STYLEGETFORE, style)), send(SCI_STYLEGETBOLD, style) != 0,
                           send(SCI_STYLEGETITALIC, style) != 0};
        writer.append(QString::fromUtf8(bytes(from, end)), look);
        from = end;
    }
    return writer.finished();
}
