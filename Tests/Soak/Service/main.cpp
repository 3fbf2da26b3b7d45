#include "DemoService/Files/JsonFile.h"
#include "DemoService/Files/RuntimeFile.h"
#include "DemoService/Http/Router.h"
#include "DemoService/Scenarios/Scenarios.h"
#include "Tests/Soak/Service/Served.h"
#include "Tests/Soak/Service/Whims.h"
#include "Tests/Soak/Timeline.h"
#include "TunedeckCore/Support/Files/AtomicFile.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <mutex>
#include <thread>

namespace tunedeck::soak {
namespace {

using namespace std::chrono_literals;
using demo::Moment;

/// How a reply is sent.
enum class Manner { well, late, piecemeal, cut, reset, never, refused, garbled };

/// One client's connection.
class Connection {
public:
    explicit Connection(int socket) : m_socket(socket) {
        const timeval patience{.tv_sec = 4, .tv_usec = 0};
        ::setsockopt(m_socket, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        ::setsockopt(m_socket, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
    }
    ~Connection() { ::close(m_socket); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    [[nodiscard]] std::uint16_t peer() const {
        sockaddr_in address{};
        socklen_t size = sizeof address;
        ::getpeername(m_socket, reinterpret_cast<sockaddr*>(&address), &size);
        return ntohs(address.sin_port);
    }

    /// The request; nothing when it doesn't come as a whole.
    std::optional<demo::Request> read() const {
        std::string text;
        std::size_t head = std::string::npos;
        std::size_t length = 0;
        while (head == std::string::npos || text.size() < head + 4 + length) {
            std::array<char, 8192> buffer{};
            const auto count = ::recv(m_socket, buffer.data(), buffer.size(), 0);
            if (count <= 0) {
                return std::nullopt;
            }
            text.append(buffer.data(), static_cast<std::size_t>(count));
            head = text.find("\r\n\r\n");
            const auto named = text.find("Content-Length: ");
            length = named < head ? std::strtoul(text.c_str() + named + 16, nullptr, 10) : 0;
        }
        const auto space = text.find(' ');
        const auto end = text.find(' ', space + 1);
        return demo::Request{.method = QByteArray::fromStdString(text.substr(0, space)),
                             .target = QByteArray::fromStdString(text.substr(space + 1, end - space - 1)),
                             .body = QByteArray::fromStdString(text.substr(head + 4))};
    }

    [[nodiscard]] bool send(std::string_view bytes) const {
        while (!bytes.empty()) {
            const auto count = ::send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (count <= 0) {
                return false;
            }
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        return true;
    }

    void reset() const {
        const linger now{.l_onoff = 1, .l_linger = 0};
        ::setsockopt(m_socket, SOL_SOCKET, SO_LINGER, &now, sizeof now);
    }

private:
    int m_socket;
};

/// The demo service's world on the time of the soak, behind a socket that misbehaves.
class Service {
public:
    Service(const Files& files, std::uint64_t seed)
        : m_timeline(files.timeline())
        , m_paths{QString::fromStdString(files.home.string())}
        , m_random{static_cast<std::int64_t>(seed)}
        , m_whims(m_random)
        , m_served(files)
        , m_world(lastState(), 1)
        , m_runtime(m_paths.runtimeFile()) {}

    /// Listens on a port of its own and tells it; whoever still asks on the old one finds nobody.
    void move() {
        const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* const generic = reinterpret_cast<sockaddr*>(&address);
        if (::bind(socket, generic, size) != 0 || ::listen(socket, 64) != 0 ||
            ::getsockname(socket, generic, &size) != 0) {
            std::exit(1);
        }
        m_port = ntohs(address.sin_port);
        (void)m_runtime.publish(m_port);
        if (m_socket >= 0) {
            ::close(m_socket);
        }
        m_socket = socket;
    }

    /// Serves until the process is told to end; `signals` becomes readable with SIGUSR1's byte 'm' or another.
    void serve(int signals) {
        move();
        for (;;) {
            std::array<pollfd, 2> watched{pollfd{.fd = m_socket, .events = POLLIN, .revents = 0},
                                          pollfd{.fd = signals, .events = POLLIN, .revents = 0}};
            ::poll(watched.data(), watched.size(), -1);
            if (watched[1].revents != 0) {
                char order = 0;
                if (::read(signals, &order, 1) != 1 || order != 'm') {
                    break;
                }
                move();
            } else if (watched[0].revents != 0) {
                if (const int peer = ::accept4(m_socket, nullptr, nullptr, SOCK_CLOEXEC); peer >= 0) {
                    std::thread([this, peer] { answer(Connection(peer)); }).detach();
                }
            }
        }
        m_runtime.withdraw();
    }

private:
    [[nodiscard]] Moment now() const { return Moment(m_timeline.sinceEpoch()); }

    demo::State lastState() const {
        auto state = demo::State::fromText(readFile(m_paths.stateFile()).value_or(QByteArray()));
        if (!state) {
            state = demo::startState(demo::scenarios().front(), now());
            state->library->dbPath = m_paths.rekordboxDb();
        }
        state->cloud.reconnect(now());
        return std::move(*state);
    }

    Manner manner() {
        static constexpr std::array rare{Manner::late,  Manner::late,    Manner::piecemeal, Manner::cut,
                                         Manner::reset, Manner::refused, Manner::garbled};
        const auto chance = m_random.between(0, 999);
        return chance < 2 ? Manner::never : chance < 50 ? m_random.oneOf(rare) : Manner::well;
    }

    void answer(const Connection& connection) {
        const auto request = connection.read();
        if (!request) {
            return;
        }
        const auto peer = connection.peer();
        const bool isStatus = request->method == "GET" && request->target.endsWith("/local/status");
        demo::Response reply;
        auto how = Manner::well;
        {
            const std::lock_guard lock(m_mutex);
            how = manner();
            m_world.advance(now());
            m_whims.visit(m_world, now());
            reply = demo::respond(m_world, {.version = QStringLiteral("1.0"), .paths = m_paths, .port = m_port},
                                  *request, now());
            if (isStatus) {
                m_served.document(m_world.state());
                m_served.sending(peer, how <= Manner::piecemeal);
            }
            save();
        }
        if (send(connection, reply, how) && isStatus) {
            m_served.sent(peer);
        }
    }

    /// True when a good reply was sent as a whole.
    bool send(const Connection& connection, demo::Response reply, Manner how) {
        std::this_thread::sleep_for(reply.delay / m_timeline.speed());
        if (how == Manner::refused) {
            reply.status = 500;
        } else if (how == Manner::garbled) {
            reply.body.resize(reply.body.size() / 2);
        }
        const auto head = "HTTP/1.1 " + std::to_string(reply.status) + " Said\r\nContent-Type: application/json\r\n" +
                          "Content-Length: " + std::to_string(reply.body.size()) + "\r\nConnection: close\r\n\r\n";
        const auto whole = head + (reply.status == 204 ? std::string() : reply.body.toStdString());
        switch (how) {
        case Manner::late:
            std::this_thread::sleep_for(20ms * (whole.size() % 40));
            break;
        case Manner::piecemeal:
            for (std::size_t at = 0; at < whole.size(); at += 997) {
                if (!connection.send(std::string_view(whole).substr(at, 997))) {
                    return false;
                }
                std::this_thread::sleep_for(5ms);
            }
            return true;
        case Manner::reset:
            connection.reset();
            [[fallthrough]];
        case Manner::cut:
            (void)connection.send(std::string_view(whole).substr(0, whole.size() / 2));
            return false;
        case Manner::never:
            std::this_thread::sleep_for(3s);
            return false;
        default:
            break;
        }
        return connection.send(whole) && how <= Manner::piecemeal;
    }

    /// What is lost when the service is killed is what a disk may lose.
    void save() {
        if (const auto real = realTime(); real - m_saved > 500ms) {
            m_saved = real;
            (void)demo::writeFile(m_paths.stateFile(), m_world.state().text());
        }
    }

    std::mutex m_mutex;
    Timeline m_timeline;
    demo::HomePaths m_paths;
    demo::Random m_random;
    Whims m_whims;
    Served m_served;
    demo::World m_world;
    demo::RuntimeFile m_runtime;
    std::chrono::nanoseconds m_saved{};
    int m_socket = -1;
    std::uint16_t m_port = 0;
};

int signalPipe = -1; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables): a signal handler has no object

void tell(int signal) {
    const char order = signal == SIGUSR1 ? 'm' : 'e';
    (void)!::write(signalPipe, &order, 1);
}

int run() {
    const char* home = std::getenv("HOME");
    const Files files{home == nullptr ? "" : home};
    const auto seed = readFile(QString::fromStdString(files.seed().string()));
    if (!seed) {
        return 1;
    }
    Trail(files.starts()).note("");
    const auto starts = std::filesystem::file_size(files.starts());
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) {
        return 1;
    }
    signalPipe = ends[1];
    for (const int signal : {SIGTERM, SIGINT, SIGUSR1}) {
        std::signal(signal, tell);
    }
    Service(files, seed->trimmed().toULongLong() * 1000 + starts).serve(ends[0]);
    std::_Exit(0); // connections may still be under way
}

} // namespace
} // namespace tunedeck::soak

/// The background service of a soak; the application installs it and the user manager runs it.
int main() {
    return tunedeck::soak::run();
}
