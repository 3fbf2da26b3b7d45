#pragma once

#include "TunedeckCore/Support/Async/Clock.h"
#include "TunedeckMenu/Checkup/CheckResult.h"

#include <QCoroTask>
#include <QString>

#include <chrono>
#include <functional>
#include <stop_token>
#include <vector>

namespace tunedeck {

/// A check that looks at one thing. It returns early when stopped; its result is then ignored.
struct Check {
    QString name;
    std::function<QCoro::Task<CheckResult>(std::stop_token stop)> run;
    std::chrono::milliseconds limit = std::chrono::seconds(5);
};

/// Runs all checks side by side and returns their results in the order of the checks. One that exceeds its limit is
/// stopped, and reported as a problem even if it doesn't stop. `clock` must outlive the checks.
QCoro::Task<std::vector<CheckResult>> runChecks(std::vector<Check> checks, Clock* clock);

} // namespace tunedeck
