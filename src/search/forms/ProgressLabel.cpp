#include "search/forms/ProgressLabel.h"

#include <QMouseEvent>
#include <QStylePainter>

namespace {

constexpr int Lines = 3;
constexpr int Width = 76;  ///< characters

}  // namespace

ProgressLabel::ProgressLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setCursor(Qt::SizeAllCursor);
}

QSize ProgressLabel::sizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    return {Width * metrics.averageCharWidth(), Lines * metrics.lineSpacing()};
}

QStringList ProgressLabel::shownLines() const {
    QStringList lines = text().split(u"\r\n"_qs).mid(0, Lines);
    for (QString& line : lines)
        line = fontMetrics().elidedText(line, Qt::ElideMiddle, width());
    return lines;
}

void ProgressLabel::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QRect place(0, 0, width(), fontMetrics().lineSpacing());
    for (const QString& line : shownLines()) {
        painter.drawItemText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, palette(), isEnabled(), line,
                             foregroundRole());
        place.translate(0, place.height());
    }
}

// Dragging

void ProgressLabel::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    m_grip = event->globalPosition().toPoint() - window()->pos();
    m_isDragging = true;
}

void ProgressLabel::mouseMoveEvent(QMouseEvent* event) {
    if (m_isDragging)
        window()->move(event->globalPosition().toPoint() - m_grip);
}

void ProgressLabel::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        m_isDragging = false;
}

void ProgressLabel::hideEvent(QHideEvent* event) {
    m_isDragging = false;
    QLabel::hideEvent(event);
}
