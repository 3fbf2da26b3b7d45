#pragma once

#include <QRgb>

#include <optional>

namespace tunedeck {

/// The desktop's appearance settings, which the windows follow live.
struct Appearance {
    bool dark = false;
    bool reduceMotion = false;
    bool moreContrast = false;
    std::optional<QRgb> accent = {}; ///< of filled controls; the application's own where the desktop has none
    bool operator==(const Appearance&) const = default;
};

} // namespace tunedeck
