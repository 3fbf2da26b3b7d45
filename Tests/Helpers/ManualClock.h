#pragma once

#include "TunedeckCore/Support/Async/Clock.h"

#include <memory>
#include <vector>

namespace tunedeck::test {

/// A clock that a test advances. Sleepers are resumed in order of their deadlines, then of their calls; sleeps that
/// they start while being resumed belong to the same advance.
class ManualClock final : public Clock {
public:
    explicit ManualClock(QDateTime now = QDateTime(QDate(2026, 3, 1), QTime(12, 0), Qt::UTC));

    [[nodiscard]] QDateTime now() const override;
    [[nodiscard]] std::chrono::nanoseconds elapsed() const override;
    [[nodiscard]] std::chrono::nanoseconds uptime() const override;
    /// A sleep of 0 ms doesn't suspend.
    QCoro::Task<bool> sleep(std::chrono::milliseconds duration, std::stop_token stop) override;
    QCoro::Task<bool> sleepThroughSuspend(std::chrono::milliseconds duration, std::stop_token stop) override;

    void advance(std::chrono::milliseconds duration);

    /// Advances the clock with the machine suspended: elapsed() stands still.
    void suspend(std::chrono::milliseconds duration);

    /// Sets uptime() without resuming sleepers.
    void setUptime(std::chrono::nanoseconds uptime);

    /// The durations of all sleeps so far.
    [[nodiscard]] const std::vector<std::chrono::milliseconds>& sleeps() const;

    /// The number of current sleepers.
    [[nodiscard]] std::size_t sleeping() const;

private:
    struct State;
    std::shared_ptr<State> m_state;
};

} // namespace tunedeck::test
