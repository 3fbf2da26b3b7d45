#pragma once

#include "TunedeckCore/Service/Toolbox.h"

#include <QCoroTask>
#include <QUrl>

#include <optional>
#include <stop_token>

namespace tunedeck {

/// Fetches the report on the tools and requests their installation.
struct ToolboxClient {
    std::optional<QUrl> baseURL = {}; ///< default: resolved by ServiceEndpoint for each call

    /// Nothing unless a valid report arrives with status 200 within 3 seconds.
    QCoro::Task<std::optional<ToolboxReport>> fetch(std::stop_token stop = {}) const;

    /// Requests an installation; true if the service accepts it with status 202 within 10 seconds.
    QCoro::Task<bool> install(std::stop_token stop = {}) const;
};

} // namespace tunedeck
