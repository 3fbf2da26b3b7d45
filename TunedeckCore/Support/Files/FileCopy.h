#pragma once

#include <QString>

#include <sys/types.h>

#include <expected>

namespace tunedeck {

/// Whether two regular files hold the same bytes; false also when one can't be read. Reads in pieces.
bool haveSameBytes(const QString& one, const QString& other);

/// Puts a copy of a regular file with that mode in the place of another, which is wholly the old or wholly the new one
/// at every moment; a running program may be replaced so. The copy is made under `scratch`, a path in the same folder,
/// where nothing is left afterwards. An empty folder gives way, one with something in it doesn't. A failure names the
/// path and the platform's description.
std::expected<void, QString> installCopy(const QString& source, const QString& scratch, const QString& target,
                                         mode_t mode);

} // namespace tunedeck
