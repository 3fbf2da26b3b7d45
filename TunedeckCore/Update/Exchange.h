#pragma once

#include <QByteArray>

namespace tunedeck {

/// Exchanges two folders of the same volume in one atomic step. False, with errno set, on failure: ENOTSUP where the
/// file system can't exchange.
bool exchangeFolders(const QByteArray& first, const QByteArray& second);

/// Writes the volume that holds the folder to disk.
void syncVolume(const QByteArray& folder);

} // namespace tunedeck
