#include "TunedeckCore/Update/UpdateError.h"

namespace tunedeck {

QString UpdateError::description() const {
    switch (kind) {
    case Kind::http:
        return QStringLiteral("The update server answered %1.").arg(status);
    case Kind::wrongApp:
        return QStringLiteral("The download isn't the expected Tunedeck: %1.").arg(detail);
    case Kind::checksum:
        return QStringLiteral("The download doesn't match its checksum.");
    case Kind::noApp:
        return QStringLiteral("The download doesn't contain Tunedeck.");
    case Kind::notWritable:
        return QStringLiteral("Tunedeck's folder isn't writable, so it can't update itself.");
    case Kind::other:
        break;
    }
    return detail;
}

} // namespace tunedeck
