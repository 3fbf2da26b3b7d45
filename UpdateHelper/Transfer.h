#pragma once

#include "UpdateHelper/Options.h"

#include <expected>
#include <string>

namespace tunedeck::fetch {

/// Downloads to the file and reports progress on standard output in lines `progress RECEIVED TOTAL` (bytes; -1 for a
/// total that isn't known), ten a second at the most. Gives the final answer's HTTP status, or the transport's own
/// words for what went wrong. The body of an answer other than 200 is not kept.
///
/// Redirects lead from http to http or https and from https to https only, ten at the most. Nothing is taken from
/// caches or cookies.
std::expected<long, std::string> transfer(const Options& options);

} // namespace tunedeck::fetch
