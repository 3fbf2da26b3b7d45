#pragma once

#include "DemoService/World/StepContext.h"
#include "TunedeckCore/Support/Json/Members.h"

#include <QString>

#include <optional>

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

    static constexpr auto members =
        json::members<&Cloud::enabled, &Cloud::baseUrl, &Cloud::protocol, &Cloud::registered, &Cloud::connected>;
    static constexpr auto internalMembers = json::members<&Cloud::changeAt, &Cloud::unstable>;
};

} // namespace tunedeck::demo
