#include "TunedeckMenu/Model/UpdateServices.h"

#include "TunedeckCore/Locations/BundlePaths.h"
#include "TunedeckCore/Update/ScratchFolder.h"
#include "TunedeckCore/Update/UpdateFeed.h"
#include "TunedeckCore/Update/UpdateInstaller.h"

namespace tunedeck {

namespace {

QCoro::Task<UpdateCheck> check(UpdateFeed feed, SystemFacts facts, std::stop_token stop) {
    co_await ScratchFolder::removeStale(facts.bundle, stop); // left behind by a killed update
    co_return co_await feed.check(facts.appVersion, facts.systemVersion, stop);
}

QCoro::Task<std::expected<void, UpdateError>> install(Release release, SystemFacts facts, QString helper,
                                                      ProgressHandler progress, std::stop_token stop) {
    DownloadProgress received = [progress](std::int64_t bytes, std::optional<std::int64_t> total) {
        progress(total ? std::optional(static_cast<double>(bytes) / static_cast<double>(*total)) : std::nullopt);
    };
    const auto result =
        co_await UpdateInstaller::install(release, facts.bundle, facts.bundleIdentifier, helper, received, stop);
    if (!result) {
        co_return std::unexpected(result.error());
    }
    co_return {};
}

} // namespace

UpdateServices makeUpdateServices(const SystemFacts& facts) {
    const QString helper = BundlePaths(facts.bundle).updateHelper();
    return {
        .check = [facts, feed = UpdateFeed::standard(helper)](
                     std::stop_token stop) { return check(feed, facts, std::move(stop)); },
        .install =
            [facts, helper](Release release, ProgressHandler progress, std::stop_token stop) {
                return install(std::move(release), facts, helper, std::move(progress), std::move(stop));
            },
        .latestDiskImageUrl = UpdateFeed::latestDMG(),
    };
}

} // namespace tunedeck
