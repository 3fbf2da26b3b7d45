#include "TunedeckMenu/Background/UpdateLoop.h"

#include <chrono>

namespace tunedeck {

using namespace std::chrono_literals;

void UpdateLoop::start() {
    spawn(run());
}

QCoro::Task<> UpdateLoop::run() {
    const auto stop = m_scope.token();
    co_await m_clock.sleep(60s, stop);
    while (!stop.stop_requested()) {
        m_model.checkForUpdates(MenuModel::CheckTrigger::Timer);
        co_await m_clock.sleepThroughSuspend(6h, stop);
    }
}

} // namespace tunedeck
