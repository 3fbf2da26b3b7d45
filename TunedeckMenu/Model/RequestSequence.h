#pragma once

#include <cstdint>

namespace tunedeck {

/// Detects stale replies when requests of one kind overlap: a reply is stale once a later request has been answered.
class RequestSequence {
public:
    /// The number of a new request; call it before sending.
    [[nodiscard]] std::uint64_t begin() { return ++m_begun; }
    /// Whether the reply to that request may be used. If so, replies to earlier requests become stale.
    [[nodiscard]] bool isCurrent(std::uint64_t request) {
        if (request < m_answered) {
            return false;
        }
        m_answered = request;
        return true;
    }
    /// Makes the replies to all requests in flight stale.
    void invalidate() { m_answered = begin(); }

private:
    std::uint64_t m_begun = 0;
    std::uint64_t m_answered = 0;
};

} // namespace tunedeck
