#include "TunedeckMenu/Panel/Cards/HiddenIconCard.h"

using namespace Qt::StringLiterals;

namespace tunedeck {

HiddenIconView hiddenIconCard(const MenuBarIconVisibility& icon, MissingTray missingTray) {
    HiddenIconView card{
        .shown = icon.kind == MenuBarIconVisibility::Kind::hidden && missingTray != MissingTray::Dismissed,
    };
    if (missingTray == MissingTray::Yes) {
        card.missingTray =
            u"This desktop shows no tray icons, so Tunedeck opens this window instead. Many desktops show "
            "them after a small change."_s;
        card.guideButton = u"Show how"_s;
        card.dismissButton = u"Don't show again"_s;
    }
    return card;
}

} // namespace tunedeck
