#pragma once

#include "DemoService/Scenarios/Stage.h"

namespace tunedeck::demo {

/// Adds backups, two or three a day, the newest 2 hours old.
void addManyBackups(Stage& stage, int count);

/// The scenario with as many and as long items as a user could have.
void prepareCrowd(Stage& stage);

} // namespace tunedeck::demo
