#include "shell/bars/StatusPanel.h"

#include <QPainter>

namespace {

constexpr int PictureSize = 16;
constexpr int GapWidth = 4;

}  // namespace

StatusPanel::StatusPanel(QWidget* parent) : QWidget(parent) {}

void StatusPanel::setText(const QString& text) {
    if (text == m_text)
        return;
    m_text = text;
    setAccessibleName(text);
    setToolTip(text);
    update();
}

void StatusPanel::setPicture(const QIcon& picture) {
    m_picture = picture;
    updateGeometry();
    update();
}

void StatusPanel::setRoomFor(int letters) {
    m_letters = letters;
    updateGeometry();
}

int StatusPanel::pictureRoom() const {
    return m_picture.isNull() ? GapWidth : PictureSize + 2 * GapWidth;
}

QRect StatusPanel::textRoom() const {
    return rect().adjusted(pictureRoom(), 0, -GapWidth, 0);
}

bool StatusPanel::isCutOff() const {
    return fontMetrics().horizontalAdvance(m_text) > textRoom().width();
}

QSize StatusPanel::sizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    return {pictureRoom() + m_letters * metrics.averageCharWidth() + GapWidth,
            qMax(metrics.height(), PictureSize) + GapWidth};
}

QSize StatusPanel::minimumSizeHint() const {
    return {0, sizeHint().height()};
}

void StatusPanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect inner = rect();
    if (!m_picture.isNull())
        m_picture.paint(&painter, QRect(GapWidth, (inner.height() - PictureSize) / 2, PictureSize, PictureSize));
    const QRect room = textRoom();
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(room, Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(m_text, Qt::ElideRight, room.width()));
}

void StatusPanel::mouseDoubleClickEvent(QMouseEvent*) {
    Q_EMIT doubleClicked();
}
