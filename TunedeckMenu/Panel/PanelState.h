#pragma once

#include "TunedeckCore/MenuBarPlacement.h"
#include "TunedeckCore/Service/AssistantLink.h"
#include "TunedeckCore/Service/Toolbox.h"
#include "TunedeckMenu/Panel/Cards/HiddenIconCard.h"
#include "TunedeckMenu/Panel/ServiceState.h"
#include "TunedeckMenu/Panel/UpdateState.h"

#include <QDateTime>
#include <QString>

#include <optional>
#include <vector>

namespace tunedeck {

/// The state that the panel shows; owned by MenuModel.
struct PanelState {
    ServiceState service;
    std::optional<QString> actionError; ///< at most one of error and note is set
    std::optional<QString> actionNote;
    bool isRestarting = false;
    MenuBarIconVisibility menuBarIcon;
    MissingTray missingTray = MissingTray::No;
    std::optional<QString> copied; ///< key of the value copied a moment ago
    bool revealSecrets = false;
    std::vector<AssistantLink> links;
    bool linksBusy = false;
    std::optional<ToolboxReport> toolbox;
    UpdateState update;
    QString appVersion;
    bool libraryBusy = false;
    QString home;                        ///< path, not abbreviated
    std::optional<QString> customFolder; ///< the download folder in the settings file
    bool opensAtLogin = false;
    bool operator==(const PanelState&) const = default;
};

} // namespace tunedeck
