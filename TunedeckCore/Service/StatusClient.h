#pragma once

#include "TunedeckCore/Service/DocumentFailure.h"
#include "TunedeckCore/Service/ServiceStatus.h"

#include <QCoroTask>
#include <QUrl>

#include <expected>
#include <optional>
#include <stop_token>

namespace tunedeck {

/// Fetches the service's status.
struct StatusClient {
    /// Full URL of the status resource; default: resolved by ServiceEndpoint for each call.
    std::optional<QUrl> url = {};

    using Reply = std::expected<ServiceStatus, DocumentFailure>;

    /// Fails unless a valid document arrives with status 200 within 2 seconds.
    QCoro::Task<Reply> request(std::stop_token stop = {}) const;
    /// Like request(); nothing on any failure.
    QCoro::Task<std::optional<ServiceStatus>> fetch(std::stop_token stop = {}) const;
};

} // namespace tunedeck
