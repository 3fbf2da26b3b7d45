#include "TunedeckCore/Support/Async/TaskScope.h"

#include <QtGlobal>

#include <exception>

namespace tunedeck {

namespace {

QCoro::Task<> watched(QCoro::Task<> task) {
    try {
        co_await task;
    } catch (const std::exception& error) {
        qCritical("a task ended with an exception: %s", error.what());
    } catch (...) {
        qCritical("a task ended with an unknown exception");
    }
}

} // namespace

void spawn(QCoro::Task<> task) {
    watched(std::move(task));
}

void TaskScope::restart() {
    stop();
    m_source = std::stop_source();
}

} // namespace tunedeck
