#pragma once

#include "TunedeckCore/Support/Http/Downloader.h"
#include "TunedeckCore/Support/Json/Error.h"

#include <QByteArray>
#include <QCoroTask>
#include <QString>

#include <cstdint>
#include <expected>
#include <optional>
#include <stop_token>

namespace tunedeck {

/// How the cloud relay says it is.
struct CloudHealth {
    /// What the relay knows of this computer's end.
    struct Agent {
        bool online = false;
        std::optional<QString> lastSeen;
        std::optional<QString> version;
        bool operator==(const Agent&) const = default;
    };

    QString status;
    QString version;
    QString protocol;
    std::optional<Agent> agent;
    std::optional<std::int64_t> queued;

    static std::expected<CloudHealth, json::Error> decode(const QByteArray& bytes);

    /// Asks the relay at a base URL, with or without "/" around it, within 4 seconds; every failure yields nothing.
    static QCoro::Task<std::optional<CloudHealth>> fetch(QString baseURL, Downloader downloader, std::stop_token stop);
    bool operator==(const CloudHealth&) const = default;
};

} // namespace tunedeck
