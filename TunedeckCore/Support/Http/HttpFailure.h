#pragma once

namespace tunedeck {

/// Why there is no complete reply.
enum class HttpFailure { Unreachable, TimedOut, BrokenOff, Malformed, TooLarge, Cancelled };

} // namespace tunedeck
