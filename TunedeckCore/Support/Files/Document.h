#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

namespace tunedeck {

/// Maximum size in bytes of the user's small documents: settings, JSON, YAML and property lists.
inline constexpr std::int64_t documentLimit = 1024 * 1024;

/// Why a document must neither be read nor replaced, as the end of a sentence: it is larger than `limit`, not a regular
/// file, or a link to anything but a regular file of this user. Nothing for other files, also missing ones.
std::optional<QString> documentProblem(const QString& path, std::int64_t limit = documentLimit);

/// Whether a document may be read. Logs a problem when it is new.
bool isReadableDocument(const QString& path);

/// Reads a document. Returns nothing if it is missing or unreadable, or must not be read.
std::optional<QByteArray> readDocument(const QString& path);

} // namespace tunedeck
