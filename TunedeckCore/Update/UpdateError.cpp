#include "TunedeckCore/Update/UpdateError.h"

using namespace Qt::StringLiterals;

namespace tunedeck {

UpdateError UpdateError::wrongVersion(const QString& found, const QString& expected) {
    return wrongApp(u"version %1, expected %2"_s.arg(found, expected));
}

QString UpdateError::description() const {
    switch (kind) {
    case Kind::http:
        return u"The update server answered %1."_s.arg(status);
    case Kind::wrongApp:
        return u"The download isn't the expected Tunedeck: %1."_s.arg(detail);
    case Kind::checksum:
        return u"The download doesn't match its checksum."_s;
    case Kind::noApp:
        return u"The download doesn't contain Tunedeck."_s;
    case Kind::notWritable:
        return u"Tunedeck's folder isn't writable, so it can't update itself."_s;
    case Kind::other:
        break;
    }
    return detail;
}

} // namespace tunedeck
