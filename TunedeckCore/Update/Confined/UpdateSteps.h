#pragma once

#include "TunedeckCore/Update/UpdateError.h"

#include <QString>

#include <expected>

namespace tunedeck::UpdateInstaller {

// The steps of an installation that handle an archive's contents. Only the update helper runs them.

/// SHA-256 of a file in lower-case hexadecimal.
std::expected<QString, UpdateError> sha256Hex(const QString& path);

/// Creates the folder, unpacks the archive into it and returns the path of the application in it.
std::expected<QString, UpdateError> unpack(const QString& zip, const QString& folder);

/// Checks that the application has this identifier and exactly this version, and a program that could be executed.
std::expected<void, UpdateError> validate(const QString& app, const QString& bundleID, const QString& version);

} // namespace tunedeck::UpdateInstaller
