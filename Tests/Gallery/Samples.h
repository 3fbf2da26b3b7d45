#pragma once

#include "TunedeckMenu/Panel/FirstRun/OnboardingContent.h"
#include "TunedeckMenu/Panel/FirstRun/OnboardingState.h"
#include "TunedeckMenu/Panel/PanelContent.h"
#include "TunedeckMenu/Panel/PanelState.h"

/// Typical states of the panel and of the first-run window, for screenshots and view tests.
namespace tunedeck::samples {

/// What is shown for a state at the present time of all samples.
PanelContent contentOf(const PanelState& state);
OnboardingContent contentOf(const OnboardingState& state);
/// A time stamp this many seconds before the present time.
QString ago(qint64 seconds);

/// Before the service has replied.
PanelState checkingState();
/// A running service with three jobs, two links and three backups.
PanelState usualState();
PanelState stoppedState();
/// Every problem at once.
PanelState troubledState();
/// Long German names, right-to-left and emoji text, paths of 200 characters.
PanelState longWordsState();
/// Twelve links and sixty backups.
PanelState crowdedState();

inline PanelContent checking() {
    return contentOf(checkingState());
}
inline PanelContent usual() {
    return contentOf(usualState());
}
inline PanelContent stopped() {
    return contentOf(stoppedState());
}
inline PanelContent troubled() {
    return contentOf(troubledState());
}
inline PanelContent longWords() {
    return contentOf(longWordsState());
}
inline PanelContent crowded() {
    return contentOf(crowdedState());
}

/// A new link that hasn't been used.
AssistantLink link(const QString& id, Assistant assistant);
/// The status document of a state with a running service.
ServiceStatus& status(PanelState& state);

OnboardingState toolsStep();
OnboardingState rekordboxStep();
/// Before an assistant is chosen, or with the link of the chosen one.
OnboardingState assistantStep();
OnboardingState assistantStep(Assistant assistant);

} // namespace tunedeck::samples
