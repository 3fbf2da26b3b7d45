#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace tunedeck::demo {

/// A point of calendar time, in UTC.
using Moment = std::chrono::sys_time<std::chrono::milliseconds>;
/// A length of time.
using Span = std::chrono::milliseconds;

/// The present time of the machine.
Moment currentMoment();

/// `moment` without its fraction of a second; what clients get to see is in whole seconds.
Moment wholeSecond(Moment moment);

/// ISO 8601 in UTC, as in "2026-11-21T09:00:00Z"; with ".mmm" only when there is a fraction.
std::string isoText(Moment moment);

/// Reads what isoText() writes; nothing for any other text.
std::optional<Moment> fromIsoText(std::string_view text);

} // namespace tunedeck::demo
