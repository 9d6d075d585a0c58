#include "shell/bars/TabStrip.h"

#include <QContextMenuEvent>
#include <QMouseEvent>

TabStrip::TabStrip(QWidget* parent) : QTabBar(parent) {
    setObjectName(u"TabStrip1"_qs);
    setAccessibleName(u"Open documents"_qs);
    setExpanding(false);
    setUsesScrollButtons(true);
    setElideMode(Qt::ElideNone);
    setFocusPolicy(Qt::TabFocus);  // a click leaves the focus in the text
}

void TabStrip::mousePressEvent(QMouseEvent* event) {
    const int tab = tabAt(event->position().toPoint());
    if (event->button() == Qt::RightButton && tab >= 0)
        setCurrentIndex(tab);
    QTabBar::mousePressEvent(event);
}

void TabStrip::mouseReleaseEvent(QMouseEvent* event) {
    QTabBar::mouseReleaseEvent(event);
    if (event->button() == Qt::RightButton && count() > 0)
        Q_EMIT menuWanted(event->globalPosition().toPoint());
}

void TabStrip::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() == QContextMenuEvent::Keyboard && count() > 0)
        Q_EMIT menuWanted(mapToGlobal(tabRect(currentIndex()).center()));
}
