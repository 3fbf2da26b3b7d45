#pragma once

#include <QString>

#include <optional>

namespace tunedeck {

/// Replaces the home folder at the beginning of a path by "~".
QString abbreviatingHome(const QString& path, const QString& home);

/// The user's name for a location that the system may protect or that may be unmounted ("your Desktop", "an external or
/// network drive"); nothing for other paths. `home` must not end with "/".
std::optional<QString> protectedLocation(const QString& path, const QString& home);

} // namespace tunedeck
