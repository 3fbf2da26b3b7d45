#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

namespace tunedeck::test {

/// WCAG's relative luminance, 0 to 1.
inline double luminance(const QColor& colour) {
    const auto linear = [](float part) {
        return part <= 0.04045F ? part / 12.92F : std::pow((part + 0.055F) / 1.055F, 2.4F);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// WCAG's contrast of two luminances, 1 to 21.
inline double contrast(double a, double b) {
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

inline double contrast(const QColor& a, const QColor& b) {
    return contrast(luminance(a), luminance(b));
}

} // namespace tunedeck::test
