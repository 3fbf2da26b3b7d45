#pragma once

#include <QRect>
#include <QRectF>

namespace tunedeck {

/// Converts a rectangle from coordinates whose origin is the lower left corner of the primary screen, with y upwards,
/// to Qt's, whose origin is that screen's upper left corner.
inline QRect fromLowerLeft(const QRectF& rectangle, double primaryHeight) {
    return QRectF(rectangle.x(), primaryHeight - rectangle.bottom(), rectangle.width(), rectangle.height())
        .toAlignedRect();
}

} // namespace tunedeck
