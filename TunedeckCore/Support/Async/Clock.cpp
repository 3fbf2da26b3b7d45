#include "TunedeckCore/Support/Async/Clock.h"

#include "TunedeckCore/Support/Async/Wait.h"

#include <QTimer>

#include <algorithm>

namespace tunedeck {

namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// QTimer may fire early and can't wait longer than 24 days, so the clock decides and the timer only wakes us up.
QCoro::Task<bool> sleepUntil(steady_clock::time_point end, std::stop_token stop) {
    Wait wait(stop);
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, [&wait] { wait.wake(); });
    do {
        const auto left = std::chrono::ceil<milliseconds>(end - steady_clock::now());
        timer.start(std::clamp(left, 0ms, milliseconds(24h)));
        if (!co_await wait.next()) {
            co_return false;
        }
    } while (steady_clock::now() < end);
    co_return true;
}

} // namespace

QDateTime SystemClock::now() const {
    return QDateTime::currentDateTimeUtc();
}

std::chrono::nanoseconds SystemClock::elapsed() const {
    return steady_clock::now().time_since_epoch();
}

QCoro::Task<bool> SystemClock::sleep(milliseconds duration, std::stop_token stop) {
    return sleepUntil(steady_clock::now() + std::clamp(duration, 0ms, maxSleep), std::move(stop));
}

} // namespace tunedeck
