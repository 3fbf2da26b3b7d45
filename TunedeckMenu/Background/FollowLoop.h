#pragma once

#include "TunedeckCore/Service/JobWatcher.h"
#include "TunedeckCore/Service/LibraryWatcher.h"
#include "TunedeckCore/Service/ServiceStatus.h"
#include "TunedeckCore/Service/StatusClient.h"
#include "TunedeckCore/Support/Async/Clock.h"
#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Background/Notifier.h"

#include <QCoroTask>

#include <functional>
#include <optional>

namespace tunedeck {

/// Follows the service for as long as the application runs: every 4 seconds what is new in its status is announced.
class FollowLoop {
public:
    /// `onFetched` is told the outcome of every fetch, nothing for a failed one.
    FollowLoop(Clock& clock, StatusClient client, Notifier& notifier,
               std::function<void(const std::optional<ServiceStatus>&)> onFetched);

    /// Begins; to be called once.
    void start();

private:
    QCoro::Task<> follow();
    void announce(const ServiceStatus& status);

    Clock& m_clock;
    StatusClient m_client;
    Notifier& m_notifier;
    std::function<void(const std::optional<ServiceStatus>&)> m_onFetched;
    JobWatcher m_jobs;
    LibraryWatcher m_library;
    TaskScope m_scope;
};

} // namespace tunedeck
