#include "TunedeckMenu/Actions/UpdateActions.h"

#include "TunedeckMenu/Actions/Openers.h"

#include <exception>
#include <expected>
#include <variant>

namespace tunedeck {

using namespace Qt::StringLiterals;

UpdateActions::UpdateActions(PanelActions& panel, MenuModel& model, const MenuServices& services)
    : m_model(model), m_services(services) {
    connect(&panel, &PanelActions::checkForUpdates, this,
            [this] { m_model.checkForUpdates(MenuModel::CheckTrigger::User); });
    connect(&panel, &PanelActions::installUpdate, this, &UpdateActions::installUpdate);
}

void UpdateActions::installUpdate() {
    const auto* available = std::get_if<UpdateState::Available>(&m_model.state().update.value);
    if (available == nullptr) {
        return;
    }
    const auto release = available->release;
    m_model.setUpdate({UpdateState::Installing{}});
    spawn(install(release));
}

QCoro::Task<> UpdateActions::install(Release release) {
    const auto stop = m_scope.token();
    const ProgressHandler progress = [this, stop](std::optional<double> fraction) {
        if (!stop.stop_requested()) {
            m_model.setUpdate({UpdateState::Installing{fraction}});
        }
    };
    std::expected<void, UpdateError> installed;
    try {
        installed = co_await m_services.updates.install(release, progress, stop);
    } catch (const std::exception& error) {
        installed = std::unexpected(UpdateError::other(QString::fromUtf8(error.what())));
    }
    if (stop.stop_requested()) {
        co_return;
    }
    if (installed) {
        // Quits in any case: the running version no longer matches the installed bundle.
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
    const QUrl releaseUrl(release.dmgUrl.value_or(QString()), QUrl::StrictMode);
    const bool isWeb = releaseUrl.scheme() == u"https"_s || releaseUrl.scheme() == u"http"_s;
    const auto url = releaseUrl.isValid() && isWeb ? releaseUrl : m_services.updates.latestDiskImageUrl;
    openUrl(url, m_services.workspace, m_model);
}

} // namespace tunedeck
