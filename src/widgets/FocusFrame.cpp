#include "widgets/FocusFrame.h"

#include <QStyleOptionFocusRect>
#include <QStylePainter>

void FocusFrame::paint(QWidget& widget) {
    if (!widget.hasFocus())
        return;
    QStylePainter painter(&widget);
    QStyleOptionFocusRect option;
    option.initFrom(&widget);
    option.state |= QStyle::State_KeyboardFocusChange;
    option.backgroundColor = widget.palette().color(widget.backgroundRole());
    painter.drawPrimitive(QStyle::PE_FrameFocusRect, option);
}
