#pragma once

#include "DemoService/World/World.h"
#include "Tests/Soak/Trail.h"

#include <cstdint>
#include <string>

namespace tunedeck::soak {

/// Keeps a trail of the status documents that were served, with tabs between the parts of a line:
///
///     D JOB STATE PLAYLIST … | AT VERSION SUMMARY    from now on documents have this in them; after the bar the
///                                                    last applied change, "none", or nothing without a library
///     S TIME PORT GOOD     the document is about to be sent to that port; GOOD is 0 when it will not be usable
///     E TIME PORT          it was sent as a whole
class Served {
public:
    explicit Served(const Files& files) : m_trail(files.served()) {}

    void document(const demo::State& state);
    void sending(std::uint16_t port, bool good) const;
    void sent(std::uint16_t port) const;

private:
    Trail m_trail;
    std::string m_last;
};

} // namespace tunedeck::soak
