#pragma once

#include "DemoService/Scenarios/Scenarios.h"

#include <algorithm>
#include <vector>

namespace tunedeck::demo {

/// A world at a moment of the test's choosing. Its journal's lines pile up in `journal`.
struct TestWorld {
    explicit TestWorld(std::string_view scenario) : world(startState(*findScenario(scenario), start), 1) {}
    explicit TestWorld(State state) : world(std::move(state), 1) {}

    /// Goes from event to event for `span`; the number of events.
    int live(Span span) {
        int events = 0;
        const Moment end = now + span;
        for (auto next = world.nextEvent(); next && *next <= end; next = world.nextEvent()) {
            now = std::max(now, *next);
            world.advance(now);
            ++events;
            std::ranges::move(world.takeJournal(), std::back_inserter(journal));
        }
        now = end;
        return events;
    }
    const State& state() const { return world.state(); }

    static constexpr Moment start = std::chrono::sys_days{std::chrono::year{2026} / 11 / 21} + std::chrono::hours{9};
    Moment now = start;
    World world;
    std::vector<LogLine> journal;
};

} // namespace tunedeck::demo
