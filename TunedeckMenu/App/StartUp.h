#pragma once

#include "TunedeckCore/Installation/ServiceInstaller.h"
#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Model/MenuModel.h"

#include <QCoroTask>

#include <functional>
#include <optional>
#include <stop_token>
#include <vector>

namespace tunedeck {

/// What happens once after the icon stands: the service is installed and waited for, then a window opens where one is
/// due.
class StartUp {
public:
    /// What it leads to.
    struct Outcome {
        std::function<void()> waitEnded;         ///< the service answered, or was given up
        std::function<void()> showOnboarding;    ///< this is the first run
        std::function<void()> showWindow;        ///< the user started the application by hand
        std::function<void()> startUpdateChecks; ///< all else is done
    };
    StartUp(MenuModel& model, const MenuServices& services, ServiceInstaller installer, Outcome outcome);

    /// Begins; to be called once.
    void start();

private:
    QCoro::Task<> run();
    QCoro::Task<> install(std::stop_token stop);
    QCoro::Task<std::optional<ServiceStatus>> waitForService(std::stop_token stop);

    QCoro::Task<std::vector<AssistantLink>> registeredLinks(bool registered, std::stop_token stop);
    void decideOnWindow(const std::optional<ServiceStatus>& status, const std::vector<AssistantLink>& links);

    MenuModel& m_model;
    const MenuServices& m_services;
    ServiceInstaller m_installer;
    Outcome m_outcome;
    TaskScope m_scope;
};

} // namespace tunedeck
