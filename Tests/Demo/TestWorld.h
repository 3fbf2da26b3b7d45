#pragma once

#include "DemoService/Http/Router.h"
#include "DemoService/Scenarios/Scenarios.h"
#include "TunedeckCore/Support/Json/Record.h"

#include <algorithm>

namespace tunedeck::demo {

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
        return respond(world, {.version = QStringLiteral("1.0"), .paths = {QStringLiteral("/dev/null")}, .port = 8000},
                       {.method = method, .target = "/local/" + path, .body = body}, now);
    }
    const State& state() const { return world.state(); }

    static constexpr Moment start = std::chrono::sys_days{std::chrono::year{2026} / 11 / 21} + std::chrono::hours{9};
    Moment now = start;
    World world;
};

} // namespace tunedeck::demo
