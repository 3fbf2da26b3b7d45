#pragma once

#include "TunedeckCore/Support/Files/Document.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <expected>
#include <optional>

namespace tunedeck {

/// Reads a regular file. Returns nothing if it is missing, unreadable, not a regular file or larger than `limit` bytes.
/// Never blocks on a FIFO.
std::optional<QByteArray> readFile(const QString& path, std::int64_t limit = documentLimit);

/// Replaces the contents of a file: on success they are on disk, on failure the old ones are kept. Keeps the mode and
/// owner of an existing file. Follows a link to a regular file of this user, and refuses other links, files that aren't
/// regular, and files larger than `limit` (documentProblem()). The folder must exist. Errors are sentences or those of
/// fileError().
std::expected<void, QString> writeFileAtomically(const QString& path, const QByteArray& bytes,
                                                 std::int64_t limit = documentLimit);

/// Creates a folder and its parents; succeeds if it exists. Errors are those of fileError().
std::expected<void, QString> createFolder(const QString& path);

/// Describes a failed file operation: the path and the system's description of an errno.
QString fileError(const QString& path, int code);

} // namespace tunedeck
