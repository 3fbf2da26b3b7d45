#pragma once

#include <QByteArray>

#include <chrono>

namespace tunedeck::demo {

/// An HTTP request, as far as the service uses it.
struct Request {
    QByteArray method;
    QByteArray target; ///< the path with its query, percent-encoded
    QByteArray body;
};

/// An HTTP response; its body is JSON or empty.
struct Response {
    int status = 200;
    QByteArray body;
    QByteArray allow;                  ///< the allowed methods, with status 405
    std::chrono::milliseconds delay{}; ///< how long to hold the response back
};

} // namespace tunedeck::demo
