#pragma once

#include "TunedeckCore/Support/Json/Value.h"

#include <QLatin1StringView>
#include <QString>

#include <expected>
#include <optional>

namespace tunedeck {

/// The settings file, one JSON object, that the application shares with the service. A write keeps the values of the
/// service's keys as they are. Each call reads the file; nothing is cached.
struct SettingsFile {
    QString url; ///< path of the file

    /// `~/.tunedeck/settings.json`.
    static SettingsFile standard();

    /// The folder that the user chose for downloads, if any.
    [[nodiscard]] std::optional<QString> downloadDir() const;
    /// Sets the folder, or resets it to the service's default. The error is a sentence for the user.
    [[nodiscard]] std::expected<void, QString> setDownloadDir(const std::optional<QString>& path) const;

    /// Whether the first-run window has been completed or skipped; false if the file doesn't say.
    [[nodiscard]] bool onboarded() const;
    [[nodiscard]] std::expected<void, QString> setOnboarded(bool value) const;

    bool operator==(const SettingsFile&) const = default;

private:
    [[nodiscard]] std::expected<void, QString> set(QLatin1StringView key,
                                                   const std::optional<json::Value>& value) const;
};

} // namespace tunedeck
