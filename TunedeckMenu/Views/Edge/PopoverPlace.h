#pragma once

#include <QRect>

namespace tunedeck {

/// Position of the popover: at the tray icon, or in the corner where trays usually are when `anchor` is empty. Always
/// inside `available`, the part of `screen` without bars; smaller than `wanted` if there is too little room.
QRect popoverPlace(const QRect& anchor, const QSize& wanted, const QRect& screen, const QRect& available);

/// The smallest height of at least `wanted` points that X11 window managers keep at this device pixel ratio. Qt sets
/// the size increment to the rounded ratio in pixels, and window managers round down to it: at 1.5x, a window of 1647
/// pixels becomes 1646 pixels, one point too low.
int steadyHeight(int wanted, double ratio);

} // namespace tunedeck
