// What one poll of the service costs the thread that polls: the client beside bare socket calls, with the same peer.
#include "TunedeckCore/Service/ServiceStatus.h"
#include "TunedeckCore/Service/StatusClient.h"
#include "TunedeckCore/Support/Http/LocalHttp.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <thread>

namespace tunedeck {
namespace {

QByteArray statusDocument() {
    QByteArray jobs;
    for (int i = 0; i < 20; ++i) {
        jobs += (i == 0 ? "" : ",") + QByteArray(R"({"job_id": "j)") + QByteArray::number(i) +
                R"(", "state": "done", "playlist": "Friday", "message": "Added 12 tracks", "tracks": 12,
                    "finished_at": "2026-03-01T18:04:05Z"})";
    }
    return R"({"version": "1.2.3", "download_dir": "/m", "download_dir_source": "default",
        "download_dir_writable": true, "import_xml": "/x", "cloud": {"enabled": true, "base_url": "u"},
        "recent_jobs": [)" +
           jobs + "]}";
}

/// Replies to every connection with the status document, in a separate thread.
class Peer {
public:
    Peer() {
        sockaddr_in any{};
        any.sin_family = AF_INET;
        any.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof any;
        bind(m_socket, reinterpret_cast<sockaddr*>(&any), size);
        listen(m_socket, 16);
        getsockname(m_socket, reinterpret_cast<sockaddr*>(&m_address), &size);
        m_thread = std::thread([this] { serve(); });
    }
    ~Peer() {
        shutdown(m_socket, SHUT_RDWR);
        m_thread.join();
        close(m_socket);
    }
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    [[nodiscard]] const sockaddr_in& address() const { return m_address; }
    [[nodiscard]] QUrl url() const {
        QUrl url(QStringLiteral("http://127.0.0.1/local/status"));
        url.setPort(ntohs(m_address.sin_port));
        return url;
    }

private:
    void serve() const {
        const auto body = statusDocument();
        const auto answer = "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
        for (int peer = 0; (peer = accept(m_socket, nullptr, nullptr)) >= 0; close(peer)) {
            std::array<char, 4096> request{};
            if (recv(peer, request.data(), request.size(), 0) > 0) {
                send(peer, answer.constData(), static_cast<std::size_t>(answer.size()), MSG_NOSIGNAL);
            }
        }
    }

    int m_socket = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in m_address{};
    std::thread m_thread;
};

// The caller waits for the task, so the references stay valid.
template<class T>
// NOLINTNEXTLINE(cppcoreguidelines-avoid-reference-coroutine-parameters)
QCoro::Task<> note(QCoro::Task<T> task, T& result, bool& done) {
    result = co_await task;
    done = true;
}

template<class T>
T runToEnd(QCoro::Task<T> task, T result) {
    bool done = false;
    note(std::move(task), result, done);
    while (!done) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return result;
}

void needEventLoop() {
    static int count = 1;
    static std::array<char, 5> name{"poll"};
    static std::array<char*, 2> arguments{name.data(), nullptr};
    static const QCoreApplication application(count, arguments.data());
}

void bareSocketCalls(benchmark::State& state) {
    const Peer peer;
    const QByteArray request = "GET /local/status HTTP/1.1\r\nHost: 127.0.0.1:8000\r\nConnection: close\r\n\r\n";
    for (auto round : state) {
        const int number = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        connect(number, reinterpret_cast<const sockaddr*>(&peer.address()), sizeof(sockaddr_in));
        send(number, request.constData(), static_cast<std::size_t>(request.size()), MSG_NOSIGNAL);
        std::array<char, 64UL * 1024> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init)
        ssize_t total = 0;
        for (ssize_t got = 1; got > 0; total += got) {
            got = recv(number, buffer.data(), buffer.size(), 0);
        }
        close(number);
        if (total < 1000) {
            state.SkipWithError("no answer");
        }
    }
}
BENCHMARK(bareSocketCalls)->Unit(benchmark::kMicrosecond);

void oneRequest(benchmark::State& state) {
    needEventLoop();
    const Peer peer;
    for (auto round : state) {
        const HttpRequest request{.method = HttpMethod::Get, .url = peer.url(), .timeout = std::chrono::seconds(2)};
        using Outcome = std::expected<HttpReply, HttpFailure>;
        const auto outcome = runToEnd<Outcome>(sendLocal(request, {}), Outcome());
        if (!outcome || outcome->status != 200) {
            state.SkipWithError("no answer");
        }
    }
}
BENCHMARK(oneRequest)->Unit(benchmark::kMicrosecond);

void oneStatusFetched(benchmark::State& state) {
    needEventLoop();
    const Peer peer;
    const StatusClient client{peer.url()};
    for (auto round : state) {
        if (!runToEnd<std::optional<ServiceStatus>>(client.fetch(), std::nullopt)) {
            state.SkipWithError("no status");
        }
    }
}
BENCHMARK(oneStatusFetched)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace tunedeck
