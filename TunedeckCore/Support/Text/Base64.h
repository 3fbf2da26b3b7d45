#pragma once

#include <QByteArray>

#include <optional>

namespace tunedeck {

/// Decodes standard base64 with its padding. Rejects any other character, including line breaks.
std::optional<QByteArray> decodeBase64(const QByteArray& text);

} // namespace tunedeck
