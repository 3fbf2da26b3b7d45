#include "DemoService/Http/Server.h"

#include <httplib.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace tunedeck::demo {

namespace {

constexpr std::size_t largestBody = 64U << 10U;
constexpr std::size_t longestTarget = 4096;
constexpr std::size_t workers = 4;
constexpr auto json = "application/json";

void send(const Reply& reply, httplib::Response& response) {
    if (reply.delay.count() > 0) {
        std::this_thread::sleep_for(reply.delay);
    }
    response.status = reply.status;
    if (!reply.allow.empty()) {
        response.set_header("Allow", reply.allow);
    }
    if (!reply.body.empty()) {
        response.set_content(reply.body, json);
    }
}

bool hasBody(const httplib::Request& request) {
    return request.has_header("Transfer-Encoding") ||
           (request.has_header("Content-Length") && request.get_header_value("Content-Length") != "0");
}

} // namespace

class Server::Implementation {
public:
    explicit Implementation(std::function<Reply(const Request&)> answer) : handler(std::move(answer)) {
        using Outcome = httplib::Server::HandlerResponse;
        // The library waits for a body that was never announced, so what has none is answered before it looks for one.
        http.set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& response) {
            if (request.target.size() > longestTarget) {
                send({.status = 414, .body = R"({"error":"The address is too long."})", .allow = {}, .delay = {}},
                     response);
                return Outcome::Handled;
            }
            if (hasBody(request)) {
                return Outcome::Unhandled;
            }
            handle(request, response);
            return Outcome::Handled;
        });
        const auto withBody = [this](const httplib::Request& request, httplib::Response& response) {
            handle(request, response);
        };
        constexpr auto anything = R"([\s\S]*)";
        http.Get(anything, withBody).Post(anything, withBody).Put(anything, withBody);
        http.Patch(anything, withBody).Delete(anything, withBody).Options(anything, withBody);
        http.set_error_handler([](const httplib::Request&, httplib::Response& response) {
            if (response.body.empty()) {
                response.set_content(R"({"error":"The request couldn't be read."})", json);
            }
        });
        http.set_payload_max_length(largestBody);
        // One request per connection: a kept connection would be polled.
        http.set_keep_alive_max_count(1);
        http.set_tcp_nodelay(true);
        // The library's default would let two services share one port.
        http.set_socket_options([](socket_t socket) {
            const int yes = 1;
            ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
        });
        http.new_task_queue = [] { return new httplib::ThreadPool(workers); };
    }

    void handle(const httplib::Request& request, httplib::Response& response) const {
        send(handler({.method = request.method, .target = request.target, .body = request.body}), response);
    }

    std::function<Reply(const Request&)> handler;
    httplib::Server http;
    std::atomic<bool> ended = false;
};

Server::Server(std::function<Reply(const Request&)> handler)
    : m_implementation(std::make_unique<Implementation>(std::move(handler))) {}

Server::~Server() = default;

int Server::bind(int port) {
    constexpr auto host = "127.0.0.1";
    if (port == 0) {
        return m_implementation->http.bind_to_any_port(host);
    }
    return m_implementation->http.bind_to_port(host, port) ? port : -1;
}

bool Server::serve() {
    const bool well = m_implementation->http.listen_after_bind();
    m_implementation->ended = true;
    return well;
}

void Server::stop() {
    // The library ignores a stop that comes before it runs.
    while (!m_implementation->http.is_running() && !m_implementation->ended) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    m_implementation->http.stop();
}

} // namespace tunedeck::demo
