#pragma once

#include "TunedeckMenu/Model/MenuModel.h"
#include "TunedeckMenu/Platform/StatusItem.h"

#include <QObject>

#include <optional>

namespace tunedeck {

/// The icon's symbol: a warning when the service isn't running or can't save songs.
QString iconSymbol(const ServiceState& service);

/// Shows the service's state in the icon. The latest status counts, whether it comes from the model or, while no panel
/// is open, from the follow loop.
class IconController : public QObject {
    Q_OBJECT
public:
    IconController(MenuModel& model, StatusItem& item, QObject* parent = nullptr);

    /// `status`: a result of the follow loop. Failures are ignored until stopWaitingForService() is called.
    void statusFetched(const std::optional<ServiceStatus>& status);
    /// Start-up has given up waiting: from now on a failure means that the service isn't running.
    void stopWaitingForService() { m_waiting = false; }

private:
    void show(const ServiceState& service);

    StatusItem& m_item;
    bool m_waiting = true;
};

} // namespace tunedeck
