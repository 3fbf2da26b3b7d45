#pragma once

#include "TunedeckCore/Installation/ServiceInstaller.h"
#include "TunedeckMenu/Platform/AppearanceSource.h"
#include "TunedeckMenu/Platform/FolderPicker.h"
#include "TunedeckMenu/Platform/LoginItem.h"
#include "TunedeckMenu/Platform/NotificationCenter.h"
#include "TunedeckMenu/Platform/Pasteboard.h"
#include "TunedeckMenu/Platform/Relauncher.h"
#include "TunedeckMenu/Platform/ReopenListener.h"
#include "TunedeckMenu/Platform/StatusItem.h"
#include "TunedeckMenu/Platform/SystemFacts.h"
#include "TunedeckMenu/Platform/Workspace.h"

#include <memory>

namespace tunedeck {

/// The desktop's services on this system. Needs the application object; creating it doesn't block.
class Platform {
public:
    virtual ~Platform() = default;
    virtual StatusItem& statusItem() = 0;
    virtual NotificationCenter& notifications() = 0;
    virtual Workspace& workspace() = 0;
    virtual LoginItem& loginItem() = 0;
    virtual Pasteboard& pasteboard() = 0;
    virtual FolderPicker& folderPicker() = 0;
    virtual AppearanceSource& appearance() = 0;
    virtual Relauncher& relauncher() = 0;
    virtual ReopenListener& reopenListener() = 0;
    /// Controls the background service's supervisor.
    virtual Launchctl launchctl() = 0;
};

std::unique_ptr<Platform> createPlatform(const SystemFacts& facts);

} // namespace tunedeck
