#pragma once

#include "TunedeckCore/Service/Assistants.h"
#include "TunedeckCore/Service/ServiceStatus.h"

#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace tunedeck {

/// The steps of the first run, in order; their values are their numbers.
enum class OnboardingStep { tools = 0, rekordbox = 1, assistant = 2 };

/// All steps in order.
inline constexpr std::array allOnboardingSteps{OnboardingStep::tools, OnboardingStep::rekordbox,
                                               OnboardingStep::assistant};

/// The step with that number, or nothing.
std::optional<OnboardingStep> onboardingStep(int rawValue);

/// The step's heading.
QString title(OnboardingStep step);

/// The step after it; nothing after the last.
std::optional<OnboardingStep> next(OnboardingStep step);

/// When the first-run window is shown.
struct Onboarding {
    /// `onboarded`: the setting; `status`: what is known of the service; `links`: the assistant links that the caller
    /// has. Not for whoever has been through it or reaches the service from an assistant already.
    static bool shouldShow(bool onboarded, const std::optional<ServiceStatus>& status,
                           const std::vector<AssistantLink>& links);
};

/// An installed Rekordbox.
struct RekordboxInstall {
    QString name;                   ///< "Rekordbox 7", or "Rekordbox" while its version is unknown
    std::optional<QString> version; ///< as its bundle tells it

    /// The one of the highest version in a folder of applications or in a folder of its own there; the first in the
    /// folder's order among equals, nothing when there is none.
    static std::optional<RekordboxInstall> detect(const QString& folder);
    bool operator==(const RekordboxInstall&) const = default;
};

/// Whether one text comes before another when runs of digits are compared as numbers ("7.9.2" before "7.10.0").
bool isNumericallyLess(const QString& one, const QString& other);

} // namespace tunedeck
