#include "TunedeckMenu/Panel/Cards/HiddenIconCard.h"

using namespace Qt::StringLiterals;

namespace tunedeck {

TextCardView hiddenIconCard(const MenuBarIconVisibility& icon) {
    return {
        .shown = icon.kind == MenuBarIconVisibility::Kind::hidden,
        .title = u"Menu bar"_s,
        .text = u"Hold ⌘ and drag other icons out of the menu bar to make room — Tunedeck sits next to the "
                "clock. Until then, open Tunedeck from Spotlight (⌘ Space, “Tunedeck”) to get this "
                "window."_s,
    };
}

} // namespace tunedeck
