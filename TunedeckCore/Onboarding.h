#pragma once

#include "TunedeckCore/Service/AssistantLink.h"
#include "TunedeckCore/Service/ServiceStatus.h"

#include <optional>
#include <vector>

namespace tunedeck {

/// When the first-run window is shown.
struct Onboarding {
    /// `onboarded`: the setting; `status`: what is known of the service; `links`: the assistant links that the caller
    /// has. Not for whoever has been through it or reaches the service from an assistant already.
    static bool shouldShow(bool onboarded, const std::optional<ServiceStatus>& status,
                           const std::vector<AssistantLink>& links);
};

} // namespace tunedeck
