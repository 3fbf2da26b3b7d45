#pragma once

#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Model/MenuModel.h"
#include "TunedeckMenu/Platform/StatusItem.h"

#include <QObject>

#include <optional>

namespace tunedeck {

/// The icon's symbol: a warning when the service isn't running or can't save songs.
QString iconSymbol(const ServiceState& service);

/// Shows the service's state in the icon, its tooltip and its menu. The latest status counts, whether it comes from the
/// model or, while no panel is open, from the follow loop. When the menu opens, the model is refreshed: nothing else
/// fetches the tools.
class IconController : public QObject {
    Q_OBJECT
public:
    IconController(MenuModel& model, StatusItem& item, QObject* parent = nullptr);

    /// `status`: a result of the follow loop. Failures are ignored until stopWaitingForService() is called.
    void statusFetched(std::optional<ServiceStatus> status);
    /// Start-up has given up waiting: from now on a failure means that the service isn't running.
    void stopWaitingForService() { m_waiting = false; }

private:
    void update();

    MenuModel& m_model;
    StatusItem& m_item;
    ServiceState m_service; ///< the latest
    bool m_waiting = true;
    TaskScope m_refresh;
};

} // namespace tunedeck
