#pragma once

#include "TunedeckCore/Service/ServiceStatus.h"

#include <QCoroTask>
#include <QUrl>

#include <optional>
#include <stop_token>

namespace tunedeck {

/// Asks the service for its status.
struct StatusClient {
    /// The full URL of the status resource; found through ServiceEndpoint for each call when absent.
    std::optional<QUrl> url = {};

    /// The document, or nothing when there is no good answer with status 200 within 2 seconds.
    QCoro::Task<std::optional<ServiceStatus>> fetch(std::stop_token stop = {}) const;
};

} // namespace tunedeck
