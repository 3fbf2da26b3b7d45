#pragma once

#include "TunedeckCore/Support/Http/Downloader.h"
#include "TunedeckCore/Update/FeedSignature.h"
#include "TunedeckCore/Update/SystemVersion.h"
#include "TunedeckCore/Update/UpdateCheck.h"
#include "TunedeckCore/Update/UpdateError.h"

#include <QCoroTask>
#include <QString>
#include <QUrl>

#include <expected>
#include <functional>
#include <stop_token>

namespace tunedeck {

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

    static bool verify(const QByteArray& bytes, const QString& signature, const QString& publicKey) {
        return isSignedBy(bytes, signature, publicKey);
    }

    /// Whether a system version meets a minimum such as "13.5"; what isn't a number in it counts as 0.
    static bool satisfies(const SystemVersion& system, const QString& minimum);

    /// Looks for a release newer than the running version. Never fails but by its result; nothing is parsed before its
    /// signature was found good.
    QCoro::Task<UpdateCheck> check(QString currentVersion, SystemVersion system, std::stop_token stop) const;
};

} // namespace tunedeck
