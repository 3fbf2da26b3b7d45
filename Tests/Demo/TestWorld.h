#pragma once

#include "DemoService/Http/Router.h"
#include "DemoService/Scenarios/Scenarios.h"
#include "TunedeckCore/Support/Json/Record.h"

#include <algorithm>

namespace tunedeck::demo {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

/// A world with a clock that the test controls.
struct TestWorld {
    explicit TestWorld(const QString& scenario) : world(startState(*findScenario(scenario), start), 1) {}
    explicit TestWorld(State state) : world(std::move(state), 1) {}

    /// Advances from event to event for `span`; returns the number of events.
    int live(std::chrono::milliseconds span) {
        int events = 0;
        const Moment end = now + span;
        for (auto next = world.nextEvent(); next && *next <= end; next = world.nextEvent()) {
            now = std::max(now, *next);
            world.advance(now);
            ++events;
        }
        now = end;
        return events;
    }
    Response send(const QByteArray& method, const QByteArray& path, const QByteArray& body = {}) {
        return respond(world, {.version = u"1.0"_s, .paths = {u"/dev/null"_s}, .port = 8000},
                       {.method = method, .target = "/local/" + path, .body = body}, now);
    }
    const State& state() const { return world.state(); }

    static constexpr Moment start = std::chrono::sys_days{std::chrono::year{2026} / 11 / 21} + 9h;
    Moment now = start;
    World world;
};

} // namespace tunedeck::demo
