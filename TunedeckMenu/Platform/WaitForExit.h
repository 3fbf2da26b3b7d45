#pragma once

#include <QtGlobal>

#include <chrono>

namespace tunedeck {

/// Blocks until the process has exited. Returns false when it still runs after `timeout`.
bool waitForExit(qint64 processId, std::chrono::milliseconds timeout);

} // namespace tunedeck
