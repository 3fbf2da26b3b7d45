#pragma once

#include "TunedeckCore/Support/Http/LocalHttp.h"

#include <QByteArray>
#include <QCoroTask>
#include <QString>
#include <QUrl>

#include <optional>
#include <stop_token>
#include <utility>

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

/// The document that the service answers with and status 200; nothing for any other answer.
template<class Document>
QCoro::Task<std::optional<Document>> fetchDocument(HttpRequest request, std::stop_token stop) {
    const auto reply = co_await sendLocal(request, stop);
    if (!reply || reply->status != 200) {
        co_return std::nullopt;
    }
    auto document = Document::decode(reply->body);
    co_return document ? std::optional(std::move(*document)) : std::nullopt;
}

} // namespace tunedeck::service
