#pragma once

#include "DemoService/Http/Router.h"

#include <functional>
#include <memory>

namespace tunedeck::demo {

/// The HTTP side: a server on 127.0.0.1 that hands each request to one function and sends its reply.
class Server {
public:
    /// `handler` is called from several threads; requests of more than 64 KiB never reach it.
    explicit Server(std::function<Reply(const Request&)> handler);
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    /// Takes `port`, or any free one for 0; returns the port, or -1 when it can't be had.
    int bind(int port);
    /// Serves until stop(); false when listening failed.
    bool serve();
    /// Ends serve(), also one that is only about to begin.
    void stop();

private:
    class Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace tunedeck::demo
