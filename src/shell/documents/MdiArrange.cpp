#include "shell/documents/MdiArrange.h"

#include "document/frmDocument.h"
#include "shell/documents/MdiChildren.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStyle>

namespace MdiArrange {
namespace {

struct Windows {
    QList<QMdiSubWindow*> open;
    QList<QMdiSubWindow*> minimised;
};

Windows sorted(const QList<QMdiSubWindow*>& all) {
    Windows windows;
    for (QMdiSubWindow* window : all)
        (window->isMinimized() ? windows.minimised : windows.open).append(window);
    return windows;
}

QList<QMdiSubWindow*> windowsByLoading(const MdiChildren& children) {
    QList<QMdiSubWindow*> windows;
    for (const frmDocument* document : children.documents())
        windows.append(children.windowOf(document));
    return windows;
}

/// The area without the minimised windows along the lower edge.
QRect roomAbove(const QRect& viewport, const QList<QMdiSubWindow*>& minimised) {
    int top = viewport.bottom() + 1;
    for (const QMdiSubWindow* window : minimised)
        top = qMin(top, window->geometry().top());
    const QRect above(viewport.topLeft(), QSize(viewport.width(), top - viewport.top()));
    return above.height() > viewport.height() / 4 ? above : viewport;
}

void place(const QList<QMdiSubWindow*>& windows, const QList<QRect>& places) {
    for (qsizetype i = 0; i < windows.size(); ++i) {
        windows.at(i)->showNormal();
        windows.at(i)->setGeometry(places.at(i));
    }
}

void placeIcons(const QList<QMdiSubWindow*>& windows, const QRect& room) {
    if (windows.isEmpty())
        return;
    const QList<QPoint> corners = iconCorners(room, static_cast<int>(windows.size()), windows.first()->size());
    for (qsizetype i = 0; i < windows.size(); ++i)
        windows.at(i)->move(corners.at(i));
}

}  // namespace

QList<QRect> bands(const QRect& room, int count) {
    QList<QRect> rects;
    for (int i = 0; i < count; ++i) {
        const int top = room.top() + room.height() * i / count;
        const int next = room.top() + room.height() * (i + 1) / count;
        rects.append(QRect(room.left(), top, room.width(), next - top));
    }
    return rects;
}

QList<QRect> columns(const QRect& room, int count) {
    QList<QRect> rects;
    for (int i = 0; i < count; ++i) {
        const int left = room.left() + room.width() * i / count;
        const int next = room.left() + room.width() * (i + 1) / count;
        rects.append(QRect(left, room.top(), next - left, room.height()));
    }
    return rects;
}

QList<QRect> cascade(const QRect& room, int count, int step) {
    const QSize size(room.width() * 2 / 3, room.height() * 2 / 3);
    const int across = qMax(1, (room.width() - size.width()) / qMax(1, step) + 1);
    const int down = qMax(1, (room.height() - size.height()) / qMax(1, step) + 1);
    const int turn = qMin(across, down);
    QList<QRect> rects;
    for (int i = 0; i < count; ++i) {
        const int shift = i % turn * step;
        rects.append(QRect(room.topLeft() + QPoint(shift, shift), size));
    }
    return rects;
}

QList<QPoint> iconCorners(const QRect& room, int count, const QSize& size) {
    const int perRow = qMax(1, room.width() / qMax(1, size.width()));
    QList<QPoint> corners;
    for (int i = 0; i < count; ++i)
        corners.append({room.left() + i % perRow * size.width(), room.bottom() + 1 - (i / perRow + 1) * size.height()});
    return corners;
}

void arrange(MdiChildren& children, int mode) {
    const QRect viewport = children.area().viewport()->rect();
    frmDocument* active = children.active();
    const Windows windows = sorted(mode == Cascade ? children.windowsByOrder() : windowsByLoading(children));
    const QRect room = roomAbove(viewport, windows.minimised);
    const int count = static_cast<int>(windows.open.size());
    switch (mode) {
        case Cascade:
            place(windows.open,
                  cascade(room, count, children.area().style()->pixelMetric(QStyle::PM_TitleBarHeight) + 4));
            break;
        case Horizontal:
            place(windows.open, bands(room, count));
            break;
        case Vertical:
            place(windows.open, columns(room, count));
            break;
        case Icons:
            placeIcons(windows.minimised, viewport);
            return;
        default:
            return;
    }
    if (active != nullptr && !children.windowOf(active)->isMinimized())
        children.bringToFront(active);
}

}  // namespace MdiArrange
