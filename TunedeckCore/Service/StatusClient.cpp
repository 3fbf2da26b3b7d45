#include "TunedeckCore/Service/StatusClient.h"

#include "TunedeckCore/Service/ServiceCall.h"

namespace tunedeck {

namespace {

HttpRequest requestTo(const std::optional<QUrl>& url) {
    return {.method = HttpMethod::Get,
            .url = url ? *url : service::resource({}, "local/status"),
            .timeout = std::chrono::seconds(2)};
}

} // namespace

QCoro::Task<StatusClient::Reply> StatusClient::request(std::stop_token stop) const {
    return service::requestDocument<ServiceStatus>(requestTo(url), std::move(stop));
}

QCoro::Task<std::optional<ServiceStatus>> StatusClient::fetch(std::stop_token stop) const {
    return service::fetchDocument<ServiceStatus>(requestTo(url), std::move(stop));
}

} // namespace tunedeck
