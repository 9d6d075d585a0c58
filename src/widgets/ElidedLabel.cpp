#include "widgets/ElidedLabel.h"

#include <QHelpEvent>
#include <QStyle>
#include <QStylePainter>
#include <QToolTip>

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

QString ElidedLabel::shownText() const {
    return fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
}

/// One line, also with a path in it that has a line break.
QSize ElidedLabel::sizeHint() const {
    const QMargins around = contentsMargins();
    return {QLabel::sizeHint().width(), fontMetrics().height() + around.top() + around.bottom()};
}

QSize ElidedLabel::minimumSizeHint() const {
    return {QLabel::minimumSizeHint().width(), sizeHint().height()};
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const QString tip = shownText() == text() ? QString() : text().toHtmlEscaped();
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), tip, this);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    painter.drawItemText(contentsRect(), static_cast<int>(alignment()) | Qt::TextSingleLine, palette(), isEnabled(),
                         shownText(), foregroundRole());
}
