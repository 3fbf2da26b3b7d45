#include "TunedeckMenu/Background/FollowLoop.h"

#include <chrono>
#include <utility>

namespace tunedeck {

using namespace std::chrono_literals;

FollowLoop::FollowLoop(Clock& clock, StatusClient client, Notifier& notifier,
                       std::function<void(const std::optional<ServiceStatus>&)> onFetched)
    : m_clock(clock), m_client(std::move(client)), m_notifier(notifier), m_onFetched(std::move(onFetched)) {}

void FollowLoop::start() {
    spawn(follow());
}

QCoro::Task<> FollowLoop::follow() {
    const auto stop = m_scope.token();
    while (!stop.stop_requested()) {
        const auto status = co_await m_client.fetch(stop);
        if (stop.stop_requested()) {
            co_return;
        }
        if (status) {
            m_notifier.update(*status);
        }
        m_onFetched(status);
        co_await m_clock.sleep(4s, stop);
    }
}

} // namespace tunedeck
