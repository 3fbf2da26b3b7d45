#include "TunedeckCore/Locations/Paths.h"
#include "TunedeckMenu/Platform/Linux/Desktop/LinuxLoginItem.h"
#include "TunedeckMenu/Platform/Linux/Service/ServiceCleanup.h"
#include "TunedeckMenu/Platform/Uninstall.h"

#include <QtGlobal>

#include <sys/stat.h>
#include <unistd.h>

namespace tunedeck {

using namespace Qt::StringLiterals;

Uninstall uninstallOf(const SystemFacts& facts) {
    const auto manager = SystemdUserManager::ofUser();
    const auto home = facts.home;
    return {.supervisor = {.launchctl = manager.launchctl(),
                           .forget = [manager, home](
                                         std::stop_token stop) { return removeUnit(manager, home, std::move(stop)); },
                           .processes = processesRunning},
            .removeLoginItem = [home] {
                Removal removal;
                const auto entry = LinuxLoginItem::defaultEntryPath(home);
                removal.note(abbreviatingHome(entry, home), removeFile(entry));
                return removal;
            }};
}

void joinSession() {
    const auto folder = "/run/user/" + QByteArray::number(::getuid());
    struct stat facts{};
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR") && ::lstat(folder.constData(), &facts) == 0 &&
        S_ISDIR(facts.st_mode) && facts.st_uid == ::getuid()) {
        qputenv("XDG_RUNTIME_DIR", folder);
    }
}

} // namespace tunedeck
