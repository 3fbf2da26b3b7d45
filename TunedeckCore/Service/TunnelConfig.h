#pragma once

#include <QString>

#include <optional>

namespace tunedeck {

/// The tunnel in the user's cloudflared configuration.
struct TunnelConfig {
    QString tunnelId;
    std::optional<QString> hostname; ///< the first in the file
    std::optional<QString> service;  ///< the first in the file

    /// `~/.cloudflared/config.yml`.
    static QString standardURL();

    /// Finds the keys line by line at any nesting; not a YAML parser. Nothing without a tunnel id.
    static std::optional<TunnelConfig> parse(const QString& text);

    /// Nothing if the file can't be read as UTF-8 text.
    static std::optional<TunnelConfig> load(const QString& path);

    bool operator==(const TunnelConfig&) const = default;
};

} // namespace tunedeck
