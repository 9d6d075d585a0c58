#pragma once

#include <QList>
#include <QRect>

class MdiChildren;

/// The places of child windows when they are arranged. Geometry alone, in logical pixels; windows that do not fit are
/// made as small as needed.
namespace MdiArrange {

enum Mode {
    Cascade = 0,
    Horizontal = 1,  ///< bands over the full width, one below the other
    Vertical = 2,    ///< columns over the full height, side by side
    Icons = 3,       ///< minimised windows in rows along the lower edge
};

QList<QRect> bands(const QRect& room, int count);
QList<QRect> columns(const QRect& room, int count);
/// Each a step right of and below the one before, beginning again at the corner when the room ends.
QList<QRect> cascade(const QRect& room, int count, int step);
/// Corners of `count` windows of one size, from the lower left on, rows growing upwards.
QList<QPoint> iconCorners(const QRect& room, int count, const QSize& size);

/// Arranges the children. Modes 0 to 2 leave minimised windows alone and end the maximised state.
void arrange(MdiChildren& children, int mode);

}  // namespace MdiArrange
