#pragma once

#include "TunedeckCore/Service/StatusClient.h"
#include "TunedeckMenu/App/CommandResult.h"
#include "TunedeckMenu/Platform/SystemFacts.h"

#include <QCoroTask>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <expected>
#include <optional>

namespace tunedeck {

/// What a start was asked to do.
struct CommandLine {
    enum class Command { run, help, version, status, diagnostics, quit, remove };
    Command command = Command::run;
    bool json = false;                       ///< of status: the document itself
    bool show = false;                       ///< open the window also when the session has just begun
    std::optional<qint64> afterProcess = {}; ///< wait for this process to be gone first

    /// Reads the arguments that follow the program's name. Fails with a sentence.
    static std::expected<CommandLine, QString> parse(const QStringList& arguments);
    /// What --help prints.
    static QString help();
    bool operator==(const CommandLine&) const = default;
};

/// One line about the service, or its status document. Exits with 0 when the service runs, else with 1.
QCoro::Task<CommandResult> statusCommand(StatusClient client, bool json);

/// The report for support, by what the service says now.
QCoro::Task<CommandResult> diagnosticsCommand(SystemFacts facts, QDateTime now);

} // namespace tunedeck
