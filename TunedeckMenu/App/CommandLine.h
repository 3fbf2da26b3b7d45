#pragma once

#include "TunedeckCore/Service/StatusClient.h"
#include "TunedeckMenu/App/CommandResult.h"
#include "TunedeckMenu/Checkup/Checkup.h"
#include "TunedeckMenu/Platform/SystemFacts.h"

#include <QCoroTask>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <expected>
#include <optional>

namespace tunedeck {

/// The options of a start.
struct CommandLine {
    enum class Command { Run, Help, Version, Status, Checkup, Diagnostics, Quit, Remove };
    Command command = Command::Run;
    bool json = false;                       ///< with Status or Checkup: print JSON
    bool online = false;                     ///< with Checkup: also ask the update feed
    bool show = false;                       ///< with Run: open the window, even at login
    std::optional<qint64> afterProcess = {}; ///< with Run: wait until this process has exited

    /// Parses the arguments after the program's name. The error is a sentence without a full stop.
    static std::expected<CommandLine, QString> parse(const QStringList& arguments);
    /// The text that --help prints.
    static QString help();
    bool operator==(const CommandLine&) const = default;
};

/// Prints one line about the service. The exit status is 0 when the service runs, else 1.
QCoro::Task<CommandResult> statusCommand(StatusClient client);

/// Prints the service's status document, or "null". Exit status as with statusCommand().
QCoro::Task<CommandResult> statusDocumentCommand(StatusClient client);

/// Prints what a check-up finds, as lines or as JSON. The exit status is 0 unless there is a problem, else 1.
QCoro::Task<CommandResult> checkupCommand(CheckupInput input, bool json);

/// Prints the report for support, with the service's current state.
QCoro::Task<CommandResult> diagnosticsCommand(SystemFacts facts, QDateTime now);

} // namespace tunedeck
