#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <expected>
#include <optional>

namespace tunedeck {

/// The bytes of a regular file, or nothing when it is missing, unreadable, no regular file (a FIFO is never waited
/// for) or larger than the limit in bytes.
std::optional<QByteArray> readFile(const QString& path, std::int64_t limit = 64 * 1024 * 1024);

/// Replaces a file as a whole: after success it holds exactly these bytes, also after a power failure; after a failure
/// what it held before. Keeps an existing file's mode and owner and follows a symbolic link to what it names. Refuses
/// what is no regular file. The folder must exist. A failure names the path and the platform's description.
std::expected<void, QString> writeFileAtomically(const QString& path, const QByteArray& bytes);

/// Creates a folder with those above it; success when it exists already. A failure names the path and the platform's
/// description.
std::expected<void, QString> createFolder(const QString& path);

/// The sentence for a file operation that failed with that errno: the path and the platform's description.
QString fileError(const QString& path, int code);

} // namespace tunedeck
