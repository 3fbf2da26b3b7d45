#include "TunedeckMenu/Model/UpdateServices.h"

#include "TunedeckCore/Locations/BundlePaths.h"
#include "TunedeckCore/Update/ScratchFolder.h"
#include "TunedeckCore/Update/UpdateFeed.h"
#include "TunedeckCore/Update/UpdateInstaller.h"

namespace tunedeck {

namespace {

QCoro::Task<std::expected<void, UpdateError>> install(Release release, SystemFacts facts, Downloader downloader,
                                                      ProgressHandler progress, std::stop_token stop) {
    DownloadProgress received = [progress](std::int64_t bytes, std::optional<std::int64_t> total) {
        progress(total ? std::optional(static_cast<double>(bytes) / static_cast<double>(*total)) : std::nullopt);
    };
    const auto result =
        co_await UpdateInstaller::install(release, facts.bundle, facts.bundleIdentifier, downloader, received, stop);
    if (!result) {
        co_return std::unexpected(result.error());
    }
    co_return {};
}

} // namespace

UpdateServices makeUpdateServices(const SystemFacts& facts) {
    const Downloader downloader(BundlePaths(facts.bundle).updateHelper());
    return {
        .check =
            [facts, feed = UpdateFeed::standard(downloader)](std::stop_token stop) {
                ScratchFolder::removeStale(facts.bundle); // left behind by a killed update
                return feed.check(facts.appVersion, facts.systemVersion, std::move(stop));
            },
        .install =
            [facts, downloader](Release release, ProgressHandler progress, std::stop_token stop) {
                return install(std::move(release), facts, downloader, std::move(progress), std::move(stop));
            },
        .latestDiskImageUrl = UpdateFeed::latestDMG(),
    };
}

} // namespace tunedeck
