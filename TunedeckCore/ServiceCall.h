#pragma once

#include "TunedeckCore/Support/LocalHttp.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <optional>

/// What the clients of the service have in common.
namespace tunedeck::service {

/// The URL of a path of the service, below a client's own base URL or else where the service listens at present. The
/// path is percent-encoded already.
QUrl resource(const std::optional<QUrl>& base, const QByteArray& encodedPath);

/// "tunedeck isn't running." when there was no answer, "Unexpected reply from tunedeck." when there was one that is
/// too large to be taken.
QString sentence(HttpFailure failure);

/// "Unexpected reply from tunedeck."
QString unexpectedReply();

} // namespace tunedeck::service
