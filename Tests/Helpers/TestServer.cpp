#include "Tests/Helpers/TestServer.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <mutex>
#include <stdexcept>
#include <vector>

namespace tunedeck::test {

namespace {

/// Polls a socket; false if the server stops or on a timeout.
bool waitFor(int socket, short events, int wakeUp, int milliseconds = -1) {
    std::array<pollfd, 2> watched{pollfd{.fd = socket, .events = events, .revents = 0},
                                  pollfd{.fd = wakeUp, .events = POLLIN, .revents = 0}};
    return poll(watched.data(), watched.size(), milliseconds) > 0 && watched[1].revents == 0;
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
        if (!waitFor(m_socket, POLLOUT, m_wakeUp)) {
            return false;
        }
        const auto count = ::send(m_socket, bytes.constData() + sent, static_cast<std::size_t>(bytes.size() - sent),
                                  MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count < 0 && errno != EAGAIN) {
            return false;
        }
        sent += std::max<ssize_t>(count, 0);
    }
    return true;
}

bool Connection::receive(QByteArray& bytes) {
    std::array<char, 65536> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init)
    if (!waitFor(m_socket, POLLIN, m_wakeUp)) {
        return false;
    }
    const auto count = recv(m_socket, buffer.data(), buffer.size(), 0);
    bytes.append(buffer.data(), std::max<ssize_t>(count, 0));
    return count > 0;
}

bool Connection::pause(std::chrono::milliseconds duration) {
    std::array<pollfd, 2> watched{pollfd{.fd = m_socket, .events = POLLRDHUP, .revents = 0},
                                  pollfd{.fd = m_wakeUp, .events = POLLIN, .revents = 0}};
    return poll(watched.data(), watched.size(), static_cast<int>(duration.count())) == 0;
}

void Connection::reset() {
    const linger now{.l_onoff = 1, .l_linger = 0};
    setsockopt(m_socket, SOL_SOCKET, SO_LINGER, &now, sizeof now);
}

class TestServer::Loop {
public:
    Loop(const QByteArray& host, std::uint16_t requestedPort)
        : m_socket(socket(host.contains(':') ? AF_INET6 : AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)), m_host(host) {
        sockaddr_in6 address{}; // large enough for a sockaddr_in, which starts alike
        auto* const four = reinterpret_cast<sockaddr_in*>(&address);
        address.sin6_family = host.contains(':') ? AF_INET6 : AF_INET;
        address.sin6_port = htons(requestedPort);
        socklen_t size = host.contains(':') ? sizeof address : sizeof *four;
        void* const place = host.contains(':') ? static_cast<void*>(&address.sin6_addr) : &four->sin_addr;
        auto* const generic = reinterpret_cast<sockaddr*>(&address);
        const int yes = 1;
        setsockopt(m_socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
        if (inet_pton(address.sin6_family, host.constData(), place) != 1 || bind(m_socket, generic, size) != 0 ||
            listen(m_socket, 64) != 0 || getsockname(m_socket, generic, &size) != 0) {
            throw std::runtime_error("the test server can't listen");
        }
        m_port = ntohs(address.sin6_port);
        m_acceptor = std::jthread([this] { accept(); });
    }

    ~Loop() {
        stop();
        m_connections.clear();
        ::close(m_wakeUp);
    }

    Loop(const Loop&) = delete;
    Loop& operator=(const Loop&) = delete;

    void stop() {
        const std::uint64_t one = 1;
        (void)!write(m_wakeUp, &one, sizeof one);
        if (m_acceptor.joinable()) {
            m_acceptor.join();
            ::close(m_socket);
        }
    }

    mutable std::mutex mutex;
    using Plan = std::pair<Behaviour, When>;
    std::map<QByteArray, Plan> routes;
    QList<ServedRequest> requests;
    std::atomic<int> made = 0;
    std::atomic<int> open = 0;

    [[nodiscard]] std::uint16_t port() const { return m_port; }
    /// As written in a URL.
    [[nodiscard]] QByteArray host() const { return m_host.contains(':') ? '[' + m_host + ']' : m_host; }

private:
    void accept() {
        while (waitFor(m_socket, POLLIN, m_wakeUp)) {
            const int peer = ::accept(m_socket, nullptr, nullptr);
            if (peer < 0) {
                continue;
            }
            ::fcntl(peer, F_SETFD, FD_CLOEXEC);
            ++made;
            ++open;
            m_connections.emplace_back([this, peer] {
                serve(peer);
                ::close(peer);
                --open;
            });
        }
    }

    void serve(int peer) {
        Connection connection(peer, m_wakeUp);
        QByteArray bytes;
        while (!bytes.contains("\r\n\r\n")) {
            if (!connection.receive(bytes)) {
                return;
            }
        }
        const auto end = bytes.indexOf("\r\n\r\n");
        auto request = headOf(bytes.left(end));
        request.body = bytes.mid(end + 4);
        const auto header = request.headers.find("content-length");
        const auto length = header == request.headers.end() ? 0 : header->second.toLongLong();
        const auto [behaviour, when] = planFor(request.method + ' ' + request.target);
        while (when == When::RequestCame && request.body.size() < length) {
            if (!connection.receive(request.body)) {
                return;
            }
        }
        {
            const std::lock_guard lock(mutex);
            requests.append(request);
        }
        behaviour(connection, request);
    }

    Plan planFor(const QByteArray& route) const {
        const std::lock_guard lock(mutex);
        auto found = routes.find(route);
        if (found == routes.end()) {
            found = routes.find("*");
        }
        return found == routes.end() ? Plan(behave::answer(404, {}), When::RequestCame) : found->second;
    }

    int m_socket;
    QByteArray m_host;
    int m_wakeUp = eventfd(0, EFD_CLOEXEC);
    std::uint16_t m_port = 0;
    std::jthread m_acceptor;
    std::vector<std::jthread> m_connections;
};

TestServer::TestServer(const QByteArray& address, std::uint16_t port) : m_loop(std::make_unique<Loop>(address, port)) {}

TestServer::~TestServer() = default;

void TestServer::on(const QByteArray& route, Behaviour behaviour, When when) {
    const std::lock_guard lock(m_loop->mutex);
    m_loop->routes[route] = {std::move(behaviour), when};
}

void TestServer::stop() {
    m_loop->stop();
}

std::uint16_t TestServer::port() const {
    return m_loop->port();
}

QUrl TestServer::url(const QByteArray& path) const {
    return QUrl::fromEncoded("http://" + m_loop->host() + ':' + QByteArray::number(port()) + path);
}

QList<ServedRequest> TestServer::requests() const {
    const std::lock_guard lock(m_loop->mutex);
    return m_loop->requests;
}

int TestServer::connections() const {
    return m_loop->made;
}

int TestServer::open() const {
    return m_loop->open;
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
