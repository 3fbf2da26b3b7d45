#include "TunedeckCore/QRCode.h"

#include <qrencode.h>

#include <memory>

namespace tunedeck::QRCode {

namespace {

constexpr int quietZone = 4; // modules on each side, as ISO/IEC 18004 asks for

} // namespace

std::optional<Image> image(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    const std::unique_ptr<QRcode, decltype(&QRcode_free)> code(
        QRcode_encodeData(static_cast<int>(bytes.size()), reinterpret_cast<const unsigned char*>(bytes.constData()), 0,
                          QR_ECLEVEL_M),
        &QRcode_free);
    if (!code) {
        return std::nullopt;
    }
    Image made{.size = code->width + 2 * quietZone};
    made.pixels.resize(std::size_t(made.size) * made.size);
    for (int row = 0; row < code->width; ++row) {
        for (int column = 0; column < code->width; ++column) {
            // The lowest bit of a module is its colour.
            made.pixels[std::size_t(row + quietZone) * made.size + column + quietZone] =
                code->data[std::size_t(row) * code->width + column] & 1U;
        }
    }
    return made;
}

} // namespace tunedeck::QRCode
