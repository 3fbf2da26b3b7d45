#pragma once

#include "TunedeckCore/MenuBarPlacement.h"
#include "TunedeckMenu/Panel/ViewProperty.h"

namespace tunedeck {

/// Whether the desktop has no tray at all.
enum class MissingTray {
    No,
    Yes,
    Dismissed, ///< and the user doesn't want to read about it again
};

struct HiddenIconView {
    Q_GADGET
    VIEW_PROPERTY(bool, shown) = false;
    VIEW_PROPERTY(QString, title) = u"Menu bar"_s;
    VIEW_PROPERTY(QString, text) = u"Hold ⌘ and drag other icons out of the menu bar to make room — Tunedeck "
                                   "sits next to the clock. Until then, open Tunedeck from Spotlight (⌘ Space, "
                                   "“Tunedeck”) to get this window."_s;
    VIEW_PROPERTY(QString, missingTray); ///< what else to know; empty, like the buttons, where there is a tray
    VIEW_PROPERTY(QString, guideButton);
    VIEW_PROPERTY(QString, dismissButton);
    bool operator==(const HiddenIconView&) const = default;
};

HiddenIconView hiddenIconCard(const MenuBarIconVisibility& icon, MissingTray missingTray);

} // namespace tunedeck
