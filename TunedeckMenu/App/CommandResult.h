#pragma once

#include <QString>

namespace tunedeck {

/// What a command prints, and its exit status.
struct CommandResult {
    QString output;
    int exitStatus = 0;
    QString errorOutput = {};
    bool operator==(const CommandResult&) const = default;
};

} // namespace tunedeck
