#pragma once

#include "DemoService/World/Turn.h"

#include <optional>
#include <string>

namespace tunedeck::demo {

/// The link to the cloud relay, through which requests come.
struct Cloud {
    bool enabled = true;
    std::string baseUrl;
    std::optional<int> protocol;
    std::optional<bool> registered;
    /// Not known until the first attempt has ended.
    std::optional<bool> connected;

    /// When the connection comes or goes; none when it stays.
    std::optional<Moment> changeAt;
    /// The connection is lost now and then.
    bool wavers = false;

    /// The service has just started: whether the relay can be reached shows a moment later.
    void reconnect(Moment now);
    void advance(Turn& turn);
    std::optional<Moment> nextEvent() const { return changeAt; }

    static void members(auto& self, auto& archive) {
        archive("enabled", self.enabled);
        archive("base_url", self.baseUrl);
        archive("protocol", self.protocol);
        archive("registered", self.registered);
        archive("connected", self.connected);
        archive.own("change_at", self.changeAt);
        archive.own("wavers", self.wavers);
    }
};

} // namespace tunedeck::demo
