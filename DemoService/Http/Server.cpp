#include "DemoService/Http/Server.h"

#include <httplib.h>

#include <chrono>
#include <thread>

namespace tunedeck::demo {

namespace {

constexpr std::size_t maxBody = 64U << 10U;
constexpr std::size_t workers = 4;
constexpr auto host = "127.0.0.1";
constexpr auto json = "application/json";

bool hasBody(const httplib::Request& request) {
    return request.has_header("Transfer-Encoding") ||
           (request.has_header("Content-Length") && request.get_header_value("Content-Length") != "0");
}

} // namespace

class Server::Implementation {
public:
    explicit Implementation(Handler answer) : handler(std::move(answer)) {
        using Outcome = httplib::Server::HandlerResponse;
        // The library would wait for the body of a POST or DELETE that has none, so handle those requests here.
        http.set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& response) {
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
        http.set_payload_max_length(maxBody);
        http.set_keep_alive_max_count(1); // the library polls idle connections
        http.set_tcp_nodelay(true);
        // By default the library sets SO_REUSEPORT, which lets two services share a port.
        http.set_socket_options([](socket_t socket) {
            const int yes = 1;
            ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
        });
        http.new_task_queue = [] { return new httplib::ThreadPool(workers); };
    }

    void handle(const httplib::Request& request, httplib::Response& response) const {
        const Response result = handler({.method = QByteArray::fromStdString(request.method),
                                         .target = QByteArray::fromStdString(request.target),
                                         .body = QByteArray::fromStdString(request.body)});
        std::this_thread::sleep_for(result.delay);
        response.status = result.status;
        if (!result.allow.isEmpty()) {
            response.set_header("Allow", result.allow.toStdString());
        }
        if (!result.body.isEmpty()) {
            response.set_content(result.body.toStdString(), json);
        }
    }

    Handler handler;
    httplib::Server http;
    std::thread thread;
};

Server::Server(Handler handler) : m_implementation(std::make_unique<Implementation>(std::move(handler))) {}

Server::~Server() {
    stop();
}

int Server::start(int port) {
    auto& [handler, http, thread] = *m_implementation;
    if (port == 0) {
        port = http.bind_to_any_port(host);
    } else if (!http.bind_to_port(host, port)) {
        port = -1;
    }
    if (port > 0) {
        thread = std::thread([&http] {
            if (!http.listen_after_bind()) {
                std::_Exit(1); // it can't accept connections any more; a restart may help
            }
        });
        // The library ignores a stop() before it listens.
        while (!http.is_running()) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    return port;
}

void Server::stop() {
    if (m_implementation->thread.joinable()) {
        m_implementation->http.stop();
        m_implementation->thread.join();
    }
}

} // namespace tunedeck::demo
