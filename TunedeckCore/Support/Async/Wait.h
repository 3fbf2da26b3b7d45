#pragma once

#include <coroutine>
#include <optional>
#include <stop_token>
#include <utility>

namespace tunedeck {

/// What the awaitable operations are made of: `co_await wait.next()` suspends one coroutine until wake() is called,
/// which gives true, or a stop is requested, which gives false; it may be awaited again and again.
///
/// Everything happens on one thread. A stop resumes the coroutine from inside request_stop(), so that nothing is left
/// suspended when an owner goes, with or without an event loop. Nothing here is touched after a resumption: the
/// coroutine may have ended and taken this object with it.
class Wait {
public:
    explicit Wait(std::stop_token stop) : m_stop(std::move(stop)) {}
    ~Wait() = default;
    Wait(const Wait&) = delete;
    Wait& operator=(const Wait&) = delete;

    /// Resumes the waiting coroutine; when there is none, the next co_await doesn't suspend.
    void wake() {
        m_woken = true;
        resume();
    }

    /// What next() gives to co_await.
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
