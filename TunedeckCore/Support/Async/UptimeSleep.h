#pragma once

#include <QCoroTask>

#include <chrono>
#include <stop_token>

namespace tunedeck {

/// Waits until SystemClock::uptime() has reached a moment, in naps of at most a minute: time suspended counts, but the
/// wait may end up to a minute late after it. Returns true when the time has passed, false at once when stopped.
QCoro::Task<bool> sleepUntilUptime(std::chrono::nanoseconds moment, std::stop_token stop);

} // namespace tunedeck
