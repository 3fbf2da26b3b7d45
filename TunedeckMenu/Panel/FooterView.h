#pragma once

#include "TunedeckMenu/Panel/ViewProperty.h"

namespace tunedeck {

struct FooterView {
    Q_GADGET
    VIEW_PROPERTY(QString, loginTitle) = u"Open at Login"_s;
    VIEW_PROPERTY(bool, opensAtLogin) = false;
    VIEW_PROPERTY(bool, restarting) = false;
    VIEW_PROPERTY(QString, restartLabel) = u"Restart tunedeck"_s;
    VIEW_PROPERTY(QString, logLabel) = u"Open Log"_s;
    VIEW_PROPERTY(QString, quitLabel) = u"Quit Tunedeck"_s;
    bool operator==(const FooterView&) const = default;
};

} // namespace tunedeck
