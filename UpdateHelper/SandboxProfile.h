#pragma once

#include "UpdateHelper/Confinement.h"

#include <string>

namespace tunedeck::helper {

/// The permissions as a profile of macOS's sandbox, in its own language. Paths must be free of symbolic links, since
/// the kernel compares resolved ones.
std::string sandboxProfile(const Permissions& permissions);

} // namespace tunedeck::helper
