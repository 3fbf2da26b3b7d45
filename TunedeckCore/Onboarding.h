#pragma once

#include "TunedeckCore/Service/AssistantLink.h"
#include "TunedeckCore/Service/ServiceStatus.h"

#include <optional>
#include <vector>

namespace tunedeck {

/// Decides whether the first-run window is shown.
struct Onboarding {
    /// False if the user has completed the first run (`onboarded`) or already reaches the service from an assistant.
    static bool shouldShow(bool onboarded, const std::optional<ServiceStatus>& status,
                           const std::vector<AssistantLink>& links);
};

} // namespace tunedeck
