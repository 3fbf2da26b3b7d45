#include "Tests/Helpers/RunTask.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

namespace tunedeck::test {

bool runUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
    const QDeadlineTimer deadline(limit);
    // Poll, because other threads and processes may change the condition.
    QTimer poll;
    poll.start(2ms);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void runDueEvents() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

Heartbeat::Heartbeat() {
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, [this] { ++m_ticks; });
    m_timer.start(1ms);
}

} // namespace tunedeck::test
