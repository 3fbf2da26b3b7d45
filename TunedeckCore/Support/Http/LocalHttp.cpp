#include "TunedeckCore/Support/Http/LocalHttp.h"

#include "TunedeckCore/Support/Async/Wait.h"
#include "TunedeckCore/Support/Files/FileDescriptor.h"
#include "TunedeckCore/Support/Http/HttpReplyReader.h"
#include "TunedeckCore/Support/Http/StreamSocket.h"

#include <QSocketNotifier>
#include <QTimer>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <optional>
#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

using Outcome = std::expected<HttpReply, HttpFailure>;

/// A socket address on the loopback interface.
struct Peer {
    sockaddr_storage address{};
    socklen_t size = 0;
};

/// The address in a URL: 127.x.y.z, [::1] or localhost. Never uses the resolver.
std::optional<Peer> peerOf(const QUrl& url) {
    if (!url.isValid() || url.scheme() != "http"_L1) {
        return std::nullopt;
    }
    const auto name = url.host();
    const auto host = (name == "localhost"_L1 ? u"127.0.0.1"_s : name).toLatin1();
    const auto port = htons(static_cast<std::uint16_t>(url.port(80)));
    Peer peer;
    auto* const four = reinterpret_cast<sockaddr_in*>(&peer.address);
    auto* const six = reinterpret_cast<sockaddr_in6*>(&peer.address);
    if (inet_pton(AF_INET, host.constData(), &four->sin_addr) == 1 && ntohl(four->sin_addr.s_addr) >> 24 == 127) {
        four->sin_family = AF_INET;
        four->sin_port = port;
        peer.size = sizeof(sockaddr_in);
        return peer;
    }
    peer = {};
    if (inet_pton(AF_INET6, host.constData(), &six->sin6_addr) == 1 && IN6_IS_ADDR_LOOPBACK(&six->sin6_addr)) {
        six->sin6_family = AF_INET6;
        six->sin6_port = port;
        peer.size = sizeof(sockaddr_in6);
        return peer;
    }
    return std::nullopt;
}

/// The bytes of a request.
QByteArray wireFormat(const HttpRequest& request) {
    static constexpr std::array names{"GET ", "POST ", "DELETE "};
    QByteArray text(names.at(static_cast<std::size_t>(request.method)));
    const auto path = request.url.path(QUrl::FullyEncoded).toLatin1();
    text += path.isEmpty() ? QByteArray("/") : path;
    if (request.url.hasQuery()) {
        text += '?' + request.url.query(QUrl::FullyEncoded).toLatin1();
    }
    auto host = request.url.host().toLatin1();
    if (host.contains(':')) {
        host = '[' + host + ']';
    }
    if (request.url.port() != -1) {
        host += ':' + QByteArray::number(request.url.port());
    }
    text += " HTTP/1.1\r\nHost: " + host + "\r\nConnection: close\r\n";
    if (request.json) {
        text += "Content-Type: application/json\r\n";
    }
    if (request.json || request.method == HttpMethod::Post) {
        text += "Content-Length: " + QByteArray::number(request.json.value_or(QByteArray()).size()) + "\r\n";
    }
    return text + "\r\n" + request.json.value_or(QByteArray());
}

/// One connection with its request and its reply. Never blocks.
class Exchange {
public:
    explicit Exchange(const HttpRequest& request) : m_unsent(wireFormat(request)), m_reader(request.limits) {}

    /// Starts to connect and to send; returns a failure.
    std::optional<Outcome> start(const Peer& peer) {
        m_socket = streamSocket(peer.address.ss_family);
        if (!m_socket) {
            return std::unexpected(HttpFailure::Unreachable);
        }
        if (connect(m_socket.get(), reinterpret_cast<const sockaddr*>(&peer.address), peer.size) == 0) {
            m_connected = true;
            sendSome();
        } else if (errno != EINPROGRESS) {
            return std::unexpected(HttpFailure::Unreachable);
        }
        return std::nullopt;
    }

    /// Sends and receives what the socket allows; returns the outcome once there is one.
    std::optional<Outcome> proceed() {
        if (!m_connected) {
            int error = 0;
            socklen_t size = sizeof error;
            getsockopt(m_socket.get(), SOL_SOCKET, SO_ERROR, &error, &size);
            if (error != 0) {
                return std::unexpected(HttpFailure::Unreachable);
            }
            sockaddr_storage address{};
            size = sizeof address;
            if (getpeername(m_socket.get(), reinterpret_cast<sockaddr*>(&address), &size) != 0) {
                return std::nullopt;
            }
            m_connected = true;
        }
        sendSome();
        return receiveSome();
    }

    [[nodiscard]] int descriptor() const { return m_socket.get(); }
    [[nodiscard]] bool wantsToWrite() const { return !m_connected || !m_unsent.isEmpty(); }

private:
    /// A failure only ends the sending: a peer may reply and close before it has read the whole request.
    void sendSome() {
        while (!m_unsent.isEmpty()) {
            const auto sent = sendBytes(m_socket.get(), m_unsent);
            if (sent < 0) {
                if (errno != EAGAIN && errno != EINTR) {
                    m_unsent.clear();
                    m_sendFailed = true;
                }
                return;
            }
            m_unsent.remove(0, sent);
        }
    }

    /// Reads one buffer at a time, so that a fast peer doesn't block the event loop.
    std::optional<Outcome> receiveSome() {
        std::array<char, 64UL * 1024> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init)
        const auto received = recv(m_socket.get(), buffer.data(), buffer.size(), 0);
        if (received < 0) {
            return errno == EAGAIN || errno == EINTR ? std::nullopt
                                                     : std::optional<Outcome>(std::unexpected(HttpFailure::BrokenOff));
        }
        // After a failed send this may be the end of a reset connection, on which data can have been lost.
        const auto failure = received > 0   ? m_reader.feed({buffer.data(), received})
                             : m_sendFailed ? std::optional(HttpFailure::BrokenOff)
                                            : m_reader.finish();
        if (failure) {
            return std::unexpected(*failure);
        }
        return m_reader.isComplete() ? std::optional<Outcome>(m_reader.takeReply()) : std::nullopt;
    }

    FileDescriptor m_socket;
    QByteArray m_unsent;
    HttpReplyReader m_reader;
    bool m_connected = false;
    bool m_sendFailed = false;
};

/// Wakes a wait when a socket is ready or the timeout has passed.
class Watch {
public:
    Watch(int descriptor, std::chrono::milliseconds timeout, Wait& wait)
        : m_wait(wait), m_readable(descriptor, QSocketNotifier::Read) {
        QObject::connect(&m_readable, &QSocketNotifier::activated, [this] { m_wait.wake(); });
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            m_timedOut = true;
            m_wait.wake();
        });
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.setSingleShot(true);
        m_timer.start(timeout);
    }

    /// Also wakes when the socket can be written; most requests never need it.
    void watchWriting(bool wanted) {
        if (wanted && !m_writable) {
            m_writable.emplace(static_cast<int>(m_readable.socket()), QSocketNotifier::Write);
            QObject::connect(&*m_writable, &QSocketNotifier::activated, [this] { m_wait.wake(); });
        } else if (!wanted) {
            m_writable.reset();
        }
    }

    [[nodiscard]] bool timedOut() const { return m_timedOut; }

private:
    Wait& m_wait;
    QSocketNotifier m_readable;
    std::optional<QSocketNotifier> m_writable;
    QTimer m_timer;
    bool m_timedOut = false;
};

} // namespace

QCoro::Task<Outcome> sendLocal(HttpRequest request, std::stop_token stop) {
    if (stop.stop_requested()) {
        co_return std::unexpected(HttpFailure::Cancelled);
    }
    const auto peer = peerOf(request.url);
    if (!peer) {
        co_return std::unexpected(HttpFailure::Unreachable);
    }
    Exchange exchange(request);
    auto outcome = exchange.start(*peer);
    if (outcome) {
        co_return std::move(*outcome);
    }
    Wait wait(stop);
    Watch watch(exchange.descriptor(), request.timeout, wait);
    for (;;) {
        watch.watchWriting(exchange.wantsToWrite());
        const bool woken = co_await wait.next();
        if (!woken) {
            co_return std::unexpected(HttpFailure::Cancelled);
        }
        outcome = exchange.proceed();
        if (outcome) {
            co_return std::move(*outcome);
        }
        if (watch.timedOut()) {
            co_return std::unexpected(HttpFailure::TimedOut);
        }
    }
}

QUrl appendingPath(const QUrl& base, const QByteArray& encodedPath) {
    auto path = base.path(QUrl::FullyEncoded);
    if (!path.endsWith(u'/')) {
        path += u'/';
    }
    auto url = base;
    url.setPath(path + QString::fromLatin1(encodedPath), QUrl::StrictMode);
    return url;
}

} // namespace tunedeck
