#pragma once

#include <QString>

#include <sys/types.h>

#include <expected>

namespace tunedeck {

/// Compares two regular files byte by byte; false if one can't be read.
bool haveSameBytes(const QString& one, const QString& other);

/// Atomically replaces `target` by a copy of a regular file with that mode; `target` may be a running program. The copy
/// is made at `scratch`, a path in the same folder, which is removed on failure. An empty folder at `target` is
/// replaced, too. Errors are those of fileError().
std::expected<void, QString> installCopy(const QString& source, const QString& scratch, const QString& target,
                                         mode_t mode);

} // namespace tunedeck
