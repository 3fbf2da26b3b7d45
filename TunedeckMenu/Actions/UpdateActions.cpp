#include "TunedeckMenu/Actions/UpdateActions.h"

#include <QUrl>

#include <variant>

namespace tunedeck {

void UpdateActions::installUpdate() {
    const auto* available = std::get_if<UpdateState::Available>(&m_model.state().update.value);
    if (available == nullptr || !m_services.updates.install) {
        return;
    }
    const auto release = available->release;
    m_model.setUpdate({UpdateState::Installing{}});
    spawn(install(release));
}

QCoro::Task<> UpdateActions::install(Release release) {
    const auto stop = m_scope.token();
    const ProgressHandler progress = [this, stop](std::optional<double> part) {
        if (!stop.stop_requested()) {
            m_model.setUpdate({UpdateState::Installing{part}});
        }
    };
    const auto installed = co_await m_services.updates.install(release, progress, stop);
    if (stop.stop_requested()) {
        co_return;
    }
    if (installed) {
        m_services.relauncher.relaunch(m_services.facts.bundle, {});
        m_services.quit();
    } else if (installed.error().kind == UpdateError::Kind::notWritable) {
        openDiskImage(release);
        m_model.setUpdate({UpdateState::Available{release}});
    } else {
        m_model.setUpdate({UpdateState::Failed{installed.error().description()}});
    }
}

void UpdateActions::openDiskImage(const Release& release) {
    const QUrl named(release.dmgUrl.value_or(QString()), QUrl::StrictMode);
    const bool isWeb = named.scheme() == QStringLiteral("https") || named.scheme() == QStringLiteral("http");
    const auto url = named.isValid() && isWeb ? named : m_services.updates.latestDiskImageUrl;
    if (!m_services.workspace.open(url)) {
        m_model.show(QStringLiteral("Couldn't open %1.").arg(url.toDisplayString()));
    }
}

} // namespace tunedeck
