#include "TunedeckCore/Support/Text/Base64.h"

namespace tunedeck {

std::optional<QByteArray> decodeBase64(const QByteArray& text) {
    const auto result = QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
    // Qt also accepts text without its padding.
    return result && text.size() % 4 == 0 ? std::optional(result.decoded) : std::nullopt;
}

} // namespace tunedeck
