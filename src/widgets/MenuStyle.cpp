#include "widgets/MenuStyle.h"

#include "widgets/Contrast.h"

#include <QApplication>
#include <QIcon>
#include <QMenu>
#include <QPainter>
#include <QPointer>
#include <QStyleOptionMenuItem>

namespace {

const QLatin1String knownStyle("fusion");

bool isLit(const QStyleOptionMenuItem& item) {
    constexpr QStyle::State Chosen = QStyle::State_Selected | QStyle::State_Enabled;
    return (item.state & Chosen) == Chosen && !item.icon.isNull();
}

/// A checked picture has a background that is half the highlight and half the window.
QColor colourOn(const QStyleOptionMenuItem& item) {
    const QColor light = item.palette.color(QPalette::HighlightedText);
    if (!item.checked)
        return light;
    const QColor text = item.palette.color(QPalette::WindowText);
    const QColor plate =
        Contrast::blended(item.palette.color(QPalette::Window), item.palette.color(QPalette::Highlight), 50);
    return Contrast::between(light, plate) > Contrast::between(text, plate) ? light : text;
}

QIcon inOneColour(const QIcon& icon, int side, qreal ratio, const QColor& colour) {
    QPixmap picture = icon.pixmap(QSize(side, side), ratio);
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(QRect(0, 0, side, side), colour);
    return QIcon(picture);
}

}  // namespace

MenuStyle::MenuStyle() : QProxyStyle(knownStyle) {
    setParent(qApp);
}

void MenuStyle::giveTo(QMenu& menu) {
    static QPointer<MenuStyle> shared;
    if (QApplication::style()->name() != knownStyle)
        return;
    if (shared.isNull())
        shared = new MenuStyle;
    menu.setStyle(shared);
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
                           painter->device()->devicePixelRatio(), colourOn(*item));
    QProxyStyle::drawControl(element, &lit, painter, widget);
}
