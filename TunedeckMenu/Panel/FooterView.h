#pragma once

#include "TunedeckMenu/Panel/ViewProperty.h"

namespace tunedeck {

struct FooterView {
    Q_GADGET
    VIEW_PROPERTY(QString, loginTitle);
    VIEW_PROPERTY(bool, opensAtLogin) = false;
    VIEW_PROPERTY(bool, restarting) = false;
    VIEW_PROPERTY(QString, restartLabel);
    VIEW_PROPERTY(QString, logLabel);
    VIEW_PROPERTY(QString, quitLabel);
    bool operator==(const FooterView&) const = default;
};

FooterView footer(bool opensAtLogin, bool isRestarting);

} // namespace tunedeck
