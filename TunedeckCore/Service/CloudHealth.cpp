#include "TunedeckCore/Service/CloudHealth.h"

#include "TunedeckCore/Support/Json/Record.h"

#include <QStringView>
#include <QUrl>

#include <chrono>
#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;

std::expected<CloudHealth, json::Error> CloudHealth::decode(const QByteArray& bytes) {
    return json::decode<CloudHealth>(bytes, json::Keys::SnakeToCamel);
}

QCoro::Task<std::optional<CloudHealth>> CloudHealth::fetch(QString baseURL, Downloader downloader,
                                                           std::stop_token stop) {
    constexpr std::int64_t maxSize = 64LL * 1024;
    constexpr std::chrono::seconds timeout{4};
    QStringView trimmed(baseURL);
    while (trimmed.startsWith(u'/')) {
        trimmed = trimmed.sliced(1);
    }
    while (trimmed.endsWith(u'/')) {
        trimmed.chop(1);
    }
    const QUrl url(trimmed.toString() + "/health"_L1);
    const bool isWeb = url.scheme() == u"https"_s || url.scheme() == u"http"_s;
    if (!url.isValid() || !isWeb) { // libcurl would guess a scheme
        co_return std::nullopt;
    }
    const auto response = co_await downloader.fetch(url, maxSize, timeout, stop);
    if (!response || response->status != 200) {
        co_return std::nullopt;
    }
    auto health = decode(response->body);
    co_return health ? std::optional(std::move(*health)) : std::nullopt;
}

} // namespace tunedeck
