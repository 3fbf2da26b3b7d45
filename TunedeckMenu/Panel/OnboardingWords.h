#pragma once

#include "TunedeckMenu/Panel/OnboardingContent.h"
#include "TunedeckMenu/Panel/OnboardingState.h"

#include <QDateTime>

namespace tunedeck {

/// What the first-run window says of a state at a moment.
OnboardingContent onboardingContent(const OnboardingState& state, const QDateTime& now);

} // namespace tunedeck
