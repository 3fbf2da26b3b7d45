#pragma once

#include <QString>

#include <optional>

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

} // namespace tunedeck
