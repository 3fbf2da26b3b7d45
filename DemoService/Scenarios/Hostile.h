#pragma once

#include "DemoService/Scenarios/Stage.h"

namespace tunedeck::demo {

/// The scenario of a service that tries to freeze the panel, to fill its memory, to mislead it and to have programs
/// run.
void prepareHostile(Stage& stage);

} // namespace tunedeck::demo
