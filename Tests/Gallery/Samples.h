#pragma once

#include "TunedeckMenu/Panel/FirstRun/OnboardingContent.h"
#include "TunedeckMenu/Panel/FirstRun/OnboardingState.h"
#include "TunedeckMenu/Panel/PanelContent.h"
#include "TunedeckMenu/Panel/PanelState.h"

namespace tunedeck {

/// What is shown for a state at the present time of all samples.
PanelContent contentOf(const PanelState& state, const RowRanges& ranges = {});
OnboardingContent contentOf(const OnboardingState& state);

/// Typical states of the panel and of the first-run window, for screenshots and view tests.
namespace samples {

/// A time stamp this many seconds before the present time.
QString ago(qint64 seconds);

/// Before the service has replied.
PanelState checking();
/// A running service with three jobs, two links and three backups.
PanelState usual();
PanelState stopped();
/// Every problem at once.
PanelState troubled();
/// Everything at once is being changed.
PanelState busy();
/// Long German names, right-to-left and emoji text, paths of 200 characters.
PanelState longWords();
/// Twelve links and sixty backups.
PanelState crowded();

/// A new link that hasn't been used.
AssistantLink link(const QString& id, Assistant assistant);
/// The status document of a state with a running service.
ServiceStatus& status(PanelState& state);

/// With a version on offer and the note of an action.
PanelState offered();

/// The service can't be started.
OnboardingState noService();
/// The first backup has been under way for a minute.
OnboardingState slowBackup();
OnboardingState toolsStep();
/// After a failed installation.
OnboardingState brokenTools();
OnboardingState rekordboxStep();
/// Without Rekordbox, after a failed backup.
OnboardingState postponedBackup();
/// Before an assistant is chosen, or with the link of the chosen one.
OnboardingState assistantStep();
OnboardingState assistantStep(Assistant assistant);

/// All of these states, with names.
QList<std::pair<QString, PanelState>> panels();
QList<std::pair<QString, OnboardingState>> firstRuns();

} // namespace samples
} // namespace tunedeck
