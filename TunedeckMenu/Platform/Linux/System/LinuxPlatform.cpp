#include "TunedeckCore/Locations/BundlePaths.h"
#include "TunedeckCore/Locations/UserPaths.h"
#include "TunedeckMenu/Platform/Linux/Desktop/LinuxAppearanceSource.h"
#include "TunedeckMenu/Platform/Linux/Desktop/LinuxLoginItem.h"
#include "TunedeckMenu/Platform/Linux/Desktop/LinuxPasteboard.h"
#include "TunedeckMenu/Platform/Linux/Desktop/LinuxWorkspace.h"
#include "TunedeckMenu/Platform/Linux/Desktop/SessionBus.h"
#include "TunedeckMenu/Platform/Linux/Instance/LinuxRelauncher.h"
#include "TunedeckMenu/Platform/Linux/Instance/LinuxReopenListener.h"
#include "TunedeckMenu/Platform/Linux/Notifications/LinuxNotificationCenter.h"
#include "TunedeckMenu/Platform/Linux/Service/SystemdUserManager.h"
#include "TunedeckMenu/Platform/Linux/Tray/LinuxStatusItem.h"
#include "TunedeckMenu/Platform/Platform.h"
#include "TunedeckMenu/Platform/QtFolderPicker.h"

#include <QFileInfo>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

class LinuxPlatform final : public Platform {
public:
    explicit LinuxPlatform(const SystemFacts& facts)
        : m_icon(BundlePaths(facts.bundle).icon())
        , m_agentFolder(QFileInfo(UserPaths(facts.home).agentPlist()).path())
        , m_appearance(m_bus)
        , m_statusItem(m_bus, m_appearance)
        , m_notifications(m_bus, {u"Tunedeck"_s, facts.bundleIdentifier, m_icon})
        , m_workspace(m_bus)
        , m_loginItem(LinuxLoginItem::defaultEntryPath(facts.home), BundlePaths(facts.bundle).application(), m_icon)
        , m_reopenListener(m_bus) {}

    StatusItem& statusItem() override { return m_statusItem; }
    NotificationCenter& notifications() override { return m_notifications; }
    Workspace& workspace() override { return m_workspace; }
    LoginItem& loginItem() override { return m_loginItem; }
    Pasteboard& pasteboard() override { return m_pasteboard; }
    FolderPicker& folderPicker() override { return m_folderPicker; }
    AppearanceSource& appearance() override { return m_appearance; }
    Relauncher& relauncher() override { return m_relauncher; }
    ReopenListener& reopenListener() override { return m_reopenListener; }
    Launchctl launchctl() override { return SystemdUserManager::ofUser(m_agentFolder).launchctl(); }

private:
    QString m_icon;
    QString m_agentFolder;
    SessionBus m_bus;
    LinuxAppearanceSource m_appearance;
    LinuxStatusItem m_statusItem;
    LinuxNotificationCenter m_notifications;
    LinuxWorkspace m_workspace;
    LinuxLoginItem m_loginItem;
    LinuxPasteboard m_pasteboard;
    QtFolderPicker m_folderPicker;
    LinuxRelauncher m_relauncher;
    LinuxReopenListener m_reopenListener;
};

} // namespace

std::unique_ptr<Platform> createPlatform(const SystemFacts& facts) {
    return std::make_unique<LinuxPlatform>(facts);
}

} // namespace tunedeck
