#include "TunedeckCore/Locations/WebEndpoint.h"

namespace tunedeck {

namespace {

const QUrl& base() {
    static const QUrl url(QStringLiteral(TUNEDECK_WEB_ENDPOINT));
    return url;
}

} // namespace

QUrl WebEndpoint::url(const QString& path) {
    QUrl url = base();
    url.setPath(path);
    return url;
}

QString WebEndpoint::host() {
    return base().host();
}

QString WebEndpoint::feedKey() {
    return QStringLiteral(TUNEDECK_FEED_KEY);
}

} // namespace tunedeck
