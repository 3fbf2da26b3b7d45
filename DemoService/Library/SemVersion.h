#pragma once

#include <string>
#include <string_view>

namespace tunedeck::demo {

/// How much a library change raises the library's version.
enum class Bump { patch = 0, minor = 1, major = 2 };

/// "1.4.2" raised by `bump`; "1.0.0" when `version` isn't three numbers.
std::string raised(std::string_view version, Bump bump);

} // namespace tunedeck::demo
