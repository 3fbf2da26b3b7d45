#pragma once

#include "DemoService/Files/Log.h"
#include "DemoService/Files/RuntimeFile.h"
#include "DemoService/Http/Router.h"
#include "DemoService/Http/Server.h"
#include "DemoService/World/World.h"

#include <condition_variable>
#include <mutex>
#include <stop_token>

namespace tunedeck::demo {

/// The running service: the world on the machine's clock, behind HTTP, with its files. Between events and requests it
/// sleeps.
class Service {
public:
    Service(World world, ServiceFacts facts, Log log);

    /// Takes the port (0: any free one) and publishes it; false, with a line in the log, when it can't be had.
    bool start(int port);
    int port() const { return m_facts.port; }
    /// Serves until stop() is called from another thread. Then the state is saved and the runtime file withdrawn.
    /// False, with a line in the log, when serving ended by itself.
    bool run();
    void stop();

private:
    Reply handle(const Request& request);
    void live(const std::stop_token& stop);
    void flush();
    void save(const std::string& state, const std::string& importXml);

    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    /// Guarded by the mutex, as is the flag.
    World m_world;
    bool m_unsaved = true;

    ServiceFacts m_facts;
    Log m_log;
    RuntimeFile m_runtimeFile;
    Server m_server;
    /// What went wrong when saving last; the log isn't filled with repetitions.
    std::string m_saveError;
};

} // namespace tunedeck::demo
