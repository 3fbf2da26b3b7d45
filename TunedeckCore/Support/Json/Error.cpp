#include "TunedeckCore/Support/Json/Error.h"

namespace tunedeck::json {

using namespace Qt::StringLiterals;

QString Error::description() const {
    return path.isEmpty() ? u"Unreadable document: %1."_s.arg(reason)
                          : u"Unreadable document: \"%1\" %2."_s.arg(path, reason);
}

std::optional<Error> within(const QString& parent, std::optional<Error> error) {
    if (error) {
        const bool isMember = !error->path.isEmpty() && !error->path.startsWith(u'[');
        error->path = parent + (isMember ? u"."_s : QString()) + error->path;
    }
    return error;
}

} // namespace tunedeck::json
