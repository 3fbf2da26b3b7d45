#include "TunedeckCore/Service/ToolboxClient.h"

#include "TunedeckCore/Service/ServiceCall.h"

namespace tunedeck {

namespace {

QCoro::Task<bool> requestInstallation(HttpRequest request, std::stop_token stop) {
    const auto reply = co_await sendLocal(request, stop);
    co_return reply && reply->status == 202;
}

} // namespace

QCoro::Task<std::optional<ToolboxReport>> ToolboxClient::fetch(std::stop_token stop) const {
    return service::fetchDocument<ToolboxReport>({.method = HttpMethod::Get,
                                                  .url = service::resource(baseURL, "local/toolbox"),
                                                  .timeout = std::chrono::seconds(3)},
                                                 std::move(stop));
}

QCoro::Task<bool> ToolboxClient::install(std::stop_token stop) const {
    return requestInstallation({.method = HttpMethod::Post,
                                .url = service::resource(baseURL, "local/toolbox/install"),
                                .timeout = std::chrono::seconds(10),
                                .limits = service::shortReply},
                               std::move(stop));
}

} // namespace tunedeck
