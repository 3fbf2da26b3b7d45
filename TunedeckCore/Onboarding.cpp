#include "TunedeckCore/Onboarding.h"

#include <algorithm>

namespace tunedeck {

bool Onboarding::shouldShow(bool onboarded, const std::optional<ServiceStatus>& status,
                            const std::vector<AssistantLink>& links) {
    if (onboarded || (status && status->mcp && status->mcp->publicUrl)) {
        return false;
    }
    return std::none_of(links.begin(), links.end(), [](const AssistantLink& link) { return link.isConnected(); });
}

} // namespace tunedeck
