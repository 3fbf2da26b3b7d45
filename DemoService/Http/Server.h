#pragma once

#include "DemoService/Http/Message.h"

#include <functional>
#include <memory>

namespace tunedeck::demo {

/// An HTTP server on 127.0.0.1 that passes each request to one handler. Requests of more than 64 KiB are rejected.
class Server {
public:
    using Handler = std::function<Response(const Request&)>;

    /// `handler` is called from several threads.
    explicit Server(Handler handler);
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    /// Starts serving on `port` (0: any free one) in the background. Returns the port, or -1 when it is taken.
    int start(int port);
    /// Stops serving and waits for the requests in flight.
    void stop();

private:
    class Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace tunedeck::demo
