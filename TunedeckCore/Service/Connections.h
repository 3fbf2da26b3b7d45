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

/// What the user's cloudflared configuration tells of its tunnel.
struct TunnelConfig {
    QString tunnelId;
    std::optional<QString> hostname; ///< the first that is named
    std::optional<QString> service;  ///< the first that is named

    /// `~/.cloudflared/config.yml`.
    static QString standardURL();

    /// Finds the keys line by line, whatever they are nested in; this is no YAML parser. Nothing without a tunnel's id.
    static std::optional<TunnelConfig> parse(const QString& text);

    /// Reads a file; nothing when it can't be read as UTF-8 text.
    static std::optional<TunnelConfig> load(const QString& path);

    bool operator==(const TunnelConfig&) const = default;
};

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
