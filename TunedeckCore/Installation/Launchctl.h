#pragma once

#include <QCoroTask>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <stop_token>

namespace tunedeck {

/// Runs launchctl with these arguments and returns its exit status, -1 if it can't be started.
using Launchctl = std::function<QCoro::Task<std::int32_t>(QStringList arguments, std::stop_token stop)>;

/// Runs this program, launchd's own control program.
Launchctl launchctlProgram(QString program);

} // namespace tunedeck
