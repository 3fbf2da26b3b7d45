#include "TunedeckMenu/Background/IconController.h"

namespace tunedeck {

using namespace Qt::StringLiterals;

QString iconSymbol(const ServiceState& service) {
    const auto* status = service.status();
    const bool attention = service.isNotRunning() || (status != nullptr && !status->downloadDirWritable);
    return attention ? u"exclamationmark.triangle"_s : u"music.note.list"_s;
}

IconController::IconController(MenuModel& model, StatusItem& item, QObject* parent) : QObject(parent), m_item(item) {
    connect(&model, &MenuModel::serviceChanged, this, [this, &model] { show(model.state().service); });
    show(model.state().service);
}

void IconController::statusFetched(const std::optional<ServiceStatus>& status) {
    if (status) {
        show(ServiceState::running(*status));
    } else if (!m_waiting) {
        show(ServiceState::notRunning());
    }
}

void IconController::show(const ServiceState& service) {
    m_item.setSymbol(iconSymbol(service), u"Tunedeck"_s);
}

} // namespace tunedeck
