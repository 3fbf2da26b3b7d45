#pragma once

#include <QString>

#include <array>
#include <optional>

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

} // namespace tunedeck
