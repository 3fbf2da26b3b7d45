#include "Tests/Soak/Application/FastClock.h"

#include "TunedeckCore/Support/Async/Wait.h"

#include <QTimer>

#include <algorithm>
#include <utility>

namespace tunedeck::soak {

using namespace std::chrono_literals;
using std::chrono::milliseconds;
using std::chrono::nanoseconds;

QDateTime FastClock::now() const {
    return QDateTime::fromMSecsSinceEpoch(m_timeline.sinceEpoch().count(), Qt::UTC);
}

QCoro::Task<bool> FastClock::sleep(milliseconds duration, std::stop_token stop) {
    if (duration == m_tap.marked) {
        m_tap.asked();
    }
    return pass([this] { return elapsed(); }, duration, std::move(stop));
}

QCoro::Task<bool> FastClock::sleepThroughSuspend(milliseconds duration, std::stop_token stop) {
    return pass([this] { return uptime(); }, duration, std::move(stop));
}

QCoro::Task<bool> FastClock::pass(std::function<nanoseconds()> reading, milliseconds duration, std::stop_token stop) {
    const auto end = reading() + std::clamp<nanoseconds>(duration, 0ns, 1000h);
    Wait wait(stop);
    // What a sleeper does when it wakes up happens before wake() returns, and may end this coroutine.
    const std::function<void()> wake = [&wait] { wait.wake(); };
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    timer.setSingleShot(true);
    if (duration == m_tap.marked) {
        connect(&timer, &QTimer::timeout, [wakes = &m_tap.wakes, wake] { (*wakes)(wake); });
    } else {
        connect(&timer, &QTimer::timeout, wake);
        connect(this, &FastClock::woke, &timer, wake);
    }
    do {
        const auto left = static_cast<double>((end - reading()).count()) / m_timeline.speed();
        const auto nap = std::chrono::ceil<milliseconds>(nanoseconds(static_cast<std::int64_t>(left)));
        timer.start(std::clamp<milliseconds>(nap, 0ms, 10min));
        const bool goesOn = co_await wait.next();
        if (!goesOn) {
            co_return false;
        }
    } while (reading() < end);
    co_return true;
}

} // namespace tunedeck::soak
