#pragma once

#include "TunedeckCore/Support/Http/LocalHttp.h"

#include <QByteArray>
#include <QCoroTask>
#include <QString>
#include <QUrl>

#include <optional>
#include <stop_token>
#include <utility>

/// Shared by the clients of the service.
namespace tunedeck::service {

/// The URL of a percent-encoded path, relative to `base` or, without one, to where the service listens now.
QUrl resource(const std::optional<QUrl>& base, const QByteArray& encodedPath);

/// The message for a failed request: "tunedeck isn't running.", or unexpectedReply() if the response was too large.
QString sentence(HttpFailure failure);

/// "Unexpected reply from tunedeck."
QString unexpectedReply();

/// Fetches and decodes a document; nothing unless the status is 200 and the document is valid.
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
