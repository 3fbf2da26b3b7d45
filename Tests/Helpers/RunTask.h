#pragma once

#include <QCoroTask>
#include <QString>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>
#include <variant>

namespace tunedeck::test {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// Runs the event loop until the condition holds; false on timeout. Other threads may change the condition.
bool runUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit = 10s);

/// Processes all pending events.
void runDueEvents();

/// The result of a task, once it has ended.
template<class T>
struct Ending {
    using Value = std::conditional_t<std::is_void_v<T>, std::monostate, T>;
    std::optional<Value> value;
    [[nodiscard]] bool isThere() const { return value.has_value(); }
};

namespace detail {
template<class T>
QCoro::Task<> collect(QCoro::Task<T> task, std::shared_ptr<Ending<T>> ending) {
    if constexpr (std::is_void_v<T>) {
        co_await task;
        ending->value.emplace();
    } else {
        ending->value.emplace(co_await task);
    }
}
} // namespace detail

/// Starts a task; the ending is filled in when the task ends.
template<class T>
std::shared_ptr<Ending<T>> endingOf(QCoro::Task<T> task) {
    auto ending = std::make_shared<Ending<T>>();
    detail::collect<T>(std::move(task), ending);
    return ending;
}

/// Runs the event loop until the task has ended and returns its result; throws std::runtime_error on timeout.
template<class T>
T runToEnd(QCoro::Task<T> task, std::chrono::milliseconds limit = 10s) {
    const auto ending = endingOf(std::move(task));
    if (!runUntil([&] { return ending->isThere(); }, limit)) {
        throw std::runtime_error("the task didn't end in time");
    }
    if constexpr (!std::is_void_v<T>) {
        return std::move(*ending->value);
    }
}

/// Counts the ticks of a 1 ms timer, to show that the event loop isn't blocked.
class Heartbeat {
public:
    Heartbeat();
    [[nodiscard]] int ticks() const { return m_ticks; }

private:
    QTimer m_timer;
    int m_ticks = 0;
};

} // namespace tunedeck::test
