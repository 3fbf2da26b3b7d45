#include "TunedeckCore/Update/UpdateFeed.h"

#include "TunedeckCore/Locations/WebEndpoint.h"
#include "TunedeckCore/Support/Async/HelperProgram.h"
#include "TunedeckCore/Update/SemVer.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

constexpr std::int64_t feedLimit = 1024 * 1024;
constexpr std::chrono::seconds feedTimeout{30};

QCoro::Task<std::expected<UpdateFeed::Fetched, UpdateError>> fetchWith(Downloader downloader, QUrl url,
                                                                       std::stop_token stop) {
    auto document = co_await downloader.fetch(std::move(url), feedLimit, feedTimeout, stop);
    if (!document) {
        co_return std::unexpected(UpdateError::other(document.error()));
    }
    if (document->status != 200) {
        co_return std::unexpected(UpdateError::http(document->status));
    }
    co_return UpdateFeed::Fetched{std::move(document->body)};
}

/// Verifies the signature in the helper; both texts as they were fetched.
QCoro::Task<std::expected<bool, UpdateError>> isSignedBy(QString helper, QByteArray bytes, QByteArray signature,
                                                         QString publicKey, std::stop_token stop) {
    // Through a pipe, because a file would stay if this process were killed.
    HelperRequest request{.subcommand = u"verify"_s,
                          .operands = {publicKey, QString::number(signature.size())},
                          .input = signature + bytes};
    const auto ended = co_await runHelper(helper, request, stop);
    if (!ended || ended->status == HelperStatus::Failed) {
        co_return std::unexpected(UpdateError::other(ended ? ended->text : ended.error()));
    }
    co_return ended->status == HelperStatus::Done;
}

UpdateCheck failed(QString message) {
    return {UpdateCheck::Failed{std::move(message)}};
}

/// A missing feed or signature (404) means that no update is published.
UpdateCheck afterError(const UpdateError& error) {
    return error == UpdateError::http(404) ? UpdateCheck{UpdateCheck::UpToDate{}} : failed(error.description());
}

/// A component of a minimum version; 0 unless it is a decimal integer. toLongLong() alone would accept spaces.
std::int64_t versionNumber(const QString& piece) {
    return piece.front().isSpace() || piece.back().isSpace() ? 0 : piece.toLongLong();
}

UpdateCheck compare(const Release& latest, const QString& currentVersion, const SystemVersion& system) {
    const auto offered = SemVer::parse(latest.version);
    const auto current = SemVer::parse(currentVersion);
    if (!offered || !current) {
        return failed(u"Unreadable version in the update feed."_s);
    }
    if (*offered <= *current) {
        return {UpdateCheck::UpToDate{}};
    }
    if (latest.minMacos && !UpdateFeed::satisfies(system, *latest.minMacos)) {
        return failed(u"Tunedeck %1 needs macOS %2 or later."_s.arg(latest.version, *latest.minMacos));
    }
    return {UpdateCheck::Available{latest}};
}

} // namespace

UpdateFeed UpdateFeed::standard(QString helper) {
    return {.url = defaultURL(),
            .publicKey = WebEndpoint::feedKey(),
            .fetch = download(Downloader(helper)),
            .helper = helper};
}

QUrl UpdateFeed::defaultURL() {
    return WebEndpoint::url(u"/download/appcast.json"_s);
}

QUrl UpdateFeed::latestDMG() {
    return WebEndpoint::url(u"/download/Tunedeck-latest.dmg"_s);
}

UpdateFeed::Fetch UpdateFeed::download(Downloader downloader) {
    return [downloader = std::move(downloader)](QUrl url, std::stop_token stop) {
        return fetchWith(downloader, std::move(url), std::move(stop));
    };
}

bool UpdateFeed::satisfies(const SystemVersion& system, const QString& minimum) {
    std::array<std::int64_t, std::tuple_size_v<SystemVersion>> required{};
    const QStringList pieces = minimum.split(u'.', Qt::SkipEmptyParts).mid(0, std::tuple_size_v<SystemVersion>);
    std::ranges::transform(pieces, required.begin(), versionNumber);
    return !std::ranges::lexicographical_compare(system, required);
}

QCoro::Task<UpdateCheck> UpdateFeed::check(QString currentVersion, SystemVersion system, std::stop_token stop) const {
    const UpdateFeed feed = *this;
    QUrl signatureUrl = feed.url;
    signatureUrl.setPath(signatureUrl.path(QUrl::FullyEncoded) + u".sig"_s, QUrl::StrictMode);
    const auto document = co_await feed.fetch(feed.url, stop);
    if (!document) {
        co_return afterError(document.error());
    }
    const auto signature = co_await feed.fetch(signatureUrl, stop);
    if (!signature) {
        co_return afterError(signature.error());
    }
    const auto isSigned = co_await isSignedBy(feed.helper, document->bytes, signature->bytes, feed.publicKey, stop);
    if (!isSigned) {
        co_return failed(isSigned.error().description());
    }
    if (!*isSigned) {
        co_return failed(u"The update feed isn't signed by Tunedeck."_s);
    }
    const auto appcast = Appcast::decode(document->bytes);
    if (!appcast) {
        co_return failed(appcast.error().description());
    }
    co_return compare(appcast->latest, currentVersion, system);
}

} // namespace tunedeck
