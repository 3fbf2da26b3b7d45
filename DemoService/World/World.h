#pragma once

#include "DemoService/World/State.h"

#include <optional>
#include <utility>
#include <vector>

namespace tunedeck::demo {

/// The model of everything that the service looks after. It changes only in advance() and update(), which take the
/// time. Not thread-safe.
class World {
public:
    /// Things happen `speed` times faster than in reality.
    World(State state, double speed) : m_state(std::move(state)), m_speed(speed) {}

    const State& state() const { return m_state; }
    double speed() const { return m_speed; }

    /// Makes everything happen that is due at `now`, each thing at most once: after a long sleep the world continues
    /// from where it was instead of catching up.
    void advance(Moment now);
    /// When advance() has something to do again.
    std::optional<Moment> nextEvent() const;

    /// Returns action(State&, StepContext&).
    auto update(Moment now, auto action) {
        StepContext context{.now = now, .speed = m_speed, .random = m_state.random, .lines = m_lines};
        return action(m_state, context);
    }

    /// The log lines since the last call; empty when nothing has changed.
    std::vector<Log::Line> takeLines() { return std::exchange(m_lines, {}); }

private:
    State m_state;
    double m_speed;
    std::vector<Log::Line> m_lines;
};

} // namespace tunedeck::demo
