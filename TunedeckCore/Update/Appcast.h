#pragma once

#include "TunedeckCore/Support/Json/Error.h"
#include "TunedeckCore/Support/Json/Members.h"

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

        static constexpr auto members =
            json::members<&Release::version, &Release::minMacos, &Release::url, &Release::sha256, &Release::size,
                          &Release::publishedAt, &Release::notes, &Release::dmgUrl>;
    };

    Release latest;

    static std::expected<Appcast, json::Error> decode(const QByteArray& bytes);
    bool operator==(const Appcast&) const = default;

    static constexpr auto members = json::members<&Appcast::latest>;
};

using Release = Appcast::Release;

} // namespace tunedeck
