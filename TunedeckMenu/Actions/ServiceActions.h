#pragma once

#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Actions/ToolRepair.h"
#include "TunedeckMenu/Model/MenuModel.h"
#include "TunedeckMenu/Panel/PanelActions.h"

#include <QCoroTask>
#include <QObject>

namespace tunedeck {

/// The actions on the background service itself.
class ServiceActions : public QObject {
public:
    ServiceActions(PanelActions& panel, MenuModel& model, const MenuServices& services);

private:
    /// Restarts a running service and starts a stopped one.
    QCoro::Task<> restart();

    MenuModel& m_model;
    const MenuServices& m_services;
    ToolRepair m_repair;
    TaskScope m_scope;
};

} // namespace tunedeck
