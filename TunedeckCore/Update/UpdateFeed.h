#pragma once

#include "TunedeckCore/Support/Http/Downloader.h"
#include "TunedeckCore/Support/Json/Json.h"
#include "TunedeckCore/Update/UpdateError.h"

#include <QCoroTask>
#include <QString>
#include <QUrl>

#include <array>
#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <stop_token>
#include <variant>

namespace tunedeck {

/// The update feed's document.
struct Appcast {
    /// One release of the application.
    struct Release {
        QString version;
        std::optional<QString> minMacos;
        QString url;    ///< of the archive
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

/// A version of the system: major, minor, patch.
using SystemVersion = std::array<int, 3>;

/// What a look at the feed came to.
struct UpdateCheck {
    struct Available {
        Release release;
        bool operator==(const Available&) const = default;
    };
    struct Failed {
        QString message; ///< for the user
        bool operator==(const Failed&) const = default;
    };
    struct UpToDate {
        bool operator==(const UpToDate&) const = default;
    };

    std::variant<Available, Failed, UpToDate> value;
    bool operator==(const UpdateCheck&) const = default;
};

/// The signed feed that tells of new releases.
struct UpdateFeed {
    /// What stands at an address. (A record, as g++ 12 can't await an expected of the bytes themselves.)
    struct Fetched {
        QByteArray bytes;
    };
    /// Gets the bytes at an address; anything but an answer with status 200 is an error.
    using Fetch = std::function<QCoro::Task<std::expected<Fetched, UpdateError>>(QUrl url, std::stop_token stop)>;

    QUrl url;          ///< of the feed; its signature stands beside it with ".sig" appended
    QString publicKey; ///< base64 of the 32-byte Ed25519 key that signs the feed
    Fetch fetch;

    /// The release's feed on the product's web endpoint.
    static UpdateFeed standard(Downloader downloader);
    static QUrl defaultURL();
    /// The disk image of the latest release, for installing by hand.
    static QUrl latestDMG();
    /// The default way to fetch: with the download helper, within 30 seconds.
    static Fetch download(Downloader downloader);

    /// Whether the signature is a valid Ed25519 signature (RFC 8032) of exactly these bytes. `signature`: base64 of 64
    /// bytes, white space around it allowed; `publicKey`: base64 of 32 bytes.
    static bool verify(const QByteArray& bytes, const QString& signature, const QString& publicKey);

    /// Whether a system version meets a minimum such as "13.5"; what isn't a number in it counts as 0.
    static bool satisfies(const SystemVersion& system, const QString& minimum);

    /// Looks for a release newer than the running version. Never fails but by its result; nothing is parsed before its
    /// signature was found good.
    QCoro::Task<UpdateCheck> check(QString currentVersion, SystemVersion system, std::stop_token stop) const;
};

} // namespace tunedeck
