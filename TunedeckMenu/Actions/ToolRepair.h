#pragma once

#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Model/ActionFeedback.h"
#include "TunedeckMenu/Model/InFlight.h"
#include "TunedeckMenu/Model/MenuServices.h"

#include <QCoroTask>

#include <functional>
#include <utility>

namespace tunedeck {

/// Asks the service to install its tools again.
class ToolRepair {
public:
    /// `onAccepted` runs when the service has accepted the request.
    ToolRepair(const MenuServices& services, ActionFeedback& feedback, std::function<void()> onAccepted = {})
        : m_services(services), m_feedback(feedback), m_onAccepted(std::move(onAccepted)) {}

    /// No-op while a request is in flight.
    void start();

private:
    QCoro::Task<> install();

    const MenuServices& m_services;
    ActionFeedback& m_feedback;
    std::function<void()> m_onAccepted;
    InFlight m_requests;
    TaskScope m_scope;
};

} // namespace tunedeck
