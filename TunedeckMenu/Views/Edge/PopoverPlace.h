#pragma once

#include <QRect>

namespace tunedeck {

/// Where the panel goes: at its icon, or in the corner where trays usually are when `anchor` is empty, and never beyond
/// `available`, the part of `screen` that is free of bars. When there is too little height it gets less than `wanted`.
QRect popoverPlace(const QRect& anchor, const QSize& wanted, const QRect& screen, const QRect& available);

/// The least height, in points and no lower than `wanted`, that a window has to ask for to be given it at this device
/// pixel ratio. Qt tells X11 window managers to size windows in steps of the ratio as a whole number of pixels, and
/// they round down: at one and a half, a window of 1647 pixels becomes one of 1646 and a point too low.
int steadyHeight(int wanted, double ratio);

} // namespace tunedeck
