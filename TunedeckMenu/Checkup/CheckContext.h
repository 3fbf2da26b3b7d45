#pragma once

#include "TunedeckCore/Locations/BundlePaths.h"
#include "TunedeckCore/Locations/Paths.h"
#include "TunedeckCore/Locations/UserPaths.h"
#include "TunedeckCore/Service/StatusClient.h"
#include "TunedeckCore/Support/Http/Downloader.h"
#include "TunedeckMenu/Platform/SystemFacts.h"
#include "TunedeckMenu/Platform/SystemProbe.h"

#include <QDateTime>
#include <QString>
#include <QUrl>

#include <optional>

namespace tunedeck {

/// What several checks need to know.
struct CheckContext {
    SystemFacts facts;
    SystemProbe system;
    QDateTime now;
    std::optional<QDateTime> lastUpdateCheck; ///< that reached the feed
    QUrl serviceUrl;
    StatusClient::Reply status;
    std::optional<RunningInstance> instance;

    [[nodiscard]] UserPaths paths() const { return UserPaths(facts.home); }
    [[nodiscard]] BundlePaths bundle() const { return BundlePaths(facts.bundle); }
    [[nodiscard]] Downloader downloader() const { return Downloader(bundle().updateHelper()); }
    /// A path as shown to the user.
    [[nodiscard]] QString shown(const QString& path) const { return abbreviatingHome(path, facts.home); }
};

} // namespace tunedeck
