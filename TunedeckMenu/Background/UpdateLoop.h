#pragma once

#include "TunedeckCore/Support/Async/Clock.h"
#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Model/MenuModel.h"

#include <QCoroTask>

namespace tunedeck {

/// Looks for updates by itself: a minute after the start and then every 6 hours, the time asleep included.
class UpdateLoop {
public:
    UpdateLoop(MenuModel& model, Clock& clock) : m_model(model), m_clock(clock) {}

    /// Begins; to be called once.
    void start();

private:
    QCoro::Task<> run();

    MenuModel& m_model;
    Clock& m_clock;
    TaskScope m_scope;
};

} // namespace tunedeck
