#pragma once

#include "TunedeckCore/Support/Async/Clock.h"

#include <memory>
#include <vector>

namespace tunedeck::test {

/// A clock that stands still until a test lets time pass. Sleepers are resumed by the moment that they wait for, the
/// earlier to have asked first where two wait for the same; what they ask for next counts within the same passing.
class ManualClock final : public Clock {
public:
    explicit ManualClock(QDateTime now = QDateTime(QDate(2026, 3, 1), QTime(12, 0), Qt::UTC));

    [[nodiscard]] QDateTime now() const override;
    [[nodiscard]] std::chrono::nanoseconds elapsed() const override;
    [[nodiscard]] std::chrono::nanoseconds uptime() const override;
    /// A sleep of no time is over at once.
    QCoro::Task<bool> sleep(std::chrono::milliseconds duration, std::stop_token stop) override;
    QCoro::Task<bool> sleepThroughSuspend(std::chrono::milliseconds duration, std::stop_token stop) override;

    /// Lets time pass.
    void advance(std::chrono::milliseconds duration);

    /// Lets time pass while the machine sleeps: elapsed() stands still.
    void suspend(std::chrono::milliseconds duration);

    /// Sets how long the machine has been up, as if it had been started at another time; nobody wakes up for it.
    void setUptime(std::chrono::nanoseconds uptime);

    /// Every sleep asked for so far, in order.
    [[nodiscard]] const std::vector<std::chrono::milliseconds>& sleeps() const;

    /// How many sleep at present.
    [[nodiscard]] std::size_t sleeping() const;

private:
    struct State;
    std::shared_ptr<State> m_state;
};

} // namespace tunedeck::test
