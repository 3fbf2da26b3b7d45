#pragma once

#include "TunedeckCore/Support/Http/HttpLimits.h"

#include <QByteArray>
#include <QUrl>

#include <chrono>
#include <optional>

namespace tunedeck {

enum class HttpMethod { Get, Post, Delete };

/// A request to the service on the loopback interface.
struct HttpRequest {
    HttpMethod method = HttpMethod::Get;
    QUrl url;                            ///< http only; the path is sent as encoded in the URL
    std::chrono::milliseconds timeout{}; ///< from connecting to the last byte of the reply
    std::optional<QByteArray> json = {}; ///< body, sent as "application/json"
    HttpLimits limits = {};              ///< on the reply
};

} // namespace tunedeck
