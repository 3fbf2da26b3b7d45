#include "TunedeckCore/Service/ServiceCall.h"

#include "TunedeckCore/Service/ServiceEndpoint.h"

namespace tunedeck::service {

QUrl resource(const std::optional<QUrl>& base, const QByteArray& encodedPath) {
    return appendingPath(base ? *base : ServiceEndpoint::base(ServiceEndpoint::runtimeFile()), encodedPath);
}

QString sentence(HttpFailure failure) {
    return failure == HttpFailure::TooLarge ? unexpectedReply() : QStringLiteral("tunedeck isn't running.");
}

QString unexpectedReply() {
    return QStringLiteral("Unexpected reply from tunedeck.");
}

} // namespace tunedeck::service
