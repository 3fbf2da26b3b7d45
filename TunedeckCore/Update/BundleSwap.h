#pragma once

#include "TunedeckCore/Update/UpdateError.h"

#include <QString>

#include <expected>

namespace tunedeck::UpdateInstaller {

/// Swaps the bundle `with` into the place of the installed one and removes the old bundle. Both must be on the same
/// volume. Returns the path of the installed bundle.
std::expected<QString, UpdateError> replace(const QString& installed, const QString& with);

} // namespace tunedeck::UpdateInstaller
