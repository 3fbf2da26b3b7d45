#include "DemoService/Service.h"

#include "DemoService/Files/Files.h"
#include "DemoService/Library/ImportXml.h"

#include <unistd.h>

#include <thread>

namespace tunedeck::demo {

Service::Service(World world, ServiceFacts facts, Log log)
    : m_world(std::move(world))
    , m_facts(std::move(facts))
    , m_log(log)
    , m_runtimeFile(m_facts.paths.runtimeFile())
    , m_server([this](const Request& request) { return handle(request); }) {}

bool Service::start(int port) {
    const int taken = m_server.bind(port);
    if (taken < 0) {
        m_log.write({Level::error, "tunedeck::http", "can't listen on 127.0.0.1:" + std::to_string(port)});
        return false;
    }
    m_facts.port = taken;
    if (const auto wrong = m_runtimeFile.publish(taken, ::getpid()); !wrong.empty()) {
        // Whoever is told the port by other means can still be served.
        m_log.write({Level::error, "tunedeck::http", wrong});
    }
    m_log.write({Level::info, "tunedeck::http", "listening on http://127.0.0.1:" + std::to_string(taken)});
    return true;
}

bool Service::run() {
    std::jthread life([this](const std::stop_token& stop) { live(stop); });
    const bool served = m_server.serve();
    if (!served) {
        m_log.write({Level::error, "tunedeck::http", "the server ended"});
    }
    life.request_stop();
    life.join();
    m_runtimeFile.withdraw(::getpid());
    m_log.write({Level::info, "tunedeck::service", "stopped"});
    return served;
}

void Service::stop() {
    m_server.stop();
}

Reply Service::handle(const Request& request) {
    const std::lock_guard lock(m_mutex);
    const Moment now = currentMoment();
    m_world.advance(now);
    Reply reply = answer(m_world, m_facts, request, now);
    flush();
    m_log.write(
        {Level::debug, "tunedeck::http", request.method + " " + request.target + " " + std::to_string(reply.status)});
    return reply;
}

/// Sends the journal to the log and wakes the thread that saves, when there is anything new.
void Service::flush() {
    const auto journal = m_world.takeJournal();
    for (const LogLine& line : journal) {
        m_log.write(line);
    }
    if (!journal.empty()) {
        m_unsaved = true;
        m_changed.notify_one();
    }
}

/// Makes what is due happen, saves what has changed, and sleeps until the next event or change.
void Service::live(const std::stop_token& stop) {
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_world.advance(currentMoment());
        flush();
        if (std::exchange(m_unsaved, false)) {
            const std::string state = stateText(m_world.state());
            const std::string xml = importXmlText(m_world.state().jobs, m_facts.version);
            lock.unlock();
            save(state, xml);
            lock.lock();
            continue;
        }
        if (stop.stop_requested()) {
            return;
        }
        const auto changed = [this] { return m_unsaved; };
        if (const auto next = m_world.nextEvent()) {
            m_changed.wait_until(lock, stop, *next, changed);
        } else {
            m_changed.wait(lock, stop, changed);
        }
    }
}

void Service::save(const std::string& state, const std::string& importXml) {
    std::string wrong = writeFileAtomically(m_facts.paths.stateFile(), state);
    const auto xmlFile = m_facts.paths.importXml();
    if (wrong.empty() && readFile(xmlFile) != importXml) {
        wrong = writeFileAtomically(xmlFile, importXml);
    }
    if (!wrong.empty() && wrong != m_saveError) {
        m_log.write({Level::error, "tunedeck::service", wrong});
    }
    m_saveError = std::move(wrong);
}

} // namespace tunedeck::demo
