#pragma once

#include <QRect>

namespace tunedeck {

/// Position of the popover: at the tray icon, or in the corner where trays usually are when `anchor` is empty. Always
/// inside `available`, the part of `screen` without bars; smaller than `wanted` if there is too little room.
QRect popoverPlace(const QRect& anchor, const QSize& wanted, const QRect& screen, const QRect& available);

} // namespace tunedeck
