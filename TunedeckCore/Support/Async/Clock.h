#pragma once

#include <QCoroTask>
#include <QDateTime>

#include <chrono>
#include <stop_token>

namespace tunedeck {

/// The source of time and of delays; passed to everything that needs either.
class Clock {
public:
    virtual ~Clock() = default;

    /// The current time in UTC.
    [[nodiscard]] virtual QDateTime now() const = 0;

    /// Monotonic time since an arbitrary moment; stands still while the machine is suspended.
    [[nodiscard]] virtual std::chrono::nanoseconds elapsed() const = 0;

    /// Time since the machine was started, including the time suspended.
    [[nodiscard]] virtual std::chrono::nanoseconds uptime() const = 0;

    /// Waits at least this long, measured by elapsed(). Returns true when the time has passed, false at once when
    /// stopped.
    virtual QCoro::Task<bool> sleep(std::chrono::milliseconds duration, std::stop_token stop) = 0;

    /// Like sleep(), but measured by uptime(): time suspended counts.
    virtual QCoro::Task<bool> sleepThroughSuspend(std::chrono::milliseconds duration, std::stop_token stop) = 0;
};

/// The system's clock; sleeps need a running event loop.
class SystemClock final : public Clock {
public:
    [[nodiscard]] QDateTime now() const override;
    [[nodiscard]] std::chrono::nanoseconds elapsed() const override;
    [[nodiscard]] std::chrono::nanoseconds uptime() const override;
    QCoro::Task<bool> sleep(std::chrono::milliseconds duration, std::stop_token stop) override;
    QCoro::Task<bool> sleepThroughSuspend(std::chrono::milliseconds duration, std::stop_token stop) override;

private:
    /// Longer sleeps are cut to this, so that nanoseconds never overflow.
    static constexpr std::chrono::milliseconds maxSleep = std::chrono::hours(24 * 365 * 100);
};

} // namespace tunedeck
