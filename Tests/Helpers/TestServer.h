#pragma once

#include <QByteArray>
#include <QList>
#include <QUrl>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace tunedeck::test {

/// One connection to a TestServer. Calls block until they succeed, the peer disconnects or the server stops.
class Connection {
public:
    explicit Connection(int socket, int wakeUp) : m_socket(socket), m_wakeUp(wakeUp) {}

    /// Sends all the bytes; false if the peer has disconnected.
    bool send(const QByteArray& bytes);
    /// Appends received bytes; false at the end of the stream.
    bool receive(QByteArray& bytes);
    /// Sleeps; false if the peer disconnects or the server stops.
    bool pause(std::chrono::milliseconds duration);
    /// Closes the connection with a reset.
    void reset();

private:
    int m_socket;
    int m_wakeUp;
};

/// A received request.
struct ServedRequest {
    QByteArray method;
    QByteArray target;                        ///< as written, with the query
    std::map<QByteArray, QByteArray> headers; ///< names in lower case
    QByteArray body;
};

/// Handles a request; the connection is closed afterwards.
using Behaviour = std::function<void(Connection&, const ServedRequest&)>;

/// An HTTP server on a loopback port, with its own threads, that can misbehave by route ("GET /path"). Routes can
/// change while it runs; a request without a route gets a 404.
class TestServer {
public:
    /// Listens on a free port of this loopback address.
    explicit TestServer(const QByteArray& address = "127.0.0.1");
    ~TestServer();
    TestServer(const TestServer&) = delete;
    TestServer& operator=(const TestServer&) = delete;

    /// When a behaviour starts.
    enum class When {
        RequestCame, ///< after the whole request
        HeadCame     ///< after the header; the body is left unread
    };

    /// Sets the behaviour of a route; "*" is the default.
    void on(const QByteArray& route, Behaviour behaviour, When when = When::RequestCame);
    /// Stops listening.
    void stop();

    [[nodiscard]] std::uint16_t port() const { return m_port; }
    /// "http://ADDRESS:PORT" with the path.
    [[nodiscard]] QUrl url(const QByteArray& path = {}) const;

    /// The requests received so far.
    [[nodiscard]] QList<ServedRequest> requests() const;
    /// Number of connections accepted so far.
    [[nodiscard]] int connections() const { return m_made; }
    /// Number of open connections.
    [[nodiscard]] int open() const { return m_open; }

private:
    using Plan = std::pair<Behaviour, When>;

    void accept();
    void serve(int peer);
    Plan planFor(const QByteArray& route) const;

    QByteArray m_host;
    std::uint16_t m_port = 0;
    int m_socket;
    std::array<int, 2> m_wakeUp; ///< a pipe
    mutable std::mutex m_mutex;  ///< of the routes and the requests
    std::map<QByteArray, Plan> m_routes;
    QList<ServedRequest> m_requests;
    std::atomic<int> m_made = 0;
    std::atomic<int> m_open = 0;
    std::vector<std::jthread> m_connections;
    std::jthread m_acceptor;
};

namespace behave {

/// A valid reply with a length.
Behaviour answer(int status, const QByteArray& body, const QByteArray& headers = {});
/// Sends the bytes and closes.
Behaviour raw(const QByteArray& bytes);
/// Sends the bytes and resets.
Behaviour resetAfter(const QByteArray& bytes);
/// Sends the bytes one by one with pauses, repeatedly.
Behaviour drip(const QByteArray& bytes, std::chrono::milliseconds pause);
/// Sends the bytes and keeps the connection open.
Behaviour hang(const QByteArray& bytes = {});
/// Sends the header, then `size` bytes "x".
Behaviour flood(const QByteArray& head, std::int64_t size);
/// Runs another behaviour after a pause.
Behaviour after(std::chrono::milliseconds pause, Behaviour then);

} // namespace behave

} // namespace tunedeck::test
