#pragma once

#include <sys/types.h>

namespace tunedeck {

/// Ties this process to its parent, so that it is killed when the parent dies. For a new child process; ends it if the
/// parent has already died.
void endWithParent(pid_t parent);

} // namespace tunedeck
