#pragma once

#include "TunedeckCore/Support/Json/Value.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <expected>

namespace tunedeck::demo {

inline constexpr std::int64_t fileLimit = 64 * 1024 * 1024; ///< of the demo's own files, in bytes

/// The object in a file; an empty one when the file can't be read.
json::Object readObject(const QString& path);

/// Writes a file atomically and creates its folder first.
std::expected<void, QString> writeFile(const QString& path, const QByteArray& bytes);

} // namespace tunedeck::demo
