#pragma once

namespace tunedeck {

/// The desktop's appearance settings, which the windows follow live.
struct Appearance {
    bool dark = false;
    bool reduceMotion = false;
    bool operator==(const Appearance&) const = default;
};

} // namespace tunedeck
