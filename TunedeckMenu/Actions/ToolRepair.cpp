#include "TunedeckMenu/Actions/ToolRepair.h"

namespace tunedeck {

using namespace Qt::StringLiterals;

void ToolRepair::start() {
    if (!m_requests.isBusy()) {
        m_feedback.clearError();
        spawn(install());
    }
}

QCoro::Task<> ToolRepair::install() {
    const auto stop = m_scope.token();
    const auto inFlight = m_requests.begin();
    const bool accepted = co_await m_services.toolbox.install(stop);
    if (stop.stop_requested()) {
        co_return;
    }
    if (!accepted) {
        m_feedback.showError(u"Couldn't reach tunedeck to repair its tools."_s);
    } else if (m_onAccepted) {
        m_onAccepted();
    }
}

} // namespace tunedeck
