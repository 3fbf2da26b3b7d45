#include "TunedeckCore/Support/Async/Clock.h"

#include "TunedeckCore/Support/Async/UptimeSleep.h"
#include "TunedeckCore/Support/Async/Wait.h"
#include "TunedeckCore/Support/Files/FileDescriptor.h"

#include <QSocketNotifier>

#include <sys/timerfd.h>
#include <time.h>

#include <algorithm>

namespace tunedeck {

namespace {

using namespace std::chrono_literals;
using std::chrono::nanoseconds;

nanoseconds bootTime() {
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return std::chrono::seconds(time.tv_sec) + nanoseconds(time.tv_nsec);
}

/// A descriptor that becomes readable when CLOCK_BOOTTIME reaches a moment; invalid if the process has no descriptors
/// left.
FileDescriptor bootTimer(nanoseconds moment) {
    FileDescriptor timer(timerfd_create(CLOCK_BOOTTIME, TFD_CLOEXEC | TFD_NONBLOCK));
    const auto seconds = std::chrono::floor<std::chrono::seconds>(moment);
    itimerspec when{};
    when.it_value.tv_sec = seconds.count();
    when.it_value.tv_nsec = (moment - seconds).count();
    if (timer && timerfd_settime(timer.get(), TFD_TIMER_ABSTIME, &when, nullptr) != 0) {
        timer.close();
    }
    return timer;
}

} // namespace

nanoseconds SystemClock::uptime() const {
    return bootTime();
}

QCoro::Task<bool> SystemClock::sleepThroughSuspend(std::chrono::milliseconds duration, std::stop_token stop) {
    const auto end = bootTime() + std::clamp(duration, 0ms, maxSleep);
    const auto timer = bootTimer(end);
    if (timer) {
        Wait wait(stop);
        QSocketNotifier notifier(timer.get(), QSocketNotifier::Read);
        QObject::connect(&notifier, &QSocketNotifier::activated, [&wait] { wait.wake(); });
        co_return co_await wait.next();
    }
    const bool slept = co_await sleepUntilUptime(end, stop);
    co_return slept;
}

} // namespace tunedeck
