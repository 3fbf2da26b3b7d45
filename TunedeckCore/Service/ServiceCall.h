#pragma once

#include "TunedeckCore/Service/DocumentFailure.h"
#include "TunedeckCore/Support/Http/HttpLimits.h"
#include "TunedeckCore/Support/Http/LocalHttp.h"

#include <QByteArray>
#include <QCoroTask>
#include <QString>
#include <QUrl>

#include <cstddef>
#include <expected>
#include <optional>
#include <stop_token>
#include <utility>

/// Shared by the clients of the service.
namespace tunedeck::service {

/// Limits on the reply to an action, which is one sentence or one link.
inline constexpr HttpLimits shortReply{.body = std::size_t{64} * 1024};

/// The URL of a percent-encoded path, relative to `base` or, without one, to where the service listens now.
QUrl resource(const std::optional<QUrl>& base, const QByteArray& encodedPath);

/// The message for a failed request: "tunedeck isn't running.", or unexpectedReply() if the response was too large.
QString sentence(HttpFailure failure);

/// "Unexpected reply from tunedeck."
QString unexpectedReply();

/// Fetches and decodes a document, which must arrive with status 200.
template<class Document>
QCoro::Task<std::expected<Document, DocumentFailure>> requestDocument(HttpRequest request, std::stop_token stop) {
    const auto reply = co_await sendLocal(request, stop);
    if (!reply) {
        co_return std::unexpected(reply.error());
    }
    if (reply->status != 200) {
        co_return std::unexpected(reply->status);
    }
    auto document = Document::decode(reply->body);
    if (!document) {
        co_return std::unexpected(document.error());
    }
    co_return std::move(*document);
}

/// Like requestDocument(); nothing on any failure.
template<class Document>
QCoro::Task<std::optional<Document>> fetchDocument(HttpRequest request, std::stop_token stop) {
    auto document = co_await requestDocument<Document>(std::move(request), std::move(stop));
    co_return document ? std::optional(std::move(*document)) : std::nullopt;
}

} // namespace tunedeck::service
