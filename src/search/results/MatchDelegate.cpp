#include "search/results/MatchDelegate.h"

#include "search/results/RowText.h"
#include "search/results/SearchResultsModel.h"
#include "widgets/Contrast.h"

#include <QApplication>
#include <QPainter>
#include <QTextLayout>

namespace {

constexpr int TabWidth = 4;  ///< in blanks

QStyle& styleOf(const QStyleOptionViewItem& row) {
    return row.widget != nullptr ? *row.widget->style() : *QApplication::style();
}

/// Between the text and the edge of its place, as the style has it.
int marginOf(const QStyleOptionViewItem& row) {
    return styleOf(row).pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, row.widget) + 1;
}

bool isSelected(const QStyleOptionViewItem& row) {
    return (row.state & QStyle::State_Selected) != 0;
}

QColor markGround(const QStyleOptionViewItem& row) {
    constexpr QColor Light(255, 222, 110);
    constexpr QColor Dark(110, 88, 20);
    if (!isSelected(row))
        return Contrast::isDark(row.palette.color(QPalette::Base)) ? Dark : Light;
    const QColor highlight = row.palette.color(QPalette::Highlight);
    return Contrast::between(Light, highlight) > Contrast::between(Dark, highlight) ? Light : Dark;
}

QTextCharFormat markFormat(const QStyleOptionViewItem& row) {
    const QColor ground = markGround(row);
    QTextCharFormat format;
    format.setBackground(ground);
    format.setForeground(Contrast::readableOn(ground, row.palette.color(QPalette::Text)));
    return format;
}

/// The one line of the row.
class RowLayout {
 public:
    RowLayout(const QStyleOptionViewItem& row, const QString& text) : m_layout(text, row.font) {
        QTextOption plain;
        plain.setWrapMode(QTextOption::NoWrap);
        plain.setTextDirection(Qt::LeftToRight);
        plain.setTabStopDistance(TabWidth * QFontMetricsF(row.font).horizontalAdvance(u' '));
        m_layout.setTextOption(plain);
    }

    void mark(int start, int length, const QTextCharFormat& format) {
        QTextLayout::FormatRange range;
        range.start = start;
        range.length = length;
        range.format = format;
        m_layout.setFormats({range});
    }

    QSizeF lay() {
        m_layout.beginLayout();
        QTextLine line = m_layout.createLine();
        if (line.isValid())
            line.setPosition({});
        m_layout.endLayout();
        return line.isValid() ? QSizeF(line.naturalTextWidth(), line.height()) : QSizeF();
    }

    void draw(QPainter& painter, QPointF place) const { m_layout.draw(&painter, place); }

 private:
    QTextLayout m_layout;
};

/// The style draws the edge of a check box darker than a window, which is not visible on a dark ground.
void makeCheckBoxVisible(QPalette& palette) {
    constexpr int PercentOfText = 70;
    const QColor ground = palette.color(QPalette::Base);
    if (Contrast::isDark(ground))
        palette.setColor(QPalette::Window, Contrast::blended(ground, palette.color(QPalette::Text), PercentOfText));
}

QColor textColour(const QStyleOptionViewItem& row) {
    const auto group = (row.state & QStyle::State_Active) != 0 ? QPalette::Normal : QPalette::Inactive;
    return row.palette.color(group, isSelected(row) ? QPalette::HighlightedText : QPalette::Text);
}

}  // namespace

QString MatchDelegate::displayText(const QVariant& value, const QLocale&) const {
    return shownRowText(value.toString());
}

/// The style places check box, picture and selection by this. A blank stands for the text, so that the style does not
/// lay out what is drawn here.
QStyleOptionViewItem MatchDelegate::withoutText(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QStyleOptionViewItem row(option);
    initStyleOption(&row, index);
    makeCheckBoxVisible(row.palette);
    row.text = u" "_qs;
    row.showDecorationSelected = true;
    return row;
}

void MatchDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QStyleOptionViewItem row = withoutText(option, index);
    const QStyle& style = styleOf(row);
    style.drawControl(QStyle::CE_ItemViewItem, &row, painter, row.widget);

    RowLayout layout(row, displayText(index.data(), {}));
    if (const int length = index.data(SearchResultsModel::MarkLength).toInt(); length > 0)
        layout.mark(index.data(SearchResultsModel::MarkStart).toInt(), length, markFormat(row));
    const QSizeF size = layout.lay();
    const QRect place = style.subElementRect(QStyle::SE_ItemViewItemText, &row, row.widget);
    painter->save();
    painter->setClipRect(place, Qt::IntersectClip);
    painter->setPen(textColour(row));
    layout.draw(*painter, {place.left() + qreal(marginOf(row)), place.top() + (place.height() - size.height()) / 2});
    painter->restore();
}

QSize MatchDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QStyleOptionViewItem row = withoutText(option, index);
    const QSize frame = styleOf(row).sizeFromContents(QStyle::CT_ItemViewItem, &row, QSize(), row.widget);
    RowLayout layout(row, displayText(index.data(), {}));
    return {frame.width() + qCeil(layout.lay().width()), frame.height()};
}

QRect MatchDelegate::checkBox(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QStyleOptionViewItem row = withoutText(option, index);
    return styleOf(row).subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &row, row.widget);
}
