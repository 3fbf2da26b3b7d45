#include "TunedeckMenu/Platform/MacOS/Desktop/MacLoginItem.h"
#include "TunedeckMenu/Platform/MacOS/Service/MacLaunchctl.h"
#include "TunedeckMenu/Platform/MacOS/System/MacProcesses.h"
#include "TunedeckMenu/Platform/Uninstall.h"

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

/// launchd keeps no file of its own beside the property list.
QCoro::Task<Removal> forget(std::stop_token /*stop*/) {
    co_return Removal{};
}

Removal removeLoginItem() {
    Removal removal;
    const auto status = MacLoginItem::status();
    if (status == LoginItemStatus::Enabled || status == LoginItemStatus::RequiresApproval) {
        const auto changed = MacLoginItem().setEnabled(false);
        using Removed = std::expected<bool, QString>;
        removal.note(u"the login item"_s, changed ? Removed(true) : Removed(std::unexpected(changed.error())));
    }
    return removal;
}

} // namespace

Uninstall uninstallOf(const SystemFacts& /*facts*/) {
    return {.supervisor = {.launchctl = systemLaunchctl(), .forget = forget, .processes = processesRunning},
            .removeLoginItem = removeLoginItem};
}

void joinSession() {} // launchctl addresses the session by the user's id

} // namespace tunedeck
