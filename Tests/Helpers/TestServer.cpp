#include "Tests/Helpers/TestServer.h"

#include "Tests/Helpers/Sockets.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>

namespace tunedeck::test {

namespace {

enum class Waited { Ready, TimedOut, Stopped };

/// Polls a socket until the server stops.
Waited waitFor(int socket, short events, int wakeUp,
               std::chrono::milliseconds timeout = std::chrono::milliseconds(-1)) {
    std::array<pollfd, 2> watched{pollfd{.fd = socket, .events = events, .revents = 0},
                                  pollfd{.fd = wakeUp, .events = POLLIN, .revents = 0}};
    const int count = poll(watched.data(), watched.size(), static_cast<int>(timeout.count()));
    return count == 0 ? Waited::TimedOut : watched[1].revents == 0 ? Waited::Ready : Waited::Stopped;
}

/// A listening socket; sets its port.
int listenAt(const QByteArray& address, std::uint16_t& port) {
    using boost::asio::ip::tcp;
    boost::asio::io_context context;
    tcp::acceptor acceptor(context, {boost::asio::ip::make_address(address.toStdString()), 0});
    port = acceptor.local_endpoint().port();
    const int socket = acceptor.release();
    ::fcntl(socket, F_SETFD, FD_CLOEXEC);
    return socket;
}

std::array<int, 2> pipeOfThisProcess() {
    std::array<int, 2> ends{-1, -1};
    (void)!::pipe(ends.data());
    for (const int end : ends) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    return ends;
}

ServedRequest headOf(const QByteArray& head) {
    const auto lines = head.split('\n');
    const auto first = lines.first().trimmed().split(' ');
    ServedRequest request{.method = first.value(0), .target = first.value(1), .headers = {}, .body = {}};
    for (const auto& line : lines.mid(1)) {
        const auto colon = line.indexOf(':');
        request.headers[line.left(colon).trimmed().toLower()] = line.mid(colon + 1).trimmed();
    }
    return request;
}

} // namespace

bool Connection::send(const QByteArray& bytes) {
    for (qsizetype sent = 0; sent < bytes.size();) {
        if (waitFor(m_socket, POLLOUT, m_wakeUp) != Waited::Ready) {
            return false;
        }
        const auto count = sendNow(m_socket, bytes.constData() + sent, static_cast<std::size_t>(bytes.size() - sent));
        if (count < 0 && errno != EAGAIN) {
            return false;
        }
        sent += std::max<ssize_t>(count, 0);
    }
    return true;
}

bool Connection::receive(QByteArray& bytes) {
    std::array<char, 65536> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init)
    if (waitFor(m_socket, POLLIN, m_wakeUp) != Waited::Ready) {
        return false;
    }
    const auto count = recv(m_socket, buffer.data(), buffer.size(), 0);
    bytes.append(buffer.data(), std::max<ssize_t>(count, 0));
    return count > 0;
}

bool Connection::pause(std::chrono::milliseconds duration) {
    return waitFor(m_socket, peerClosed, m_wakeUp, duration) == Waited::TimedOut;
}

void Connection::reset() {
    const linger now{.l_onoff = 1, .l_linger = 0};
    setsockopt(m_socket, SOL_SOCKET, SO_LINGER, &now, sizeof now);
}

TestServer::TestServer(const QByteArray& address)
    : m_host(address.contains(':') ? '[' + address + ']' : address)
    , m_socket(listenAt(address, m_port))
    , m_wakeUp(pipeOfThisProcess())
    , m_acceptor([this] { accept(); }) {}

TestServer::~TestServer() {
    stop();
    m_connections.clear();
    ::close(m_wakeUp[0]);
    ::close(m_wakeUp[1]);
}

void TestServer::on(const QByteArray& route, Behaviour behaviour, When when) {
    const std::lock_guard lock(m_mutex);
    m_routes[route] = {std::move(behaviour), when};
}

void TestServer::stop() {
    (void)!write(m_wakeUp[1], "", 1); // which nobody reads: every thread sees it
    if (m_acceptor.joinable()) {
        m_acceptor.join();
        ::close(m_socket);
    }
}

QUrl TestServer::url(const QByteArray& path) const {
    return QUrl::fromEncoded("http://" + m_host + ':' + QByteArray::number(m_port) + path);
}

QList<ServedRequest> TestServer::requests() const {
    const std::lock_guard lock(m_mutex);
    return m_requests;
}

void TestServer::accept() {
    while (waitFor(m_socket, POLLIN, m_wakeUp[0]) == Waited::Ready) {
        const int peer = ::accept(m_socket, nullptr, nullptr);
        ::fcntl(peer, F_SETFD, FD_CLOEXEC);
        ++m_made;
        ++m_open;
        m_connections.emplace_back([this, peer] {
            serve(peer);
            ::close(peer);
            --m_open;
        });
    }
}

void TestServer::serve(int peer) {
    Connection connection(peer, m_wakeUp[0]);
    QByteArray bytes;
    qsizetype end = -1;
    for (; end < 0; end = bytes.indexOf("\r\n\r\n")) {
        if (!connection.receive(bytes)) {
            return;
        }
    }
    auto request = headOf(bytes.left(end));
    request.body = bytes.mid(end + 4);
    const auto [behaviour, when] = planFor(request.method + ' ' + request.target);
    const auto length = request.headers.contains("content-length") ? request.headers["content-length"].toLongLong() : 0;
    while (when == When::RequestCame && request.body.size() < length) {
        if (!connection.receive(request.body)) {
            return;
        }
    }
    {
        const std::lock_guard lock(m_mutex);
        m_requests.append(request);
    }
    behaviour(connection, request);
}

TestServer::Plan TestServer::planFor(const QByteArray& route) const {
    const std::lock_guard lock(m_mutex);
    const auto found = m_routes.find(m_routes.contains(route) ? route : "*");
    return found == m_routes.end() ? Plan(behave::answer(404, {}), When::RequestCame) : found->second;
}

namespace behave {

Behaviour answer(int status, const QByteArray& body, const QByteArray& headers) {
    return raw("HTTP/1.1 " + QByteArray::number(status) + " Status\r\n" + headers +
               "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body);
}

Behaviour raw(const QByteArray& bytes) {
    return [bytes](Connection& connection, const ServedRequest&) { connection.send(bytes); };
}

Behaviour resetAfter(const QByteArray& bytes) {
    return [bytes](Connection& connection, const ServedRequest&) {
        connection.send(bytes);
        connection.reset();
    };
}

Behaviour drip(const QByteArray& bytes, std::chrono::milliseconds pause) {
    return [bytes, pause](Connection& connection, const ServedRequest&) {
        for (qsizetype at = 0; connection.pause(pause) && connection.send(bytes.mid(at, 1));) {
            at = (at + 1) % bytes.size();
        }
    };
}

Behaviour hang(const QByteArray& bytes) {
    return [bytes](Connection& connection, const ServedRequest&) {
        connection.send(bytes);
        connection.pause(std::chrono::milliseconds(-1));
    };
}

Behaviour flood(const QByteArray& head, std::int64_t size) {
    return [head, size](Connection& connection, const ServedRequest&) {
        const QByteArray block(1024 * 1024, 'x');
        connection.send(head);
        for (auto left = size; left > 0; left -= block.size()) {
            if (!connection.send(block.left(static_cast<qsizetype>(left)))) {
                return;
            }
        }
    };
}

Behaviour after(std::chrono::milliseconds pause, Behaviour then) {
    return [pause, then = std::move(then)](Connection& connection, const ServedRequest& request) {
        if (connection.pause(pause)) {
            then(connection, request);
        }
    };
}

} // namespace behave

} // namespace tunedeck::test
