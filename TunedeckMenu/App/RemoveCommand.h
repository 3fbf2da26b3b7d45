#pragma once

#include "TunedeckCore/Installation/ServiceRemover.h"
#include "TunedeckCore/SettingsFile.h"
#include "TunedeckMenu/App/CommandResult.h"
#include "TunedeckMenu/Platform/Uninstall.h"

#include <QCoroTask>
#include <QString>

#include <expected>
#include <stop_token>

namespace tunedeck {

struct RemoveRequest {
    QString home;
    SettingsFile settings;
    std::expected<bool, QString> ended; ///< whether a running Tunedeck has quit, or why it couldn't be ended
    Uninstall uninstall;
};

/// Removes Tunedeck from the user's account. Prints what was removed and which of the user's files stay; prints
/// failures to the standard error. The exit status is 0 when nothing is left to remove, else 1.
QCoro::Task<CommandResult> removeCommand(RemoveRequest request, ServiceRemover remover, std::stop_token stop = {});

} // namespace tunedeck
