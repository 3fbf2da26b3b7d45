#pragma once

#include "TunedeckCore/Update/UpdateError.h"
#include "UpdateHelper/Options.h"

#include <QString>

#include <expected>

namespace tunedeck::helper {

/// A subcommand's answer. It runs with only the permissions that main() leaves it.
using Outcome = std::expected<QString, UpdateError>;

/// Downloads a URL to standard output and reports progress on standard error as lines `progress RECEIVED TOTAL` (in
/// bytes; -1 for an unknown total), at most ten per second. Any status but 200 is an error, which ends the transfer
/// without its body.
///
/// Follows up to ten redirects, but never from https to http. Uses neither caches nor cookies.
Outcome fetch(const Options& options);

/// Returns the SHA-256 of a file, or checks the update feed on standard input, which follows its signature (checksum
/// error).
Outcome verify(const Options& options);

/// Unpacks an archive into a folder, validates the application in it, and returns its name.
Outcome unpack(const Options& options);

} // namespace tunedeck::helper
