// Room at the lower edge of the control.

#include "editor/control/TextControl.h"

#include <QResizeEvent>

void TextControl::setBottomBar(QWidget* bar) {
    m_bottomBar = bar;
    setViewportMargins(0, 0, 0, bar == nullptr ? 0 : bar->sizeHint().height());
    placeBottomBar();
}

void TextControl::placeBottomBar() {
    if (m_bottomBar == nullptr)
        return;
    const QRect text = viewport()->geometry();
    m_bottomBar->setGeometry(text.left(), text.bottom() + 1, text.width(), m_bottomBar->sizeHint().height());
}

void TextControl::resizeEvent(QResizeEvent* event) {
    QsciScintillaBase::resizeEvent(event);
    placeBottomBar();
}
