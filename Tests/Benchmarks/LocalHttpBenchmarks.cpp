// What one poll of the service costs the thread that polls: the client beside bare socket calls, with the same peer.
#include "Tests/Benchmarks/StatusJobs.h"
#include "Tests/Helpers/StatusDocument.h"
#include "TunedeckCore/Service/ServiceStatus.h"
#include "TunedeckCore/Service/StatusClient.h"
#include "TunedeckCore/Support/Http/LocalHttp.h"

#include <QCoreApplication>
#include <QCoroTask>

#include <benchmark/benchmark.h>
#include <httplib.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <thread>

namespace tunedeck {
namespace {

/// Replies to every connection with a status document of 20 jobs, in its own threads.
class Peer {
public:
    Peer() {
        const auto document = test::statusDocument("\"recent_jobs\":[" + statusJobs(20) + ']').toStdString();
        m_server.set_tcp_nodelay(true);
        m_server.Get("/local/status", [document](const httplib::Request&, httplib::Response& response) {
            response.set_content(document, "application/json");
        });
        m_url.setPort(m_server.bind_to_any_port("127.0.0.1"));
        m_thread = std::jthread([this] { m_server.listen_after_bind(); });
    }
    ~Peer() { m_server.stop(); }
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    [[nodiscard]] const QUrl& url() const { return m_url; }

private:
    QUrl m_url{QStringLiteral("http://127.0.0.1/local/status")};
    httplib::Server m_server;
    std::jthread m_thread;
};

void needEventLoop() {
    static int count = 1;
    static std::array<char, 5> name{"poll"};
    static std::array<char*, 2> arguments{name.data(), nullptr};
    static const QCoreApplication application(count, arguments.data());
}

void bareSocketCalls(benchmark::State& state) {
    const Peer peer;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(peer.url().port()));
    const QByteArray request = "GET /local/status HTTP/1.1\r\nHost: 127.0.0.1:8000\r\nConnection: close\r\n\r\n";
    for (auto round : state) {
        const int number = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        connect(number, reinterpret_cast<const sockaddr*>(&address), sizeof address);
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
        const auto outcome = QCoro::waitFor(sendLocal(request, {}));
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
        if (!QCoro::waitFor(client.fetch())) {
            state.SkipWithError("no status");
        }
    }
}
BENCHMARK(oneStatusFetched)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace tunedeck
