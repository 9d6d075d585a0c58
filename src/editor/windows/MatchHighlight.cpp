#include "editor/windows/MatchHighlight.h"

#include "editor/control/ControlSearch.h"
#include "editor/control/EditView.h"
#include "editor/held/ScintillaColour.h"
#include "text/search/MatchScan.h"

#include <QElapsedTimer>
#include <QKeyEvent>

#include <algorithm>

using Sci = QsciScintillaBase;

namespace {

constexpr int Indicator = Sci::INDIC_CONTAINER;
/// Maximum bytes and matches examined on one screen.
constexpr qint64 MostBytes = 256 * 1024;
constexpr std::size_t MostMatches = 5000;
constexpr int DelayMilliseconds = 30;
/// After this time no more matches are searched for: the marks are a help that nobody waits for.
constexpr qint64 LongestMilliseconds = 40;
constexpr int FillAlpha = 60;
constexpr int OutlineAlpha = 160;

/// A text up to some place: no match is searched for after it.
class TextUpTo : public HeldText {
 public:
    TextUpTo(const HeldText& text, qint64 end) : m_text(text), m_end(end) {}

    qint64 length() const override { return m_end; }
    qint64 gap() const override { return std::min(m_text.gap(), m_end); }
    std::string_view range(qint64 from, qint64 length) const override { return m_text.range(from, length); }
    qint64 lineCount() const override { return m_text.lineOf(m_end) + 1; }
    qint64 lineOf(qint64 byte) const override { return m_text.lineOf(byte); }
    qint64 lineStart(qint64 line) const override { return m_text.lineStart(line); }

 private:
    const HeldText& m_text;
    qint64 m_end;
};

qint64 ask(const EditView& view, unsigned message, qint64 first = 0, qint64 second = 0) {
    return view.SendScintilla(message, static_cast<unsigned long>(first), static_cast<long>(second));
}

}  // namespace

MatchHighlight& MatchHighlight::of(EditView& view, ControlSearch& search) {
    auto* highlight = view.findChild<MatchHighlight*>(QString(), Qt::FindDirectChildrenOnly);
    return highlight != nullptr ? *highlight : *new MatchHighlight(view, search);
}

MatchHighlight::MatchHighlight(EditView& view, ControlSearch& search) : QObject(&view), m_view(view), m_search(search) {
    m_later.setSingleShot(true);
    m_later.setInterval(DelayMilliseconds);
    connect(&m_later, &QTimer::timeout, this, &MatchHighlight::refresh);
    connect(&view, &EditView::aboutToBeDestroyed, this, [this] { delete this; });
    connect(&view, &EditView::SearchChanged, this, [this] {
        m_kept = false;
        m_later.start();
    });
    connect(&view, &QsciScintillaBase::SCN_UPDATEUI, this, &MatchHighlight::refreshLater);
    ask(view, Sci::SCI_INDICSETSTYLE, Indicator, Sci::INDIC_STRAIGHTBOX);
    ask(view, Sci::SCI_INDICSETALPHA, Indicator, FillAlpha);
    ask(view, Sci::SCI_INDICSETOUTLINEALPHA, Indicator, OutlineAlpha);
    ask(view, Sci::SCI_INDICSETUNDER, Indicator, 1);
    takeColour();
    view.installEventFilter(this);
}

MatchHighlight::~MatchHighlight() {
    clear();
}

MatchHighlight::Hold::Hold(EditView& view, ControlSearch& search) : m_highlight(&MatchHighlight::of(view, search)) {
    ++m_highlight->m_holds;
    m_highlight->m_later.start();
}

MatchHighlight::Hold::~Hold() {
    if (m_highlight && --m_highlight->m_holds == 0)
        m_highlight->refresh();
}

void MatchHighlight::keep() {
    m_kept = true;
    m_later.start();
}

void MatchHighlight::dismiss() {
    m_kept = false;
    refresh();
}

void MatchHighlight::refreshLater() {
    if (wanted())
        m_later.start();
}

void MatchHighlight::takeColour() {
    const QColor colour = m_view.palette().color(QPalette::Highlight);
    ask(m_view, Sci::SCI_INDICSETFORE, Indicator, ScintillaColour::number(colour));
}

bool MatchHighlight::eventFilter(QObject* watched, QEvent* event) {
    if (watched != &m_view)
        return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::PaletteChange)
        takeColour();
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
        dismiss();
    return QObject::eventFilter(watched, event);
}

void MatchHighlight::clear() {
    ask(m_view, Sci::SCI_SETINDICATORCURRENT, Indicator);
    ask(m_view, Sci::SCI_INDICATORCLEARRANGE, 0, m_view.heldText().length());
    m_marked.clear();
}

std::vector<TextMatch> MatchHighlight::visibleMatches() const {
    std::vector<TextMatch> found;
    const auto pattern = m_search.searchPattern();
    if (!pattern)
        return found;
    const HeldText& text = m_view.heldText();
    const qint64 first = ask(m_view, Sci::SCI_DOCLINEFROMVISIBLE, ask(m_view, Sci::SCI_GETFIRSTVISIBLELINE));
    const qint64 behind = first + ask(m_view, Sci::SCI_LINESONSCREEN) + 1;
    const qint64 from = text.lineStart(std::min(first, text.lineCount() - 1));
    const qint64 end = behind < text.lineCount() ? text.lineStart(behind) : text.length();
    const TextUpTo visible(text, std::min(end, text.lineStart(text.lineOf(std::min(from + MostBytes, end)) + 1)));
    MatchScan scan(*pattern, visible, m_view.map(), from);
    QElapsedTimer taken;
    taken.start();
    scan.watchedBy([&taken] { return taken.elapsed() < LongestMilliseconds; });
    while (found.size() < MostMatches && scan.next())
        found.push_back(scan.match());
    return found;
}

/// Marks are only changed where they differ from the present ones, because each change makes the control notify its
/// listeners.
void MatchHighlight::refresh() {
    std::vector<TextMatch> found = wanted() ? visibleMatches() : std::vector<TextMatch>();
    if (found == m_marked && m_markedAt == m_view.changeCount())
        return;
    clear();
    for (const TextMatch& match : found)
        ask(m_view, Sci::SCI_INDICATORFILLRANGE, match.from, match.to - match.from);
    m_marked = std::move(found);
    m_markedAt = m_view.changeCount();
}
