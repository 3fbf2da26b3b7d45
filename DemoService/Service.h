#pragma once

#include "DemoService/Files/Log.h"
#include "DemoService/Http/Router.h"
#include "DemoService/Http/Server.h"
#include "DemoService/World/World.h"

#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <thread>

namespace tunedeck::demo {

/// The running service: a world in real time, with its HTTP server and its files. Sleeps between events and requests.
class Service {
public:
    Service(World world, ServiceFacts facts, Log log);

    /// Listens on `port` (0: any free one) and publishes it; false, with a log line, when the port is taken.
    bool start(int port);
    int port() const { return m_facts.port; }
    /// Stops serving, saves the state and removes the runtime file.
    void stop();

private:
    Response handle(const Request& request);
    void live(const std::stop_token& stop);
    void flush();
    void save(const State& state);

    std::mutex m_mutex; ///< guards the world and m_unsaved
    std::condition_variable_any m_changed;
    World m_world;
    bool m_unsaved = true;

    ServiceFacts m_facts;
    Log m_log;
    QString m_saveError; ///< the last one, which isn't logged again
    Server m_server;
    std::jthread m_life;
};

} // namespace tunedeck::demo
