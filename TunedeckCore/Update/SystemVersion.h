#pragma once

#include <array>

namespace tunedeck {

/// Version of the operating system: major, minor, patch.
using SystemVersion = std::array<int, 3>;

} // namespace tunedeck
