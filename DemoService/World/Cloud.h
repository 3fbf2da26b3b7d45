#pragma once

#include "DemoService/World/StepContext.h"

#include <QString>

#include <optional>
#include <tuple>

namespace tunedeck::demo {

/// The link to the cloud relay, through which requests arrive.
struct Cloud {
    bool enabled = true;
    QString baseUrl;
    std::optional<int> protocol;
    std::optional<bool> registered;
    std::optional<bool> connected; ///< absent until the first attempt has ended

    std::optional<Moment> changeAt; ///< when the connection is made or lost; none while it stays
    bool unstable = false;          ///< the connection is lost now and then

    /// Forgets the connection and makes it again 2 s later, as after a start of the service.
    void reconnect(Moment now);
    void advance(StepContext& context);
};

} // namespace tunedeck::demo

template<>
struct tunedeck::json::Members<tunedeck::demo::Cloud> {
    using Cloud = demo::Cloud;
    static constexpr auto list = std::tuple{
        member("enabled", &Cloud::enabled), member("base_url", &Cloud::baseUrl), member("protocol", &Cloud::protocol),
        member("registered", &Cloud::registered), member("connected", &Cloud::connected)};
    static constexpr auto internal =
        std::tuple{member("change_at", &Cloud::changeAt), member("unstable", &Cloud::unstable)};
};
