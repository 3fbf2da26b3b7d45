#pragma once

#include <QRect>

namespace tunedeck {

/// Where the panel goes: at its icon, or in the corner where trays usually are when `anchor` is empty, and never beyond
/// `available`, the part of `screen` that is free of bars. When there is too little height it gets less than `wanted`.
QRect popoverPlace(const QRect& anchor, const QSize& wanted, const QRect& screen, const QRect& available);

} // namespace tunedeck
