#include "TunedeckCore/Locations/WebEndpoint.h"

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

const QUrl& base() {
    static const QUrl url(QString::fromLatin1(TUNEDECK_WEB_ENDPOINT));
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
    return QString::fromLatin1(TUNEDECK_FEED_KEY);
}

} // namespace tunedeck
