#pragma once

#include <QString>

namespace tunedeck {

/// Removes a file or a folder with its contents, regardless of permissions. Symbolic links aren't followed. False if
/// something is left.
bool removeTree(const QString& path);

} // namespace tunedeck
