#pragma once

#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Model/MenuModel.h"

#include <QCoroTask>

namespace tunedeck {

/// What the user can have done to the background service itself.
class ServiceActions {
public:
    ServiceActions(MenuModel& model, const MenuServices& services) : m_model(model), m_services(services) {}

    /// Restarts a running service and starts a stopped one; while that is under way, does nothing.
    void restart();
    /// Has the service install its tools anew; while that is being asked for, does nothing.
    void repairTools();
    /// Opens the service's log with the user's viewer.
    void openLog();

private:
    QCoro::Task<> restartService();
    QCoro::Task<> installTools();

    MenuModel& m_model;
    const MenuServices& m_services;
    bool m_repairing = false;
    TaskScope m_scope;
};

} // namespace tunedeck
