#include "TunedeckCore/OnboardingStep.h"

#include <algorithm>
#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;

std::optional<OnboardingStep> onboardingStep(int rawValue) {
    const auto* const found =
        std::find_if(allOnboardingSteps.begin(), allOnboardingSteps.end(),
                     [rawValue](OnboardingStep step) { return std::to_underlying(step) == rawValue; });
    return found == allOnboardingSteps.end() ? std::nullopt : std::optional(*found);
}

QString title(OnboardingStep step) {
    switch (step) {
    case OnboardingStep::tools:
        return u"Install the tools"_s;
    case OnboardingStep::rekordbox:
        return u"Find Rekordbox"_s;
    case OnboardingStep::assistant:
        break;
    }
    return u"Connect your assistant"_s;
}

std::optional<OnboardingStep> next(OnboardingStep step) {
    return onboardingStep(std::to_underlying(step) + 1);
}

} // namespace tunedeck
