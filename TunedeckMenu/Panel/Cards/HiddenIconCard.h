#pragma once

#include "TunedeckMenu/Panel/ViewProperty.h"

namespace tunedeck {

struct HiddenIconView {
    Q_GADGET
    VIEW_PROPERTY(bool, shown) = false;
    VIEW_PROPERTY(QString, title) = u"Menu bar"_s;
    VIEW_PROPERTY(QString, text) = u"Hold ⌘ and drag other icons out of the menu bar to make room — Tunedeck "
                                   "sits next to the clock. Until then, open Tunedeck from Spotlight (⌘ Space, "
                                   "“Tunedeck”) to get this window."_s;
    bool operator==(const HiddenIconView&) const = default;
};

} // namespace tunedeck
