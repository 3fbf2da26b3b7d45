#pragma once

#include "Tests/Soak/Timeline.h"
#include "TunedeckCore/Support/Async/Clock.h"

#include <QObject>

#include <functional>

namespace tunedeck::soak {

/// The application's clock in a soak: see Timeline.
class FastClock final : public QObject, public Clock {
    Q_OBJECT
public:
    /// `wakes` is given each wake-up of a sleep of `marked` to perform; `asked` is told when one is asked for.
    struct Tap {
        std::chrono::milliseconds marked{};
        std::function<void()> asked;
        std::function<void(const std::function<void()>& wake)> wakes;
    };
    FastClock(const Timeline& timeline, Tap tap) : m_timeline(timeline), m_tap(std::move(tap)) {}

    [[nodiscard]] QDateTime now() const override;
    [[nodiscard]] std::chrono::nanoseconds elapsed() const override { return m_timeline.awake(); }
    [[nodiscard]] std::chrono::nanoseconds uptime() const override { return m_timeline.uptime(); }
    QCoro::Task<bool> sleep(std::chrono::milliseconds duration, std::stop_token stop) override;
    QCoro::Task<bool> sleepThroughSuspend(std::chrono::milliseconds duration, std::stop_token stop) override;

Q_SIGNALS:
    /// To be emitted when the machine has slept.
    void woke();

private:
    QCoro::Task<bool> pass(std::function<std::chrono::nanoseconds()> reading, std::chrono::milliseconds duration,
                           std::stop_token stop);

    const Timeline& m_timeline;
    Tap m_tap;
};

} // namespace tunedeck::soak
