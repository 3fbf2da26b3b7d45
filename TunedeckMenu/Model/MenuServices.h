#pragma once

#include "TunedeckCore/Installation/ServiceInstaller.h"
#include "TunedeckCore/Service/Assistants.h"
#include "TunedeckCore/Service/LibraryClient.h"
#include "TunedeckCore/Service/ServiceStatus.h"
#include "TunedeckCore/Service/Toolbox.h"
#include "TunedeckCore/SettingsFile.h"
#include "TunedeckCore/Support/Async/Clock.h"
#include "TunedeckCore/Update/Appcast.h"
#include "TunedeckCore/Update/UpdateCheck.h"
#include "TunedeckCore/Update/UpdateError.h"
#include "TunedeckMenu/Panel/Confirmation.h"
#include "TunedeckMenu/Platform/FolderPicker.h"
#include "TunedeckMenu/Platform/LoginItem.h"
#include "TunedeckMenu/Platform/Pasteboard.h"
#include "TunedeckMenu/Platform/Relauncher.h"
#include "TunedeckMenu/Platform/SystemFacts.h"
#include "TunedeckMenu/Platform/Workspace.h"

#include <QCoroTask>
#include <QUrl>

#include <expected>
#include <functional>
#include <optional>
#include <stop_token>

namespace tunedeck {

/// Asks the user a question without blocking the event loop; `answer` is called at most once.
using Confirmer = std::function<void(Confirmation question, std::function<void(bool confirmed)> answer)>;

/// How far a download is, 0 to 1; nothing while that isn't known.
using ProgressHandler = std::function<void(std::optional<double> progress)>;

/// The way to newer versions of the application.
struct UpdateServices {
    /// Asks the feed for something newer than the running version.
    std::function<QCoro::Task<UpdateCheck>(std::stop_token stop)> check;
    /// Puts a release in the place of the running bundle.
    std::function<QCoro::Task<std::expected<void, UpdateError>>(Release release, ProgressHandler progress,
                                                                std::stop_token stop)>
        install;
    /// The disk image for installing by hand, for a release that names none.
    QUrl latestDiskImage = {};
};

/// What the model and its actions stand on, handed in once by the application (or a test).
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
    std::function<void()> quit = {}; ///< ends the application
};

} // namespace tunedeck
