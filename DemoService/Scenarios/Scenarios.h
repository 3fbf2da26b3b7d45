#pragma once

#include "DemoService/World/World.h"

#include <span>
#include <string_view>

namespace tunedeck::demo {

/// A situation to start from. But for those that say otherwise nothing happens by itself in it; what the user does
/// has its effect in all of them.
struct Scenario {
    std::string_view name;
    std::string_view description;
    void (*stage)(State& state, Moment now);
};

/// All scenarios, the default one first.
std::span<const Scenario> scenarios();

/// The scenario of that name, or null.
const Scenario* findScenario(std::string_view name);

/// The state that `scenario` starts with at `now`; the same state for the same moment.
State startState(const Scenario& scenario, Moment now);

} // namespace tunedeck::demo
