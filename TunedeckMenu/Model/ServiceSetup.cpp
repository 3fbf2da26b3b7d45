#include "TunedeckMenu/Model/ServiceSetup.h"

#include "TunedeckMenu/Platform/Log.h"

#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;
using Outcome = ServiceInstaller::Outcome;

ServiceSetup::ServiceSetup(ServiceInstaller installer) : m_installer(std::move(installer)) {}

QCoro::Task<> ServiceSetup::attempt() {
    if (m_isBusy) {
        co_return;
    }
    const auto stop = m_scope.token();
    m_isBusy = true;
    Q_EMIT changed();
    auto outcome = co_await m_installer.ensureInstalled(stop);
    if (stop.stop_requested()) {
        co_return;
    }
    m_isBusy = false;
    if (m_outcome != outcome) { // logged once, however often it is tried again
        qCInfo(appLog).noquote() << "service install:" << outcome.description();
        m_outcome = std::move(outcome);
    }
    Q_EMIT changed();
}

QString ServiceSetup::failure() const {
    const auto couldNotStart = u"Couldn't start Tunedeck's background service: "_s;
    const auto last = m_outcome.value_or(Outcome());
    switch (last.kind) {
    case Outcome::Kind::failed:
        return couldNotStart + last.message;
    case Outcome::Kind::notBundled:
        return couldNotStart + u"it is missing from the application. Please install Tunedeck again."_s;
    case Outcome::Kind::installed:
    case Outcome::Kind::upToDate:
        break;
    }
    return {};
}

} // namespace tunedeck
