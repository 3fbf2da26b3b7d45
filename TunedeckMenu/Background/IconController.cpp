#include "TunedeckMenu/Background/IconController.h"

#include "TunedeckMenu/Panel/Cards/DownloadsCard.h"
#include "TunedeckMenu/Panel/TrayMenu.h"

#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;

QString iconSymbol(const ServiceState& service) {
    const bool attention = service.isNotRunning() || folderFault(service);
    return attention ? u"exclamationmark.triangle"_s : u"music.note.list"_s;
}

IconController::IconController(MenuModel& model, StatusItem& item, QObject* parent)
    : QObject(parent), m_model(model), m_item(item), m_service(model.state().service) {
    connect(&model, &MenuModel::serviceChanged, this, [this] { m_service = m_model.state().service; });
    connect(&model, &MenuModel::changed, this, &IconController::update);
    connect(&item, &StatusItem::menuOpening, this, [this] {
        m_refresh.restart();
        spawn(m_model.refresh(m_refresh.token()));
    });
    update();
}

void IconController::statusFetched(std::optional<ServiceStatus> status) {
    if (!status && m_waiting) {
        return;
    }
    m_service = status ? ServiceState::running(std::move(*status)) : ServiceState::notRunning();
    update();
}

void IconController::update() {
    m_item.setSymbol(iconSymbol(m_service), trayToolTip(m_service));
    m_item.setMenu(trayMenu(m_service, m_model.state()));
}

} // namespace tunedeck
