#pragma once

#include "TunedeckMenu/Panel/PanelModule.h"

/// Panels as they come up in use, made by hand.
namespace tunedeck::samples {

/// A good day: running, three jobs, links, backups.
PanelContent usual();
/// Before the first answer of the service.
PanelContent checking();
/// The service is stopped.
PanelContent stopped();
/// All that can go wrong at once.
PanelContent troubled();
/// Long German names, right-to-left and emoji text, paths of 200 characters.
PanelContent longWords();
/// Twelve links and sixty backups.
PanelContent crowded();

LinkRowView privateLink(const QString& id, const QString& name, const QString& detail, bool connected);
LinkRowView shortcutLink(const QString& id);
LinkRowView telegramLink(const QString& id, bool paired);
JobRowView job(const QString& id, const QString& state, const QString& playlist, const QString& trailing);

OnboardingContent toolsStep();
OnboardingContent rekordboxStep();
OnboardingContent assistantStep();

} // namespace tunedeck::samples
