#include "TunedeckCore/Support/Async/Clock.h"

#include "TunedeckCore/Support/Async/Wait.h"
#include "TunedeckCore/Support/Files/FileDescriptor.h"

#include <QSocketNotifier>
#include <QTimer>

#include <sys/timerfd.h>
#include <time.h>

#include <algorithm>

namespace tunedeck {

namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;
using std::chrono::nanoseconds;

/// Far enough for any sleep, near enough for nanoseconds never to overflow.
constexpr milliseconds longestSleep = std::chrono::hours(24 * 365 * 100);

nanoseconds read(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return std::chrono::seconds(time.tv_sec) + nanoseconds(time.tv_nsec);
}

nanoseconds end(clockid_t clock, milliseconds duration) {
    return read(clock) + std::clamp(duration, 0ms, longestSleep);
}

/// Timers may fire early and count no more than 24 days: the clock decides, they only say when to look.
QCoro::Task<bool> sleepByTimer(clockid_t clock, nanoseconds end, milliseconds longestNap, std::stop_token stop) {
    Wait wait(stop);
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, [&wait] { wait.wake(); });
    do {
        const auto left = std::chrono::ceil<milliseconds>(end - read(clock));
        timer.start(std::clamp(left, 0ms, longestNap));
        if (!co_await wait.next()) {
            co_return false;
        }
    } while (read(clock) < end);
    co_return true;
}

/// Becomes readable when CLOCK_BOOTTIME reaches a moment; none when the process has no descriptors left.
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

QDateTime SystemClock::now() const {
    return QDateTime::currentDateTimeUtc();
}

nanoseconds SystemClock::elapsed() const {
    return read(CLOCK_MONOTONIC);
}

nanoseconds SystemClock::uptime() const {
    return read(CLOCK_BOOTTIME);
}

QCoro::Task<bool> SystemClock::sleep(milliseconds duration, std::stop_token stop) {
    return sleepByTimer(CLOCK_MONOTONIC, end(CLOCK_MONOTONIC, duration), 24h, std::move(stop));
}

QCoro::Task<bool> SystemClock::sleepThroughSuspend(milliseconds duration, std::stop_token stop) {
    const auto moment = end(CLOCK_BOOTTIME, duration);
    const auto timer = bootTimer(moment);
    if (!timer) {
        co_return co_await sleepByTimer(CLOCK_BOOTTIME, moment, 1min, stop);
    }
    Wait wait(stop);
    QSocketNotifier notifier(timer.get(), QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, [&wait] { wait.wake(); });
    co_return co_await wait.next();
}

} // namespace tunedeck
