#include "TunedeckCore/Service/Connections.h"

#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckCore/Support/Json/Record.h"
#include "TunedeckCore/Support/Text/Text.h"

#include <QDir>
#include <QStringView>
#include <QUrl>

#include <chrono>
#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;

template<>
struct json::Members<CloudHealth::Agent> {
    static constexpr auto list =
        std::tuple{member("online", &CloudHealth::Agent::online), member("lastSeen", &CloudHealth::Agent::lastSeen),
                   member("version", &CloudHealth::Agent::version)};
};

template<>
struct json::Members<CloudHealth> {
    static constexpr auto list =
        std::tuple{member("status", &CloudHealth::status), member("version", &CloudHealth::version),
                   member("protocol", &CloudHealth::protocol), member("agent", &CloudHealth::agent),
                   member("queued", &CloudHealth::queued)};
};

QString TunnelConfig::standardURL() {
    return QDir::homePath() + "/.cloudflared/config.yml"_L1;
}

std::optional<TunnelConfig> TunnelConfig::parse(const QString& text) {
    TunnelConfig config;
    for (const QStringView whole : QStringView(text).split(u'\n', Qt::SkipEmptyParts)) {
        QStringView line = trimmingSpaces(whole);
        if (line.startsWith(u'#')) {
            continue;
        }
        if (line.startsWith("- "_L1)) {
            line = line.sliced(2);
        }
        const qsizetype colon = line.indexOf(u':');
        if (colon < 0) {
            continue;
        }
        const QStringView key = trimmingSpaces(line.first(colon));
        const QString value = trimmingSpaces(line.sliced(colon + 1)).toString();
        if (key == "tunnel"_L1) {
            config.tunnelId = value;
        } else if (key == "hostname"_L1 && !config.hostname) {
            config.hostname = value;
        } else if (key == "service"_L1 && !config.service) {
            config.service = value;
        }
    }
    return config.tunnelId.isEmpty() ? std::nullopt : std::optional(config);
}

std::optional<TunnelConfig> TunnelConfig::load(const QString& path) {
    constexpr std::int64_t largest = 4 * 1024 * 1024;
    const auto bytes = readFile(path, largest);
    return bytes && bytes->isValidUtf8() ? parse(QString::fromUtf8(*bytes)) : std::nullopt;
}

std::expected<CloudHealth, json::Error> CloudHealth::decode(const QByteArray& bytes) {
    return json::decode<CloudHealth>(bytes, json::Keys::SnakeToCamel);
}

QCoro::Task<std::optional<CloudHealth>> CloudHealth::fetch(QString baseURL, Downloader downloader,
                                                           std::stop_token stop) {
    constexpr std::int64_t largest = 1024 * 1024;
    constexpr std::chrono::seconds patience{4};
    QStringView trimmed(baseURL);
    while (trimmed.startsWith(u'/')) {
        trimmed = trimmed.sliced(1);
    }
    while (trimmed.endsWith(u'/')) {
        trimmed.chop(1);
    }
    const QUrl url(trimmed.toString() + "/health"_L1);
    if (!url.isValid()) {
        co_return std::nullopt;
    }
    const auto answer = co_await downloader.fetch(url, largest, patience, stop);
    if (!answer || answer->status != 200) {
        co_return std::nullopt;
    }
    auto health = decode(answer->body);
    co_return health ? std::optional(std::move(*health)) : std::nullopt;
}

} // namespace tunedeck
