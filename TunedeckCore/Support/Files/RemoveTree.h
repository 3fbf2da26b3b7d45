#pragma once

#include <QString>

namespace tunedeck {

/// Removes a file, or a folder with all that is in it, whatever its names and permissions; links are removed, never
/// followed. False when something is left.
bool removeTree(const QString& path);

} // namespace tunedeck
