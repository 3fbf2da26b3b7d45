#include "TunedeckMenu/Panel/Cards/NotRunningCard.h"

using namespace Qt::StringLiterals;

namespace tunedeck {

NotRunningView notRunningCard(const ServiceState& service, bool isStarting) {
    return {
        .shown = service.isNotRunning(),
        .button = isStarting ? u"Starting…"_s : u"Start tunedeck"_s,
        .starting = isStarting,
    };
}

} // namespace tunedeck
