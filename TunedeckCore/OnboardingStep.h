#pragma once

#include <QString>

#include <array>
#include <optional>

namespace tunedeck {

/// The steps of the first run; the values are their indices.
enum class OnboardingStep { tools = 0, rekordbox = 1, assistant = 2 };

inline constexpr std::array allOnboardingSteps{OnboardingStep::tools, OnboardingStep::rekordbox,
                                               OnboardingStep::assistant};

std::optional<OnboardingStep> onboardingStep(int rawValue);

QString title(OnboardingStep step);

/// The next step; nothing after the last.
std::optional<OnboardingStep> next(OnboardingStep step);

} // namespace tunedeck
