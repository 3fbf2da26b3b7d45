#pragma once

#include "TunedeckCore/Support/Json/Error.h"

#include <QString>

#include <cstdint>
#include <expected>
#include <optional>

namespace tunedeck {

/// The update feed's document.
struct Appcast {
    /// One release of the application.
    struct Release {
        QString version;
        std::optional<QString> minMacos;
        QString url;    ///< of the zip archive
        QString sha256; ///< of the archive, hexadecimal
        std::optional<std::int64_t> size;
        std::optional<QString> publishedAt;
        std::optional<QString> notes;
        std::optional<QString> dmgUrl;
        bool operator==(const Release&) const = default;
    };

    Release latest;

    static std::expected<Appcast, json::Error> decode(const QByteArray& bytes);
    bool operator==(const Appcast&) const = default;
};

using Release = Appcast::Release;

} // namespace tunedeck
