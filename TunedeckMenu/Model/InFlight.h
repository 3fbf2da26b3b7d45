#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace tunedeck {

/// Counts operations that are under way. Each holds a guard, which may outlive the counter.
class InFlight {
    struct State {
        int count = 0;
        std::function<void(bool busy)> onChange;
    };

public:
    /// Counts one operation until it is destroyed.
    class Guard {
    public:
        explicit Guard(std::shared_ptr<State> state) : m_state(std::move(state)) { change(+1); }
        Guard(Guard&&) = default;
        Guard& operator=(Guard&&) = delete;
        ~Guard() {
            if (m_state) {
                change(-1);
            }
        }

    private:
        void change(int by) {
            const bool wasBusy = m_state->count > 0;
            m_state->count += by;
            if (const bool busy = m_state->count > 0; busy != wasBusy && m_state->onChange) {
                m_state->onChange(busy);
            }
        }
        std::shared_ptr<State> m_state;
    };

    /// `onChange` is called when the first operation begins and when the last one ends.
    explicit InFlight(std::function<void(bool busy)> onChange = {}) { m_state->onChange = std::move(onChange); }
    ~InFlight() { m_state->onChange = nullptr; }
    InFlight(const InFlight&) = delete;
    InFlight& operator=(const InFlight&) = delete;

    [[nodiscard]] Guard begin() { return Guard(m_state); }
    [[nodiscard]] bool isBusy() const { return m_state->count > 0; }

private:
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace tunedeck
