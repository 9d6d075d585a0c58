#include "hex/grid/OffsetPane.h"

#include "hex/grid/GridPane.h"

#include <QFontMetricsF>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

namespace {

constexpr int Left = 3;
constexpr int RoomForMarker = 12;

}  // namespace

OffsetPane::OffsetPane(QWidget* parent) : QWidget(parent) {
    setFont(GridPane::paneFont());
    const double width = QFontMetricsF(font()).horizontalAdvance(u"0000000000"_qs);
    setFixedSize(Left + static_cast<int>(width) + RoomForMarker, GridPane::Height);
}

void OffsetPane::setTexts(const QStringList& texts) {
    m_texts = texts;
    setAccessibleDescription(texts.join(u'\n'));
    update();
}

void OffsetPane::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setFont(font());
    painter.setPen(palette().color(QPalette::WindowText));
    const QFontMetricsF metrics(font());
    for (qsizetype row = 0; row < m_texts.size(); ++row) {
        const double top =
            static_cast<double>(row) * GridPane::RowHeight + (GridPane::RowHeight - metrics.height()) / 2;
        painter.drawText(QPoint(Left, qRound(top + metrics.ascent())), m_texts[row]);
    }
}

void OffsetPane::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        Q_EMIT clicked();
}

void OffsetPane::wheelEvent(QWheelEvent* event) {
    Q_EMIT wheelTurned(event);
}
