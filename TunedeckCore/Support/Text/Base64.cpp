#include "TunedeckCore/Support/Text/Base64.h"

#include <algorithm>

namespace tunedeck {

namespace {

bool isBase64(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' || c == '/';
}

} // namespace

std::optional<QByteArray> decodeBase64(const QByteArray& text) {
    const qsizetype padding = text.endsWith("==") ? 2 : text.endsWith('=') ? 1 : 0;
    if (text.size() % 4 != 0 || !std::all_of(text.begin(), text.end() - padding, isBase64)) {
        return std::nullopt;
    }
    return QByteArray::fromBase64(text);
}

} // namespace tunedeck
