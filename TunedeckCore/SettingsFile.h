#pragma once

#include "TunedeckCore/Support/Json/Value.h"

#include <QLatin1StringView>
#include <QString>

#include <expected>
#include <optional>

namespace tunedeck {

/// The settings that the application shares with the service: one JSON object in a file. The application knows two
/// of its keys; all others are the service's and come through a write to the letter of their values. Nothing is
/// cached: each call reads the file.
struct SettingsFile {
    QString url; ///< the file's path

    /// `~/.tunedeck/settings.json`.
    static SettingsFile standard();

    /// The folder that the user chose for downloads; nothing when none is set or the file tells none.
    [[nodiscard]] std::optional<QString> downloadDir() const;
    /// Sets the folder, or with nothing goes back to the service's own. Fails with a sentence.
    [[nodiscard]] std::expected<void, QString> setDownloadDir(const std::optional<QString>& path) const;

    /// Whether the first-run window has been completed or skipped; false when the file doesn't tell.
    [[nodiscard]] bool onboarded() const;
    [[nodiscard]] std::expected<void, QString> setOnboarded(bool value) const;

    bool operator==(const SettingsFile&) const = default;

private:
    [[nodiscard]] std::optional<json::Value> get(QLatin1StringView key) const;
    [[nodiscard]] std::expected<void, QString> set(QLatin1StringView key,
                                                   const std::optional<json::Value>& value) const;
};

} // namespace tunedeck
