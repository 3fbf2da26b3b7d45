#include "TunedeckMenu/Panel/Cards/NotRunningCard.h"

using namespace Qt::StringLiterals;

namespace tunedeck {

NotRunningView notRunningCard(const ServiceState& service, bool isStarting) {
    return {
        .shown = service.isNotRunning(),
        .title = u"Service"_s,
        .text = u"tunedeck isn't running. Downloads you request wait in the cloud queue until it's back."_s,
        .button = isStarting ? u"Starting…"_s : u"Start tunedeck"_s,
        .starting = isStarting,
    };
}

} // namespace tunedeck
