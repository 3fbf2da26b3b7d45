#pragma once

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace tunedeck {

/// QR codes as bitmaps with one pixel per module; the view scales them.
namespace QRCode {

/// A square of modules, including a quiet zone of four on each side.
struct Image {
    int size = 0;                     ///< modules per side
    std::vector<std::uint8_t> pixels; ///< row by row, 1 for dark

    /// Whether the module in that column and row is dark.
    [[nodiscard]] bool isDark(int column, int row) const { return pixels[std::size_t(row) * size + column] != 0; }
    bool operator==(const Image&) const = default;
};

/// Encodes a text as UTF-8 with error-correction level M. Fails if it is empty or too long.
std::optional<Image> image(const QString& text);

} // namespace QRCode

} // namespace tunedeck
