#pragma once

#include "DemoService/World/Jobs.h"

#include <string>

namespace tunedeck::demo {

/// An XML file in the form that Rekordbox imports, with a playlist for each that a finished job added to.
std::string importXmlText(const Jobs& jobs, const std::string& version);

} // namespace tunedeck::demo
