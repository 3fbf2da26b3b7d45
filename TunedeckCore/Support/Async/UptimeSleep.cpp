#include "TunedeckCore/Support/Async/UptimeSleep.h"

#include "TunedeckCore/Support/Async/Clock.h"

#include <algorithm>

namespace tunedeck {

using namespace std::chrono_literals;

QCoro::Task<bool> sleepUntilUptime(std::chrono::nanoseconds moment, std::stop_token stop) {
    SystemClock clock;
    do {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(moment - clock.uptime());
        const auto nap = std::clamp(left, 0ms, std::chrono::milliseconds(1min));
        const bool slept = co_await clock.sleep(nap, stop);
        if (!slept) {
            co_return false;
        }
    } while (clock.uptime() < moment);
    co_return true;
}

} // namespace tunedeck
