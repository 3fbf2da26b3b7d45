#pragma once

#include "TunedeckCore/Installation/Launchctl.h"

namespace tunedeck {

using namespace Qt::StringLiterals;

/// launchd, by the system's own program.
inline Launchctl systemLaunchctl() {
    return launchctlProgram(u"/bin/launchctl"_s);
}

} // namespace tunedeck
