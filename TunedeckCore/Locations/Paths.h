#pragma once

#include <QString>

#include <optional>

namespace tunedeck {

/// A path as people read it: with "~" for the home folder it lies in, else as it is.
QString abbreviatingHome(const QString& path, const QString& home);

/// What people call the place of a path where the system may keep programs out or that may vanish ("your Desktop",
/// "an external or network drive"); nothing for any other path. A home that ends with "/" is taken at its word, so
/// that no folder in it is recognised.
std::optional<QString> protectedLocation(const QString& path, const QString& home);

} // namespace tunedeck
