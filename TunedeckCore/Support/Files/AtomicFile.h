#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <expected>
#include <optional>

namespace tunedeck {

/// Reads a regular file. Returns nothing if it is missing, unreadable, not a regular file or larger than `limit` bytes.
/// Never blocks on a FIFO.
std::optional<QByteArray> readFile(const QString& path, std::int64_t limit = 64 * 1024 * 1024);

/// Replaces the contents of a file: on success they are on disk, on failure the old ones are kept. Keeps the mode and
/// owner of an existing file, follows symbolic links and refuses anything but regular files. The folder must exist.
/// Errors are those of fileError().
std::expected<void, QString> writeFileAtomically(const QString& path, const QByteArray& bytes);

/// Creates a folder and its parents; succeeds if it exists. Errors are those of fileError().
std::expected<void, QString> createFolder(const QString& path);

/// Describes a failed file operation: the path and the system's description of an errno.
QString fileError(const QString& path, int code);

} // namespace tunedeck
