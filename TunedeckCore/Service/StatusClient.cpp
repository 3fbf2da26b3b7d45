#include "TunedeckCore/Service/StatusClient.h"

#include "TunedeckCore/Service/ServiceCall.h"

namespace tunedeck {

QCoro::Task<std::optional<ServiceStatus>> StatusClient::fetch(std::stop_token stop) const {
    return service::fetchDocument<ServiceStatus>({.method = HttpMethod::Get,
                                                  .url = url ? *url : service::resource({}, "local/status"),
                                                  .timeout = std::chrono::seconds(2)},
                                                 std::move(stop));
}

} // namespace tunedeck
