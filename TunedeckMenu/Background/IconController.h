#pragma once

#include "TunedeckMenu/Model/MenuModel.h"
#include "TunedeckMenu/Platform/StatusItem.h"

#include <QObject>

#include <optional>

namespace tunedeck {

/// The symbol that stands for a service in that state: a warning when it doesn't run or can't save songs.
QString iconSymbol(const ServiceState& service);

/// Keeps the icon in step with the service, as the model or, while no panel is open, the follow loop sees it: the
/// latest of both counts.
class IconController : public QObject {
    Q_OBJECT
public:
    IconController(MenuModel& model, StatusItem& item, QObject* parent = nullptr);

    /// What the follow loop saw. As long as no status has come and the start-up still waits for one, a missing service
    /// is only late.
    void statusFetched(const std::optional<ServiceStatus>& status);
    /// From now on a missing service isn't running.
    void stopWaitingForService() { m_waiting = false; }

private:
    void show(const ServiceState& service);

    StatusItem& m_item;
    bool m_waiting = true;
};

} // namespace tunedeck
