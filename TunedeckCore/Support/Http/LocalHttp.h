#pragma once

#include <QByteArray>
#include <QCoroTask>
#include <QUrl>

#include <chrono>
#include <cstddef>
#include <expected>
#include <optional>
#include <stop_token>

namespace tunedeck {

/// The methods that the service's interface knows.
enum class HttpMethod { Get, Post, Delete };

/// One request to the service on the loopback interface.
struct HttpRequest {
    HttpMethod method = HttpMethod::Get;
    QUrl url;                            ///< http only; its path is sent as it is encoded in the URL
    std::chrono::milliseconds timeout{}; ///< in all, from connecting to the last byte
    std::optional<QByteArray> json = {}; ///< a body, sent as "application/json"
};

/// A whole answer, whatever its status.
struct HttpReply {
    int status = 0;
    QByteArray body;
};

/// Why there was no whole answer.
enum class HttpFailure { Unreachable, TimedOut, BrokenOff, Malformed, TooLarge, Cancelled };

/// Bounds on what a peer may send, in bytes.
struct HttpLimits {
    std::size_t header = 64 * 1024;
    std::size_t body = 8 * 1024 * 1024;
};

/// Sends one request over a connection of its own: exactly one attempt, no proxy, no redirect followed, nothing
/// kept. Stopping the token ends it at once, wherever it stands.
QCoro::Task<std::expected<HttpReply, HttpFailure>> sendLocal(HttpRequest request, std::stop_token stop,
                                                             HttpLimits limits = {});

/// The base URL with a relative path appended as path components ("http://h:1" and "a/b" give "http://h:1/a/b").
/// The path is taken as already percent-encoded.
QUrl appendingPath(const QUrl& base, const QByteArray& encodedPath);

} // namespace tunedeck
