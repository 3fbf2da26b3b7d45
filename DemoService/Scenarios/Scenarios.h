#pragma once

#include "DemoService/Scenarios/Stage.h"
#include "DemoService/World/State.h"

#include <QLatin1StringView>
#include <QString>

#include <span>

namespace tunedeck::demo {

/// A state to start from. Unless its description says otherwise, nothing in it changes without a request.
struct Scenario {
    QLatin1StringView name;
    QLatin1StringView description;
    void (*prepare)(Stage& stage) = nullptr;
};

/// All scenarios, the default one first.
std::span<const Scenario> scenarios();

/// The scenario with that name, or null.
const Scenario* findScenario(const QString& name);

/// The state that `scenario` starts with at `now`: always the same for the same moment.
State startState(const Scenario& scenario, Moment now);

} // namespace tunedeck::demo
