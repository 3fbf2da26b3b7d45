#pragma once

#include "TunedeckMenu/Checkup/CheckResult.h"

#include <QString>

#include <vector>

namespace tunedeck {

/// One line per result, with what to do below it. Secrets are masked.
QString checkupText(const std::vector<CheckResult>& results);

/// An array with an object per result, for scripts. Secrets are masked.
QString checkupJson(const std::vector<CheckResult>& results);

} // namespace tunedeck
