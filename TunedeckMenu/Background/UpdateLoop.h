#pragma once

#include "TunedeckCore/Support/Async/Clock.h"
#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Model/MenuModel.h"

#include <QCoroTask>

namespace tunedeck {

/// Checks for updates one minute after the start and then every 6 hours, including time that the machine is suspended.
class UpdateLoop {
public:
    UpdateLoop(MenuModel& model, Clock& clock) : m_model(model), m_clock(clock) {}

    /// Call it once.
    void start();

private:
    QCoro::Task<> run();

    MenuModel& m_model;
    Clock& m_clock;
    TaskScope m_scope;
};

} // namespace tunedeck
