#pragma once

#include "DemoService/World/State.h"

#include <QString>

#include <chrono>
#include <optional>

namespace tunedeck::demo {

/// Builds a scenario's state from items of a given age.
struct Stage {
    using Age = std::chrono::milliseconds;

    State& state;
    Moment now;

    Moment ago(Age age) const { return wholeSecond(now - age); }
    /// The library, created if needed.
    Library& library() { return state.library ? *state.library : state.library.emplace(Library{}); }

    /// Adds a job that doesn't change, as the newest.
    Job& addJob(const QString& playlist, const QString& jobState, const QString& message, Age age);
    void addDoneJob(const QString& playlist, int tracks, Age age);
    void addFailedJob(const QString& playlist, const QString& message, Age age);
    /// Adds a backup made for `change`, which becomes the change that was applied last.
    void addAppliedChange(const QString& change, Library::Bump bump, Age age);
    void addFirstBackup(Age age);
    Library::Change& addPending(const QString& summary, Age age);
    void addFailed(const QString& summary, const QString& error, Age age);
    /// Adds a link, which is in use (or paired) if `usedAge` is given.
    Link& addLink(const QString& kind, const QString& label, Age age, std::optional<Age> usedAge = {});
};

} // namespace tunedeck::demo
