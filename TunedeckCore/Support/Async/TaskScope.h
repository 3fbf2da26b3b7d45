#pragma once

#include <QCoroTask>

#include <stop_token>

namespace tunedeck {

/// Runs a task to its end without anybody waiting for it. An exception that leaves the task is logged, never lost.
void spawn(QCoro::Task<> task);

/// The tasks of one owner, as its last member: when the owner goes, they are told to stop.
///
/// The token is both the cancellation and the proof of life. A member coroutine takes it first and, after every
/// co_await, returns without touching the owner when it has been stopped. Stopping resumes what waits at once, from
/// inside stop().
class TaskScope {
public:
    TaskScope() = default;
    ~TaskScope() { stop(); }
    TaskScope(const TaskScope&) = delete;
    TaskScope& operator=(const TaskScope&) = delete;

    /// The token that every awaited operation of the owner gets.
    [[nodiscard]] std::stop_token token() const { return m_source.get_token(); }

    /// Cancels what runs; the scope can't be used again.
    void stop() {
        // What is resumed by this may destroy the owner: the source outlives the call.
        auto source = m_source;
        source.request_stop();
    }

    /// Cancels what runs and makes the scope usable again for new tasks.
    void restart();

private:
    std::stop_source m_source;
};

} // namespace tunedeck
