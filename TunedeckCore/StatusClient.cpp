#include "TunedeckCore/ServiceCall.h"
#include "TunedeckCore/ServiceStatus.h"

namespace tunedeck {

namespace {

QCoro::Task<std::optional<ServiceStatus>> fetchStatus(HttpRequest request, std::stop_token stop) {
    const auto reply = co_await sendLocal(request, stop);
    if (!reply || reply->status != 200) {
        co_return std::nullopt;
    }
    auto status = ServiceStatus::decode(reply->body);
    co_return status ? std::optional(std::move(*status)) : std::nullopt;
}

} // namespace

QCoro::Task<std::optional<ServiceStatus>> StatusClient::fetch(std::stop_token stop) const {
    return fetchStatus({.method = HttpMethod::Get,
                        .url = url ? *url : service::resource({}, "local/status"),
                        .timeout = std::chrono::seconds(2)},
                       std::move(stop));
}

} // namespace tunedeck
