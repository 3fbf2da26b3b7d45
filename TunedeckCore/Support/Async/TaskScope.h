#pragma once

#include <QCoroTask>

#include <stop_token>

namespace tunedeck {

/// Runs a detached task. An exception that escapes it is logged.
void spawn(QCoro::Task<> task);

/// Cancels the coroutines of an object when the object is destroyed; declare it as the last member.
///
/// A member coroutine copies the token first and, after every co_await, returns without touching the object if a stop
/// was requested: the object may be gone. stop() resumes suspended coroutines before it returns.
class TaskScope {
public:
    TaskScope() = default;
    ~TaskScope() { stop(); }
    TaskScope(const TaskScope&) = delete;
    TaskScope& operator=(const TaskScope&) = delete;

    /// The token to pass to every awaited operation.
    [[nodiscard]] std::stop_token token() const { return m_source.get_token(); }

    /// Cancels all tasks; afterwards the token stays stopped.
    void stop() {
        // A coroutine resumed here may destroy this object, so the call needs its own copy.
        auto source = m_source;
        source.request_stop();
    }

    /// Cancels all tasks and hands out a new token.
    void restart();

private:
    std::stop_source m_source;
};

} // namespace tunedeck
