#pragma once

#include "TunedeckCore/Update/Appcast.h"
#include "TunedeckCore/Update/UpdateCheck.h"
#include "TunedeckCore/Update/UpdateError.h"
#include "TunedeckMenu/Platform/SystemFacts.h"

#include <QCoroTask>
#include <QLatin1StringView>
#include <QUrl>

#include <expected>
#include <functional>
#include <optional>
#include <stop_token>

namespace tunedeck {

/// Receives the progress of a download, 0 to 1; nothing while it isn't known.
using ProgressHandler = std::function<void(std::optional<double> progress)>;

/// The user default with the time of the last check that reached the feed.
inline constexpr QLatin1StringView lastUpdateCheckKey("LastUpdateCheck");

/// How the application finds and installs its own updates; functions, so that tests can replace them.
struct UpdateServices {
    /// Asks the feed for a version newer than the running one.
    std::function<QCoro::Task<UpdateCheck>(std::stop_token stop)> check;
    /// Replaces the running bundle with a release.
    std::function<QCoro::Task<std::expected<void, UpdateError>>(Release release, ProgressHandler progress,
                                                                std::stop_token stop)>
        install;
    /// The disk image for installing by hand, for a release that names none.
    QUrl latestDiskImageUrl = {};
};

/// The product's signed feed, fetched with the bundle's helper program, and the installer for that bundle.
UpdateServices makeUpdateServices(const SystemFacts& facts);

} // namespace tunedeck
