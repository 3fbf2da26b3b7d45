#pragma once

#include <coroutine>
#include <optional>
#include <stop_token>
#include <utility>

namespace tunedeck {

/// The building block of awaitable operations: `co_await wait.next()` suspends the coroutine until wake() is called
/// (returns true) or a stop is requested (returns false). It can be awaited repeatedly.
///
/// For one thread only. request_stop() resumes the coroutine synchronously, so that none is left suspended when its
/// owner is destroyed, even without an event loop. The coroutine may destroy this object when it is resumed.
class Wait {
public:
    explicit Wait(std::stop_token stop) : m_stop(std::move(stop)) {}
    ~Wait() = default;
    Wait(const Wait&) = delete;
    Wait& operator=(const Wait&) = delete;

    /// Resumes the suspended coroutine; if there is none, the next co_await doesn't suspend.
    void wake() {
        m_woken = true;
        resume();
    }

    class Awaiter {
    public:
        explicit Awaiter(Wait* wait) : m_wait(wait) {}
        [[nodiscard]] bool await_ready() const { return m_wait->m_woken || m_wait->m_stop.stop_requested(); }
        void await_suspend(std::coroutine_handle<> waiting) const {
            m_wait->m_waiting = waiting;
            m_wait->m_onStop.emplace(m_wait->m_stop, Resume{m_wait});
        }
        bool await_resume() const {
            m_wait->m_onStop.reset();
            m_wait->m_woken = false;
            return !m_wait->m_stop.stop_requested();
        }

    private:
        Wait* m_wait;
    };

    [[nodiscard]] Awaiter next() { return Awaiter(this); }

private:
    struct Resume {
        Wait* wait;
        void operator()() const { wait->resume(); }
    };

    void resume() {
        if (const auto waiting = std::exchange(m_waiting, nullptr)) {
            waiting.resume();
        }
    }

    std::stop_token m_stop;
    std::coroutine_handle<> m_waiting;
    std::optional<std::stop_callback<Resume>> m_onStop;
    bool m_woken = false;
};

} // namespace tunedeck
