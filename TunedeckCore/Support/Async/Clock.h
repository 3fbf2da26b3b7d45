#pragma once

#include <QCoroTask>
#include <QDateTime>

#include <chrono>
#include <stop_token>

namespace tunedeck {

/// Where "now" and waiting come from; handed in wherever either is needed.
class Clock {
public:
    virtual ~Clock() = default;

    /// The present moment in UTC.
    [[nodiscard]] virtual QDateTime now() const = 0;

    /// Time since an arbitrary moment; never goes back and stands still while the machine sleeps.
    [[nodiscard]] virtual std::chrono::nanoseconds elapsed() const = 0;

    /// Time since the machine was started, sleep included.
    [[nodiscard]] virtual std::chrono::nanoseconds uptime() const = 0;

    /// Waits at least this long, by elapsed(). True when the time has passed, false at once when stopped.
    virtual QCoro::Task<bool> sleep(std::chrono::milliseconds duration, std::stop_token stop) = 0;

    /// Like sleep(), but by uptime(): time that the machine spends asleep counts.
    virtual QCoro::Task<bool> sleepThroughSuspend(std::chrono::milliseconds duration, std::stop_token stop) = 0;
};

/// The machine's own clock. Sleeps are precise timers on the event loop; see Clock.
class SystemClock final : public Clock {
public:
    [[nodiscard]] QDateTime now() const override;
    [[nodiscard]] std::chrono::nanoseconds elapsed() const override;
    [[nodiscard]] std::chrono::nanoseconds uptime() const override;
    QCoro::Task<bool> sleep(std::chrono::milliseconds duration, std::stop_token stop) override;
    QCoro::Task<bool> sleepThroughSuspend(std::chrono::milliseconds duration, std::stop_token stop) override;
};

} // namespace tunedeck
