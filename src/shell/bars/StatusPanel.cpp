#include "shell/bars/StatusPanel.h"

#include "widgets/FocusFrame.h"
#include "widgets/PlainKey.h"

#include <QPainter>

namespace {

constexpr int PictureSize = 16;
constexpr int GapWidth = 4;

}  // namespace

StatusPanel::StatusPanel(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::TabFocus);
}

void StatusPanel::setText(const QString& text) {
    if (text == m_text)
        return;
    m_text = text;
    setAccessibleName(text.isEmpty() ? accessibleDescription() : text);
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
    FocusFrame::paint(*this);
}

void StatusPanel::mouseDoubleClickEvent(QMouseEvent*) {
    Q_EMIT doubleClicked();
}

void StatusPanel::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (isPlainKey(*event) && (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space))
        Q_EMIT doubleClicked();
    else if (isPlainKey(*event) && key == Qt::Key_Escape)
        Q_EMIT left();
    else
        QWidget::keyPressEvent(event);
}

void StatusPanel::focusInEvent(QFocusEvent*) {
    update();
}

void StatusPanel::focusOutEvent(QFocusEvent*) {
    update();
}
