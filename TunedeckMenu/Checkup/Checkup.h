#pragma once

#include "TunedeckCore/Support/Async/Clock.h"
#include "TunedeckCore/UserDefaults.h"
#include "TunedeckMenu/Checkup/CheckResult.h"
#include "TunedeckMenu/Platform/SystemFacts.h"
#include "TunedeckMenu/Platform/SystemProbe.h"

#include <QCoroTask>

#include <vector>

namespace tunedeck {

/// What a check-up looks at.
struct CheckupInput {
    SystemFacts facts;
    SystemProbe system;
    UserDefaults defaults; ///< the application's user defaults
    Clock& clock;
    bool online = false; ///< also asks the update feed
};

/// Checks the installation, the service and the desktop. Takes at most 10 seconds.
QCoro::Task<std::vector<CheckResult>> checkup(CheckupInput input);

} // namespace tunedeck
