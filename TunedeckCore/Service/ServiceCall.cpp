#include "TunedeckCore/Service/ServiceCall.h"

#include "TunedeckCore/Service/ServiceEndpoint.h"

namespace tunedeck::service {

using namespace Qt::StringLiterals;

QUrl resource(const std::optional<QUrl>& base, const QByteArray& encodedPath) {
    return appendingPath(base ? *base : ServiceEndpoint::base(ServiceEndpoint::runtimeFile()), encodedPath);
}

QString sentence(HttpFailure failure) {
    return failure == HttpFailure::TooLarge ? unexpectedReply() : u"tunedeck isn't running."_s;
}

QString unexpectedReply() {
    return u"Unexpected reply from tunedeck."_s;
}

} // namespace tunedeck::service
