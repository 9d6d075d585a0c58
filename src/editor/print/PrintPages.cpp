#include "editor/print/PrintPages.h"

#include <QFontMetricsF>
#include <QPaintDevice>
#include <QPainter>
#include <QTextBoundaryFinder>
#include <QTextLayout>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

constexpr qreal PointsPerInch = 72;
constexpr qreal LargestHeaderSize = 9;  // points
constexpr qreal RuleWidth = 0.5;        // points
/// Between the header and the text, and between the numbers and the text, in rows and blanks.
constexpr qreal HeaderGap = 0.75;
constexpr qreal NumberGap = 1.5;
constexpr int FewestDigits = 3;
/// For what a sum of rounded widths may differ from the width of the whole.
constexpr qreal Slack = 1;

qreal widestCharacter(const QFont& font, QPaintDevice& device) {
    const QFontMetricsF metrics(font, &device);
    qreal widest = 0;
    for (char16_t character = u' '; character <= u'~'; ++character)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(character)));
    return widest;
}

qreal widestOfAll(const PaperLook& look, QPaintDevice& device) {
    qreal widest = 0;
    for (const bool bold : {false, true}) {
        for (const bool italic : {false, true}) {
            QFont font = look.font;
            font.setBold(bold);
            font.setItalic(italic);
            widest = std::max(widest, widestCharacter(font, device));
        }
    }
    return widest;
}

/// A tab distance of a text layout is not in the units of its device: it is multiplied by this.
qreal tabScale(const QFont& font, QPaintDevice& device) {
    constexpr qreal Probe = 1000;
    QTextLayout layout(u"\t"_qs, font, &device);
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    option.setTabStopDistance(Probe);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(Probe);
    layout.endLayout();
    return line.cursorToX(1) / Probe;
}

/// Between words, unless one of them alone is longer than a row: a list without blanks would leave rows half empty.
QTextOption::WrapMode wrapModeFor(const QString& text, qreal columns) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Line, text);
    qsizetype begin = 0;
    for (qsizetype end = finder.toNextBoundary(); end >= 0; end = finder.toNextBoundary()) {
        if (static_cast<qreal>(end - begin) > columns)
            return QTextOption::WrapAnywhere;
        begin = end;
    }
    return QTextOption::WrapAtWordBoundaryOrAnywhere;
}

/// The byte at which the row that begins with this unit is laid out again. A row inside the name of a control character
/// continues with the next character, so that each page begins further on than the one before.
qint64 beginOfRow(const PrintedText::Stretch& stretch, int unit) {
    auto at = static_cast<std::size_t>(unit);
    while (at > 0 && at + 1 < stretch.bytes.size() && stretch.bytes[at] == stretch.bytes[at - 1])
        ++at;
    return stretch.bytes[at];
}

/// One for each run of characters that look the same, of whatever style they are.
QList<QTextLayout::FormatRange> formatsOf(const QByteArray& styles, const PaperLook& look) {
    const auto formatAt = [&](qsizetype unit) { return look.formatOfStyle[static_cast<unsigned char>(styles[unit])]; };
    QList<QTextLayout::FormatRange> formats;
    for (qsizetype from = 0; from < styles.size();) {
        const std::size_t format = formatAt(from);
        qsizetype to = from + 1;
        while (to < styles.size() && formatAt(to) == format)
            ++to;
        formats.append({static_cast<int>(from), static_cast<int>(to - from), look.formats[format]});
        from = to;
    }
    return formats;
}

}  // namespace

/// Where the next row is placed.
struct PrintPages::Cursor {
    PrintPlace place;
    qreal y = 0;
    QPainter* painter = nullptr;
};

struct PrintPages::Row {
    PrintPlace place;
    qreal y = 0;
};

/// The rows of a stretch of text.
class PrintPages::Lines {
 public:
    Lines(const PrintPages& pages, const PrintedText::Stretch& stretch, QTextOption::WrapMode wrap)
        : m_layout(stretch.text, pages.m_look.font, &pages.m_device), m_width(pages.m_area.width()) {
        QTextOption option;
        option.setWrapMode(wrap);
        // From left to right as on the screen, whatever the first letter is.
        option.setTextDirection(Qt::LeftToRight);
        option.setTabStopDistance(pages.m_tab);
        option.setUseDesignMetrics(true);
        m_layout.setTextOption(option);
        m_layout.setFormats(formatsOf(stretch.styles, pages.m_look));
        m_layout.setCacheEnabled(true);
        m_layout.beginLayout();
    }

    /// Not valid after the last row.
    QTextLine next() {
        QTextLine line = m_layout.createLine();
        if (line.isValid())
            line.setLineWidth(m_width);
        return line;
    }
    void finish() { m_layout.endLayout(); }
    QTextLine at(int number) const { return m_layout.lineAt(number); }

 private:
    QTextLayout m_layout;
    qreal m_width;
};

PrintPages::PrintPages(const PrintedText& text, PaperLook look, QPaintDevice& device, QString name)
    : m_text(text), m_look(std::move(look)), m_device(device), m_name(std::move(name)), m_headerFont(m_look.font) {
    m_headerFont.setPointSizeF(std::min(m_look.font.pointSizeF(), LargestHeaderSize));
    const QFontMetricsF metrics(m_look.font, &device);
    m_rowHeight = metrics.height();
    m_ascent = metrics.ascent();
    m_widest = widestOfAll(m_look, device);
    m_tab = m_look.tabWidth * metrics.horizontalAdvance(u' ') / tabScale(m_look.font, device);
    placeText(device);
}

void PrintPages::placeText(QPaintDevice& device) {
    const QRectF paper(0, 0, device.width(), device.height());
    const qreal headerHeight = QFontMetricsF(m_headerFont, &device).height();
    m_header = {paper.left(), paper.top(), paper.width(), headerHeight};
    m_area = paper.adjusted(0, headerHeight + HeaderGap * m_rowHeight, 0, 0);
    if (!m_look.showsNumbers)
        return;
    const QFontMetricsF metrics(m_look.font, &device);
    const int digits = std::max<int>(FewestDigits, static_cast<int>(QString::number(m_text.largestNumber()).size()));
    m_numberRight = digits * metrics.horizontalAdvance(u'9');
    m_area.setLeft(m_numberRight + NumberGap * metrics.horizontalAdvance(u' '));
    m_area.setWidth(std::max(m_area.width(), m_widest));
}

void PrintPages::paintHeader(QPainter& painter, int page, int pages) const {
    const QString number = u"Page %1 of %2"_qs.arg(page).arg(pages);
    const QFontMetricsF metrics(m_headerFont, &m_device);
    const qreal gap = 2 * metrics.horizontalAdvance(u' ');
    const qreal room = std::max<qreal>(0, m_header.width() - metrics.horizontalAdvance(number) - gap);
    painter.setFont(m_headerFont);
    painter.setPen(m_look.textColour);
    const qreal baseline = m_header.top() + metrics.ascent();
    painter.drawText(QPointF(m_header.left(), baseline), metrics.elidedText(m_name, Qt::ElideMiddle, room));
    painter.drawText(QPointF(m_header.right() - metrics.horizontalAdvance(number), baseline), number);
    painter.setPen(QPen(m_look.numberColour, RuleWidth / PointsPerInch * m_device.logicalDpiY()));
    painter.drawLine(m_header.bottomLeft(), m_header.bottomRight());
}

PrintPlace PrintPages::fill(const PrintPlace& place, QPainter* painter) const {
    Cursor cursor{place, m_area.top(), painter};
    while (!m_text.isAtEnd(cursor.place)) {
        const PrintedText::Extent extent = m_text.extentAt(cursor.place);
        if (extent.hasRow() && !addExtent(extent, cursor))
            return cursor.place;
        if (!extent.hasRow())
            cursor.place = extent.next;
        // No page stays empty because of a form feed.
        if (extent.endsPage && cursor.place == extent.next && cursor.y > m_area.top())
            return cursor.place;
    }
    return cursor.place;
}

/// False: the page is full, and the cursor is at the first place that is not on it.
bool PrintPages::addExtent(const PrintedText::Extent& extent, Cursor& cursor) const {
    return fitsOneRow(extent) ? addShortRow(extent, cursor) : addRows(extent, cursor);
}

bool PrintPages::fitsOneRow(const PrintedText::Extent& extent) const {
    const std::optional<qint64> columns = m_text.mostColumns(extent, m_look.tabWidth);
    return columns && static_cast<qreal>(*columns) * m_widest + Slack <= m_area.width();
}

bool PrintPages::isFull(const Cursor& cursor, qreal height) const {
    // The first row is placed in any case: a page must not stay empty.
    return cursor.y + height > m_area.bottom() && cursor.y > m_area.top();
}

/// Most lines of a source are short: to know where a page ends they need not be laid out.
bool PrintPages::addShortRow(const PrintedText::Extent& extent, Cursor& cursor) const {
    if (isFull(cursor, m_rowHeight))
        return false;
    if (cursor.painter != nullptr) {
        if (extent.to > extent.from) {
            Lines lines(*this, m_text.read(extent), QTextOption::NoWrap);
            QTextLine line = lines.next();
            lines.finish();
            line.draw(cursor.painter, {m_area.left(), cursor.y + m_ascent - line.ascent()});
        }
        paintNumber(*cursor.painter, cursor.place, cursor.y + m_ascent);
    }
    cursor.y += m_rowHeight;
    cursor.place = extent.next;
    return true;
}

bool PrintPages::addRows(const PrintedText::Extent& extent, Cursor& cursor) const {
    const PrintedText::Stretch stretch = m_text.read(extent);
    const std::size_t range = cursor.place.range;
    Lines lines(*this, stretch, wrapModeFor(stretch.text, m_area.width() / m_widest));
    std::vector<Row> rows;
    bool hasRoom = true;
    cursor.place = extent.next;
    for (QTextLine line = lines.next(); line.isValid(); line = lines.next()) {
        const qint64 begin = beginOfRow(stretch, line.textStart());
        const PrintPlace place = begin == extent.to ? extent.next : PrintPlace{range, begin};
        const bool isLast = line.textStart() + line.textLength() >= stretch.text.size();
        hasRoom = !isFull(cursor, std::max(m_rowHeight, line.height()));
        // The last row of a stretch that ends inside the line is not full: the next stretch begins with it.
        if (!hasRoom || (isLast && !extent.endsLine && !rows.empty())) {
            cursor.place = place;
            break;
        }
        rows.push_back({place, cursor.y});
        cursor.y += std::max(m_rowHeight, line.height());
    }
    lines.finish();
    for (std::size_t i = 0; cursor.painter != nullptr && i < rows.size(); ++i) {
        const QTextLine line = lines.at(static_cast<int>(i));
        line.draw(cursor.painter, {m_area.left(), rows[i].y});
        paintNumber(*cursor.painter, rows[i].place, rows[i].y + line.ascent());
    }
    return hasRoom;
}

void PrintPages::paintNumber(QPainter& painter, const PrintPlace& place, qreal baseline) const {
    const std::optional<qint64> number = m_look.showsNumbers ? m_text.numberAt(place) : std::nullopt;
    if (!number)
        return;
    const QString text = QString::number(*number);
    painter.setFont(m_look.font);
    painter.setPen(m_look.numberColour);
    const qreal width = QFontMetricsF(m_look.font, &m_device).horizontalAdvance(text);
    painter.drawText(QPointF(m_numberRight - width, baseline), text);
}
