#pragma once

#include "DemoService/World/World.h"

namespace tunedeck::soak {

/// Lets now and then happen to the service's world what doesn't by itself: many requests at once, jobs that vanish,
/// come back or are tried again, libraries and records that go and return, tools, folder and cloud that fail.
class Whims {
public:
    explicit Whims(demo::Random& random) : m_random(random) {}

    /// Maybe changes the world, a few times in a hundred calls, and keeps what grows in bounds.
    void visit(demo::World& world, demo::Moment now);

private:
    void toJobs(demo::State& state, demo::StepContext& context);
    void toLibrary(demo::State& state);
    void toTheRest(demo::State& state, demo::Moment now);

    demo::Random& m_random;
    std::vector<demo::Job> m_vanished;
    std::optional<demo::Library> m_library;
    std::optional<demo::Library::Applied> m_applied;
};

} // namespace tunedeck::soak
