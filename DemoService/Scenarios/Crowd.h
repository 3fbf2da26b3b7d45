#pragma once

#include "DemoService/World/World.h"

namespace tunedeck::demo {

/// Adds `count` backups, some a day, the newest some hours before `now`.
void addManyBackups(Library& library, int count, Moment now);

/// As much of everything, and as long, as a user could come to have.
void stageCrowd(State& state, Moment now);

} // namespace tunedeck::demo
