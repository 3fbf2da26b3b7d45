#include "TunedeckMenu/Platform/MacOS/Desktop/MacAppearanceSource.h"
#include "TunedeckMenu/Platform/MacOS/Desktop/MacLoginItem.h"
#include "TunedeckMenu/Platform/MacOS/Desktop/MacPasteboard.h"
#include "TunedeckMenu/Platform/MacOS/Desktop/MacWorkspace.h"
#include "TunedeckMenu/Platform/MacOS/Instance/MacRelauncher.h"
#include "TunedeckMenu/Platform/MacOS/Instance/MacReopenListener.h"
#include "TunedeckMenu/Platform/MacOS/Notifications/MacNotificationCenter.h"
#include "TunedeckMenu/Platform/MacOS/Service/MacLaunchctl.h"
#include "TunedeckMenu/Platform/MacOS/Tray/MacStatusItem.h"
#include "TunedeckMenu/Platform/Platform.h"
#include "TunedeckMenu/Platform/QtFolderPicker.h"

namespace tunedeck {

namespace {

class MacPlatform final : public Platform {
public:
    explicit MacPlatform(const SystemFacts& facts) : m_relauncher(facts.bundle) {}

    StatusItem& statusItem() override { return m_statusItem; }
    NotificationCenter& notifications() override { return m_notifications; }
    Workspace& workspace() override { return m_workspace; }
    LoginItem& loginItem() override { return m_loginItem; }
    Pasteboard& pasteboard() override { return m_pasteboard; }
    FolderPicker& folderPicker() override { return m_folderPicker; }
    AppearanceSource& appearance() override { return m_appearance; }
    Relauncher& relauncher() override { return m_relauncher; }
    ReopenListener& reopenListener() override { return m_reopenListener; }
    Launchctl launchctl() override { return systemLaunchctl(); }

private:
    MacAppearanceSource m_appearance;
    MacStatusItem m_statusItem;
    MacNotificationCenter m_notifications;
    MacWorkspace m_workspace;
    MacLoginItem m_loginItem;
    MacPasteboard m_pasteboard;
    QtFolderPicker m_folderPicker;
    MacRelauncher m_relauncher;
    MacReopenListener m_reopenListener;
};

} // namespace

std::unique_ptr<Platform> createPlatform(const SystemFacts& facts) {
    return std::make_unique<MacPlatform>(facts);
}

} // namespace tunedeck
