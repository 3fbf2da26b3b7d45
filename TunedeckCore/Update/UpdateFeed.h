#pragma once

#include "TunedeckCore/Support/Http/Downloader.h"
#include "TunedeckCore/Update/UpdateCheck.h"
#include "TunedeckCore/Update/UpdateError.h"

#include <QByteArray>
#include <QCoroTask>
#include <QString>
#include <QUrl>

#include <array>
#include <expected>
#include <functional>
#include <stop_token>

namespace tunedeck {

/// Version of the operating system: major, minor, patch.
using SystemVersion = std::array<int, 3>;

/// The signed feed that announces new releases.
struct UpdateFeed {
    /// The body of a response. (A record because g++ 12 can't await an expected QByteArray.)
    struct Fetched {
        QByteArray bytes;
    };
    /// Fetches a URL; any status other than 200 is an error.
    using Fetch = std::function<QCoro::Task<std::expected<Fetched, UpdateError>>(QUrl url, std::stop_token stop)>;

    QUrl url;          ///< of the feed; the signature has ".sig" appended to its path
    QString publicKey; ///< base64 of the 32-byte Ed25519 key that signs the feed
    Fetch fetch;
    QString helper; ///< path of the update helper, which verifies the signature

    /// The product's own feed. `helper`: path of the update helper.
    static UpdateFeed standard(QString helper);
    static QUrl defaultURL();
    /// Disk image of the latest release, for manual installation.
    static QUrl latestDMG();
    /// Fetches with the update helper, within 30 seconds.
    static Fetch download(Downloader downloader);

    /// As isSignedBy(). Only the update helper has this function.
    static bool verify(const QByteArray& bytes, const QString& signature, const QString& publicKey);

    /// Whether the system version is at least `minimum`, such as "13.5". A component that isn't a number counts as 0.
    static bool satisfies(const SystemVersion& system, const QString& minimum);

    /// Looks for a release newer than the running version. Verifies the signature before parsing the feed.
    QCoro::Task<UpdateCheck> check(QString currentVersion, SystemVersion system, std::stop_token stop) const;
};

} // namespace tunedeck
