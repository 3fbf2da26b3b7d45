#pragma once

#include <sys/types.h>

namespace tunedeck::fetch {

/// Ties this process to its parent, so that it is killed when the parent dies, and rules out new privileges and core
/// dumps. False if the parent has already died.
bool confine(pid_t parent);

} // namespace tunedeck::fetch
