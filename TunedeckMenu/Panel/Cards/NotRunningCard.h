#pragma once

#include "TunedeckMenu/Panel/ServiceState.h"
#include "TunedeckMenu/Panel/ViewProperty.h"

namespace tunedeck {

struct NotRunningView {
    Q_GADGET
    VIEW_PROPERTY(bool, shown) = false;
    VIEW_PROPERTY(QString, title) = u"Service"_s;
    VIEW_PROPERTY(QString, text) = u"tunedeck isn't running. Downloads you request wait in the cloud "
                                   "queue until it's back."_s;
    VIEW_PROPERTY(QString, button);
    VIEW_PROPERTY(bool, starting) = false;
    bool operator==(const NotRunningView&) const = default;
};

NotRunningView notRunningCard(const ServiceState& service, bool isStarting);

} // namespace tunedeck
