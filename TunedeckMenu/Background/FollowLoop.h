#pragma once

#include "TunedeckCore/Service/ServiceStatus.h"
#include "TunedeckCore/Service/StatusClient.h"
#include "TunedeckCore/Support/Async/Clock.h"
#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Background/Notifier.h"

#include <QCoroTask>
#include <QString>

#include <functional>
#include <optional>

namespace tunedeck {

/// Polls the service every 4 seconds for as long as the application runs, and notifies the user of changes.
class FollowLoop {
public:
    /// `onFetched` gets the result of every fetch, nothing for a failed one.
    FollowLoop(Clock& clock, StatusClient client, Notifier& notifier,
               std::function<void(std::optional<ServiceStatus>)> onFetched);

    /// Call it once.
    void start();

private:
    QCoro::Task<> follow();
    void logIfInvalid(const StatusClient::Reply& reply);

    Clock& m_clock;
    StatusClient m_client;
    Notifier& m_notifier;
    std::function<void(std::optional<ServiceStatus>)> m_onFetched;
    QString m_logged; ///< why the last document was invalid; empty when it was valid
    TaskScope m_scope;
};

} // namespace tunedeck
