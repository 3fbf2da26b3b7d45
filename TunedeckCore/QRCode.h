#pragma once

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace tunedeck {

/// QR codes as bitmaps, one pixel for each module; enlarging is the view's affair.
namespace QRCode {

/// A square of modules, the quiet zone of four on each side included.
struct Image {
    int size = 0;                     ///< modules on a side
    std::vector<std::uint8_t> pixels; ///< row by row, 1 for dark

    /// Whether the module in that column and row is dark.
    [[nodiscard]] bool isDark(int column, int row) const { return pixels[std::size_t(row) * size + column] != 0; }
    bool operator==(const Image&) const = default;
};

/// The code of a text as UTF-8 bytes with error-correction level M; nothing when it is empty or too long for a code.
std::optional<Image> image(const QString& text);

} // namespace QRCode

} // namespace tunedeck
