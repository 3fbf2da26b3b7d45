#include "Tests/Helpers/ManualClock.h"

#include "TunedeckCore/Support/Async/Wait.h"

#include <algorithm>

namespace tunedeck::test {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

/// Shared with the sleepers, so that clock and sleepers may be destroyed in any order.
struct ManualClock::State {
    struct Sleeper {
        nanoseconds due;
        bool throughSuspend;
        Wait& wait;
    };

    QDateTime now;
    nanoseconds elapsed = std::chrono::hours(1);
    nanoseconds uptime = std::chrono::hours(2);
    std::vector<Sleeper*> sleepers; // in the order of their calls
    std::vector<milliseconds> asked;

    [[nodiscard]] nanoseconds left(const Sleeper& sleeper) const {
        return sleeper.due - (sleeper.throughSuspend ? uptime : elapsed);
    }

    void move(nanoseconds step, bool awake) {
        now = now.addMSecs(std::chrono::floor<milliseconds>(step).count());
        uptime += step;
        elapsed += awake ? step : nanoseconds::zero();
    }

    static void pass(std::shared_ptr<State> state, nanoseconds duration, bool awake) {
        for (;;) {
            const auto left = [&](const Sleeper* sleeper) {
                return awake || sleeper->throughSuspend ? state->left(*sleeper) : nanoseconds::max();
            };
            const auto first = std::ranges::min_element(state->sleepers, {}, left);
            if (first == state->sleepers.end() || left(*first) > duration) {
                break;
            }
            Sleeper* const next = *first;
            const auto step = std::max(state->left(*next), nanoseconds::zero());
            duration -= step;
            state->move(step, awake);
            state->sleepers.erase(first);
            next->wait.wake();
        }
        state->move(duration, awake);
    }

    static QCoro::Task<bool> sleep(std::shared_ptr<State> state, milliseconds duration, bool throughSuspend,
                                   std::stop_token stop) {
        state->asked.push_back(duration);
        if (stop.stop_requested() || duration <= milliseconds::zero()) {
            co_return !stop.stop_requested();
        }
        const auto from = throughSuspend ? state->uptime : state->elapsed;
        Wait wait(stop);
        Sleeper sleeper{from + duration, throughSuspend, wait};
        state->sleepers.push_back(&sleeper);
        const bool slept = co_await wait.next();
        std::erase(state->sleepers, &sleeper);
        co_return slept;
    }
};

ManualClock::ManualClock(QDateTime now) : m_state(std::make_shared<State>()) {
    m_state->now = std::move(now);
}

QDateTime ManualClock::now() const {
    return m_state->now;
}

nanoseconds ManualClock::elapsed() const {
    return m_state->elapsed;
}

nanoseconds ManualClock::uptime() const {
    return m_state->uptime;
}

QCoro::Task<bool> ManualClock::sleep(milliseconds duration, std::stop_token stop) {
    return State::sleep(m_state, duration, false, std::move(stop));
}

QCoro::Task<bool> ManualClock::sleepThroughSuspend(milliseconds duration, std::stop_token stop) {
    return State::sleep(m_state, duration, true, std::move(stop));
}

void ManualClock::advance(milliseconds duration) {
    State::pass(m_state, duration, true);
}

void ManualClock::suspend(milliseconds duration) {
    State::pass(m_state, duration, false);
}

void ManualClock::setUptime(nanoseconds uptime) {
    m_state->uptime = uptime;
}

const std::vector<milliseconds>& ManualClock::sleeps() const {
    return m_state->asked;
}

std::size_t ManualClock::sleeping() const {
    return m_state->sleepers.size();
}

} // namespace tunedeck::test
