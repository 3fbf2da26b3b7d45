#pragma once

#include "TunedeckCore/Support/Http/HttpFailure.h"
#include "TunedeckCore/Support/Http/HttpReply.h"
#include "TunedeckCore/Support/Http/HttpRequest.h"

#include <QByteArray>
#include <QCoroTask>
#include <QUrl>

#include <expected>
#include <stop_token>

namespace tunedeck {

/// Sends a request to this machine over a new connection: exactly one attempt, without proxies, redirects or caching. A
/// stop request ends it at once.
QCoro::Task<std::expected<HttpReply, HttpFailure>> sendLocal(HttpRequest request, std::stop_token stop);

/// `base` with a percent-encoded relative path appended: "http://h:1" and "a/b" give "http://h:1/a/b".
QUrl appendingPath(const QUrl& base, const QByteArray& encodedPath);

} // namespace tunedeck
