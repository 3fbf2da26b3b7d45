#pragma once

#include "Tests/Soak/Trail.h"

#include <chrono>
#include <cstdint>
#include <functional>

namespace tunedeck::soak {

/// Watches the follow loop from outside, by the connections of the process, and notes one line for each of its rounds:
///
///     BEGIN END PORT SIZE
///
/// in the machine's monotonic time (ns), the port from which it asked the service (0: it got no connection), and the
/// size of notifications.log when the round was over. Whatever was announced in a round lies between two sizes.
class Rounds {
public:
    explicit Rounds(const Files& files);

    /// Does what makes the loop ask, and sees which connection comes of it.
    void begin(const std::function<void()>& wake);
    /// The loop has dealt with the answer.
    void end();

private:
    Files m_files;
    Trail m_trail;
    std::chrono::nanoseconds m_begin{};
    std::uint16_t m_port = 0;
};

} // namespace tunedeck::soak
