#include "TunedeckCore/Support/Async/Clock.h"

#include "TunedeckCore/Support/Async/UptimeSleep.h"

#include <mach/mach_time.h>

#include <algorithm>

namespace tunedeck {

using namespace std::chrono_literals;

std::chrono::nanoseconds SystemClock::uptime() const {
    mach_timebase_info_data_t base{};
    mach_timebase_info(&base);
    // In two parts, because the product of all ticks and the numerator overflows after 36 days at 24 MHz.
    const auto ticks = mach_continuous_time();
    const auto whole = ticks / base.denom * base.numer;
    const auto rest = ticks % base.denom * base.numer / base.denom;
    return std::chrono::nanoseconds(whole + rest);
}

QCoro::Task<bool> SystemClock::sleepThroughSuspend(std::chrono::milliseconds duration, std::stop_token stop) {
    return sleepUntilUptime(uptime() + std::clamp(duration, 0ms, maxSleep), std::move(stop));
}

} // namespace tunedeck
