#pragma once

#include "TunedeckCore/Support/Http/Downloader.h"
#include "TunedeckCore/Support/Json/Error.h"
#include "TunedeckCore/Support/Json/Members.h"

#include <QByteArray>
#include <QCoroTask>
#include <QString>

#include <cstdint>
#include <expected>
#include <optional>
#include <stop_token>

namespace tunedeck {

/// The health report of the cloud relay.
struct CloudHealth {
    /// This computer's connection to the relay.
    struct Agent {
        bool online = false;
        std::optional<QString> lastSeen;
        std::optional<QString> version;
        bool operator==(const Agent&) const = default;

        static constexpr auto members = json::members<&Agent::online, &Agent::lastSeen, &Agent::version>;
    };

    QString status;
    QString version;
    QString protocol;
    std::optional<Agent> agent;
    std::optional<std::int64_t> queued;

    static std::expected<CloudHealth, json::Error> decode(const QByteArray& bytes);

    /// Fetches the report from an http or https base URL within 4 seconds; nothing on any failure.
    static QCoro::Task<std::optional<CloudHealth>> fetch(QString baseURL, Downloader downloader, std::stop_token stop);
    bool operator==(const CloudHealth&) const = default;

    static constexpr auto members = json::members<&CloudHealth::status, &CloudHealth::version, &CloudHealth::protocol,
                                                  &CloudHealth::agent, &CloudHealth::queued>;
};

} // namespace tunedeck
