#include "TunedeckMenu/Background/FollowLoop.h"

#include "TunedeckMenu/Platform/Log.h"

#include <chrono>
#include <utility>
#include <variant>

namespace tunedeck {

using namespace std::chrono_literals;

FollowLoop::FollowLoop(Clock& clock, StatusClient client, Notifier& notifier,
                       std::function<void(std::optional<ServiceStatus>)> onFetched)
    : m_clock(clock), m_client(std::move(client)), m_notifier(notifier), m_onFetched(std::move(onFetched)) {}

void FollowLoop::start() {
    spawn(follow());
}

QCoro::Task<> FollowLoop::follow() {
    const auto stop = m_scope.token();
    while (!stop.stop_requested()) {
        auto reply = co_await m_client.request(stop);
        if (stop.stop_requested()) {
            co_return;
        }
        logIfInvalid(reply);
        if (reply) {
            m_notifier.update(*reply);
        }
        m_onFetched(reply ? std::optional(std::move(*reply)) : std::nullopt);
        co_await m_clock.sleep(4s, stop);
    }
}

/// Logs which member of a status is invalid, once until that changes.
void FollowLoop::logIfInvalid(const StatusClient::Reply& reply) {
    const auto* error = reply ? nullptr : std::get_if<json::Error>(&reply.error());
    const auto description = error ? error->description() : QString();
    if (description != m_logged && (reply || error)) {
        m_logged = description;
        if (error) {
            qCWarning(appLog).noquote() << "the service's status is invalid:" << description;
        }
    }
}

} // namespace tunedeck
