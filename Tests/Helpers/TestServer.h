#pragma once

#include <QByteArray>
#include <QList>
#include <QUrl>

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <thread>

namespace tunedeck::test {

/// One connection to a TestServer, as a behaviour sees it. Everything gives up when the peer has gone or the server
/// ends, and nothing else limits it.
class Connection {
public:
    explicit Connection(int socket, int wakeUp) : m_socket(socket), m_wakeUp(wakeUp) {}

    /// Sends all the bytes; false when the peer no longer takes them.
    bool send(const QByteArray& bytes);
    /// Appends what comes to `bytes`; false when no more comes.
    bool receive(QByteArray& bytes);
    /// Waits; false when the server ends meanwhile or the peer has gone.
    bool pause(std::chrono::milliseconds duration);
    /// Ends the connection with a reset instead of a proper end.
    void reset();

private:
    int m_socket;
    int m_wakeUp;
};

/// A request as it came.
struct ServedRequest {
    QByteArray method;
    QByteArray target;                        ///< as written, with the query
    std::map<QByteArray, QByteArray> headers; ///< names in lower case
    QByteArray body;
};

/// What a server does with a request; the connection is closed afterwards.
using Behaviour = std::function<void(Connection&, const ServedRequest&)>;

/// A real HTTP server on an ephemeral loopback port, on threads of its own, that behaves as told by route: "GET /path".
/// A request without a route gets a 404. May be changed while it runs.
class TestServer {
public:
    TestServer() : TestServer("127.0.0.1", 0) {}
    /// At this address of the loopback network ("::1" is one) and this port, for programs that can't be told another.
    TestServer(const QByteArray& address, std::uint16_t port);
    ~TestServer();
    TestServer(const TestServer&) = delete;
    TestServer& operator=(const TestServer&) = delete;

    /// When a behaviour begins.
    enum class When {
        RequestCame, ///< the whole request has been read
        HeadCame     ///< the body, which may be coming still, is left unread
    };

    /// Sets what a route does; "*" stands for every route that has none of its own.
    void on(const QByteArray& route, Behaviour behaviour, When when = When::RequestCame);
    /// Stops listening: nothing answers on the port any more.
    void stop();

    [[nodiscard]] std::uint16_t port() const;
    /// "http://ADDRESS:PORT" with the path.
    [[nodiscard]] QUrl url(const QByteArray& path = {}) const;

    /// The requests that came so far, in order.
    [[nodiscard]] QList<ServedRequest> requests() const;
    /// How many connections were made so far.
    [[nodiscard]] int connections() const;
    /// How many of them are still open.
    [[nodiscard]] int open() const;

private:
    class Loop;
    std::unique_ptr<Loop> m_loop;
};

/// The behaviours that tests need.
namespace behave {

/// A proper answer with a length.
Behaviour answer(int status, const QByteArray& body, const QByteArray& headers = {});
/// These bytes, then the end.
Behaviour raw(const QByteArray& bytes);
/// These bytes, then a reset.
Behaviour resetAfter(const QByteArray& bytes);
/// These bytes one by one with pauses, for ever again.
Behaviour drip(const QByteArray& bytes, std::chrono::milliseconds pause);
/// These bytes, then silence until the peer goes.
Behaviour hang(const QByteArray& bytes = {});
/// The head, then so many bytes "x".
Behaviour flood(const QByteArray& head, std::int64_t size);
/// Waits before another behaviour.
Behaviour after(std::chrono::milliseconds pause, Behaviour then);

} // namespace behave

} // namespace tunedeck::test
