#pragma once

#include "UpdateHelper/Options.h"

#include <expected>
#include <string>

namespace tunedeck::fetch {

/// Downloads to a file and reports progress on standard output as lines `progress RECEIVED TOTAL` (in bytes; -1 for an
/// unknown total), at most ten per second. Returns the HTTP status of the final response, or a description of the
/// transport error. The file stays empty unless the status is 200.
///
/// Follows up to ten redirects, but never from https to http. Uses neither caches nor cookies.
std::expected<long, std::string> transfer(const Options& options);

} // namespace tunedeck::fetch
