#pragma once

#include "TunedeckCore/Service/Toolbox.h"

#include <QCoroTask>
#include <QUrl>

#include <optional>
#include <stop_token>

namespace tunedeck {

/// Asks the service about its tools and to install them.
struct ToolboxClient {
    std::optional<QUrl> baseURL = {}; ///< found through ServiceEndpoint for each call when absent

    /// The report, or nothing when there is no good answer with status 200 within 3 seconds.
    QCoro::Task<std::optional<ToolboxReport>> fetch(std::stop_token stop = {}) const;

    /// Asks for an installation; true exactly when the service accepts it with status 202 within 10 seconds.
    QCoro::Task<bool> install(std::stop_token stop = {}) const;
};

} // namespace tunedeck
