#pragma once

#include <QCoroTask>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <stop_token>

namespace tunedeck {

/// Runs the service manager's tool with these arguments; gives its exit status, -1 when it can't be started.
using Launchctl = std::function<QCoro::Task<std::int32_t>(QStringList arguments, std::stop_token stop)>;

} // namespace tunedeck
