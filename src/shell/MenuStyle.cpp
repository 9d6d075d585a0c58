#include "shell/MenuStyle.h"

#include <QApplication>
#include <QMenu>
#include <QPainter>
#include <QStyleOptionMenuItem>

namespace {

const QLatin1String knownStyle("fusion");

bool isLit(const QStyleOptionMenuItem& item) {
    constexpr QStyle::State chosen = QStyle::State_Selected | QStyle::State_Enabled;
    // A checked picture stands on a plate of its own.
    return (item.state & chosen) == chosen && !item.icon.isNull() && !item.checked;
}

QIcon inOneColour(const QIcon& icon, int side, qreal ratio, const QColor& colour) {
    QPixmap picture = icon.pixmap(QSize(side, side), ratio);
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(QRect(0, 0, side, side), colour);
    return QIcon(picture);
}

}  // namespace

MenuStyle::MenuStyle(QMenu& menu) : QProxyStyle(knownStyle) {
    setParent(&menu);
}

void MenuStyle::giveTo(QMenu& menu) {
    if (QApplication::style()->name() == knownStyle)
        menu.setStyle(new MenuStyle(menu));
}

void MenuStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element != CE_MenuItem || item == nullptr || !isLit(*item)) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    QStyleOptionMenuItem lit(*item);
    lit.icon = inOneColour(item->icon, pixelMetric(PM_SmallIconSize, option, widget),
                           painter->device()->devicePixelRatio(), item->palette.color(QPalette::HighlightedText));
    QProxyStyle::drawControl(element, &lit, painter, widget);
}
