#pragma once

#include <QByteArray>

#include <optional>

namespace tunedeck {

/// Reads standard base64 with its padding; nothing when there is any other character, line breaks included.
std::optional<QByteArray> decodeBase64(const QByteArray& text);

} // namespace tunedeck
