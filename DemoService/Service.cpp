#include "DemoService/Service.h"

#include "DemoService/Files/JsonFile.h"
#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckCore/Support/Json/Value.h"

#include <QCoreApplication>
#include <QFile>

#include <expected>
#include <utility>

namespace tunedeck::demo {

using namespace Qt::StringLiterals;

namespace {

/// Writes the file from which clients learn the port. It exists while the service runs.
std::expected<void, QString> publishPort(const QString& runtimeFile, int port) {
    const json::Object content{{u"port"_s, port}, {u"pid"_s, QCoreApplication::applicationPid()}};
    return writeFile(runtimeFile, json::prettyText(content));
}

/// Removes the file, unless another process has published its own port in the meantime.
void withdrawPort(const QString& runtimeFile) {
    const auto content = readObject(runtimeFile);
    const auto* pid = content.find("pid"_L1);
    if (pid != nullptr && *pid == json::Value(QCoreApplication::applicationPid())) {
        QFile::remove(runtimeFile);
    }
}

} // namespace

Service::Service(World world, ServiceFacts facts, Log log)
    : m_world(std::move(world))
    , m_facts(std::move(facts))
    , m_log(log)
    , m_server([this](const Request& request) { return handle(request); }) {}

bool Service::start(int port) {
    const std::lock_guard lock(m_mutex); // no request before the port is known
    const int taken = m_server.start(port);
    if (taken < 0) {
        m_log.write({Log::Level::Error, u"tunedeck::http"_s, u"can't listen on 127.0.0.1:%1"_s.arg(port)});
        return false;
    }
    m_facts.port = taken;
    if (const auto published = publishPort(m_facts.paths.runtimeFile(), taken); !published) {
        m_log.write(
            {Log::Level::Error, u"tunedeck::http"_s, published.error()}); // clients may know the port from elsewhere
    }
    m_log.write({Log::Level::Info, u"tunedeck::http"_s, u"listening on http://127.0.0.1:%1"_s.arg(taken)});
    m_life = std::jthread([this](const std::stop_token& stop) { live(stop); });
    return true;
}

void Service::stop() {
    m_server.stop();
    m_life.request_stop();
    m_life.join();
    withdrawPort(m_facts.paths.runtimeFile());
    m_log.write({Log::Level::Info, u"tunedeck::service"_s, u"stopped"_s});
}

Response Service::handle(const Request& request) {
    const std::lock_guard lock(m_mutex);
    const Moment now = currentMoment();
    m_world.advance(now);
    Response response = respond(m_world, m_facts, request, now);
    flush();
    m_log.write({Log::Level::Debug, u"tunedeck::http"_s,
                 QString::fromUtf8(request.method + ' ' + request.target + ' ' + QByteArray::number(response.status))});
    return response;
}

/// Writes the world's new lines to the log and wakes live() if there are any.
void Service::flush() {
    for (const Log::Line& line : m_world.takeLines()) {
        m_log.write(line);
        m_unsaved = true;
    }
    m_changed.notify_one();
}

/// Advances the world at each of its events and saves what has changed.
void Service::live(const std::stop_token& stop) {
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_world.advance(currentMoment());
        flush();
        if (std::exchange(m_unsaved, false)) {
            const State state = m_world.state();
            lock.unlock();
            save(state);
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

void Service::save(const State& state) {
    auto saved = writeFile(m_facts.paths.stateFile(), state.text());
    const auto xml = state.jobs.importXml(m_facts.version);
    if (saved && readFile(m_facts.paths.importXml(), fileLimit) != xml) {
        saved = writeFile(m_facts.paths.importXml(), xml);
    }
    const QString error = saved ? QString() : saved.error();
    if (!error.isEmpty() && error != m_saveError) {
        m_log.write({Log::Level::Error, u"tunedeck::service"_s, error});
    }
    m_saveError = error;
}

} // namespace tunedeck::demo
