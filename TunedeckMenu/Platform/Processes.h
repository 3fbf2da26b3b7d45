#pragma once

#include <QtGlobal>

#include <chrono>

namespace tunedeck {

/// Asks the process to exit (SIGTERM), provided that it is this user's and runs a program of the same name as ours.
void terminateSameProgram(qint64 processId);

/// Blocks until the process has exited. Returns false when it still runs after `timeout`.
bool waitForExit(qint64 processId, std::chrono::milliseconds timeout);

} // namespace tunedeck
