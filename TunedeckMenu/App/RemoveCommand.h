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

/// What a removal needs to know.
struct RemoveRequest {
    QString home;
    SettingsFile settings;
    std::expected<bool, QString> ended; ///< whether a Tunedeck ran and was ended, or why it goes on
    Uninstall uninstall;
};

/// Takes Tunedeck away from the user's account: prints a line for each thing that was removed and for each of the
/// user's that stays. Exits with 0 when nothing of it is left, also when nothing was there; else with 1, and the
/// reasons go to the standard error.
QCoro::Task<CommandResult> removeCommand(RemoveRequest request, ServiceRemover remover, std::stop_token stop = {});

} // namespace tunedeck
