#pragma once

#include "DemoService/World/World.h"

#include <string>

namespace tunedeck::demo {

// Building blocks for scenarios: each puts one thing of a certain age into the state.

/// Adds a finished job, as the newest.
void addDoneJob(State& state, std::string playlist, int tracks, Moment finishedAt);
/// Adds a failed job, as the newest.
void addFailedJob(State& state, std::string playlist, std::string message, Moment finishedAt);
/// Adds a job that stays as it is, as the newest.
void addStagedJob(State& state, std::string playlist, std::string jobState, std::string message, Moment createdAt);
/// Adds a backup, as the newest; the library's version becomes its own.
void addBackup(Library& library, std::string version, std::string reason, Moment createdAt);
/// Adds a change that waits.
void addPending(Library& library, std::string summary, Moment createdAt);
/// Adds a change that couldn't be made.
void addFailed(Library& library, std::string summary, std::string error, Moment createdAt);
/// Adds a link with fresh secrets; used (or paired) at `usedAt` when that is given.
Link& addLink(State& state, const std::string& kind, std::string label, Moment createdAt,
              std::optional<Moment> usedAt = {});
/// A library with three backups whose last change is hours old.
Library settledLibrary(Moment now);

} // namespace tunedeck::demo
