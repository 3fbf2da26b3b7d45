#pragma once

#include "TunedeckCore/Installation/Launchctl.h"
#include "TunedeckCore/Service/LibraryClient.h"
#include "TunedeckCore/Service/LinksClient.h"
#include "TunedeckCore/Service/StatusClient.h"
#include "TunedeckCore/Service/ToolboxClient.h"
#include "TunedeckCore/SettingsFile.h"
#include "TunedeckCore/Support/Async/Clock.h"
#include "TunedeckMenu/Model/UpdateServices.h"
#include "TunedeckMenu/Panel/Confirmation.h"
#include "TunedeckMenu/Platform/FolderPicker.h"
#include "TunedeckMenu/Platform/LoginItem.h"
#include "TunedeckMenu/Platform/Pasteboard.h"
#include "TunedeckMenu/Platform/Relauncher.h"
#include "TunedeckMenu/Platform/SystemFacts.h"
#include "TunedeckMenu/Platform/Workspace.h"

#include <functional>

namespace tunedeck {

/// Asks the user a question without blocking the event loop. `answer` is called at most once.
using Confirmer = std::function<void(Confirmation question, std::function<void(bool confirmed)> answer)>;

/// What the model and the actions depend on; the application or a test provides it.
struct MenuServices {
    Clock& clock;
    Workspace& workspace;
    Pasteboard& pasteboard;
    FolderPicker& folderPicker;
    LoginItem& loginItem;
    Relauncher& relauncher;
    SystemFacts facts;
    SettingsFile settings;
    Launchctl launchctl;
    StatusClient status = {};
    ToolboxClient toolbox = {};
    LibraryClient library = {};
    LinksClient links = {};
    UpdateServices updates = {};
    Confirmer confirm = {};
    std::function<void()> quit = {}; ///< quits the application
};

} // namespace tunedeck
