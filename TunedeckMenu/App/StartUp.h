#pragma once

#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Model/MenuModel.h"
#include "TunedeckMenu/Model/ServiceSetup.h"

#include <QCoroTask>

#include <functional>
#include <optional>
#include <stop_token>
#include <vector>

namespace tunedeck {

/// Installs the service and waits for it, then opens the first-run window or the main window if necessary.
class StartUp {
public:
    struct Callbacks {
        std::function<void()> waitEnded;         ///< the service answered, or didn't in time
        std::function<void()> showOnboarding;    ///< this is the first run
        std::function<void()> showWindow;        ///< the user started the application by hand
        std::function<void()> startUpdateChecks; ///< everything else is done
    };
    StartUp(MenuModel& model, const MenuServices& services, ServiceSetup& setup, Callbacks callbacks);

    /// Call it once.
    void start();

private:
    QCoro::Task<> run();
    QCoro::Task<> install(std::stop_token stop);
    QCoro::Task<std::optional<ServiceStatus>> waitForService(std::stop_token stop);
    QCoro::Task<std::vector<AssistantLink>> registeredLinks(bool registered, std::stop_token stop);
    void openWindowIfDue(const std::optional<ServiceStatus>& status, const std::vector<AssistantLink>& links);

    MenuModel& m_model;
    const MenuServices& m_services;
    ServiceSetup& m_setup;
    Callbacks m_callbacks;
    TaskScope m_scope;
};

} // namespace tunedeck
