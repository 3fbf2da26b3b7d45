#pragma once

#include "TunedeckMenu/Panel/FirstRun/OnboardingContent.h"
#include "TunedeckMenu/Panel/FirstRun/OnboardingState.h"
#include "TunedeckMenu/Panel/PanelContent.h"
#include "TunedeckMenu/Panel/PanelState.h"

/// Panels as they come up in use: the states are made by hand, the words are the panel's own.
namespace tunedeck::samples {

/// What the panel says of a state at the moment at which all samples take place.
PanelContent said(const PanelState& state);
OnboardingContent said(const OnboardingState& state);
/// A time stamp so many seconds before that moment.
QString ago(qint64 seconds);

/// A good day: running, three jobs, links, backups.
PanelState usualState();
/// The service is stopped.
PanelState stoppedState();
/// All that can go wrong at once.
PanelState troubledState();
/// Long German names, right-to-left and emoji text, paths of 200 characters.
PanelState longWordsState();
/// Twelve links and sixty backups.
PanelState crowdedState();

/// What is said of these, and before the first answer of the service.
PanelContent usual();
PanelContent checking();
PanelContent stopped();
PanelContent troubled();
PanelContent longWords();
PanelContent crowded();

/// A link as the service makes it, not used yet.
AssistantLink link(const QString& id, Assistant assistant);
/// The document of a running service.
ServiceStatus& status(PanelState& state);

OnboardingState toolsStep();
OnboardingState rekordboxStep();
/// With no assistant picked yet, or with that one and its link.
OnboardingState assistantStep();
OnboardingState assistantStep(Assistant assistant);

} // namespace tunedeck::samples
