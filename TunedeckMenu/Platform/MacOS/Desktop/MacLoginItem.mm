#include "TunedeckMenu/Platform/MacOS/Desktop/MacLoginItem.h"

#include "TunedeckMenu/Platform/MacOS/System/MacStrings.h"

#import <ServiceManagement/ServiceManagement.h>

namespace tunedeck {

LoginItemStatus MacLoginItem::status() {
    switch ([[SMAppService mainAppService] status]) {
    case SMAppServiceStatusEnabled:
        return LoginItemStatus::Enabled;
    case SMAppServiceStatusRequiresApproval:
        return LoginItemStatus::RequiresApproval;
    case SMAppServiceStatusNotFound:
        return LoginItemStatus::NotFound;
    case SMAppServiceStatusNotRegistered:
        break;
    }
    return LoginItemStatus::NotRegistered;
}

bool MacLoginItem::isEnabled() const {
    return status() == LoginItemStatus::Enabled;
}

std::expected<void, QString> MacLoginItem::setEnabled(bool enabled) {
    SMAppService* service = [SMAppService mainAppService];
    NSError* error = nil;
    const bool isDone = enabled ? [service registerAndReturnError:&error] : [service unregisterAndReturnError:&error];
    // Registering an item that the user has switched off in the settings fails, too, but with a poorer description.
    const auto problem = enabled ? loginItemProblem(status()) : std::nullopt;
    if (problem && (isDone || status() == LoginItemStatus::RequiresApproval)) {
        return std::unexpected(*problem);
    }
    if (!isDone) {
        return std::unexpected(fromNSString([error localizedDescription]));
    }
    return {};
}

} // namespace tunedeck
