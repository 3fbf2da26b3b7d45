#include "TunedeckCore/Service/LibraryClient.h"

#include "TunedeckCore/Service/ServiceCall.h"
#include "TunedeckCore/Support/Json/Record.h"
#include "TunedeckCore/Support/Json/Value.h"

namespace tunedeck {

using namespace Qt::StringLiterals;

using Reply = LibraryClient::Reply;

namespace {

/// Accepts a reply regardless of its HTTP status.
QCoro::Task<Reply> send(HttpRequest request, std::stop_token stop) {
    const auto response = co_await sendLocal(request, stop);
    if (!response) {
        co_return Reply{.error = service::sentence(response.error())};
    }
    auto reply = json::decode<Reply>(response->body, json::Keys::AsWritten);
    if (!reply) {
        co_return Reply{.error = service::unexpectedReply()};
    }
    co_return std::move(*reply);
}

QCoro::Task<Reply> post(const std::optional<QUrl>& base, const QByteArray& action, const json::Object& body,
                        std::stop_token stop) {
    return send({.method = HttpMethod::Post,
                 .url = service::resource(base, "local/rekordbox/" + action),
                 .timeout = std::chrono::seconds(120),
                 .json = json::compactText(body),
                 .limits = service::shortReply},
                std::move(stop));
}

} // namespace

QCoro::Task<Reply> LibraryClient::restore(QString version, std::stop_token stop) const {
    return post(baseURL, "restore", {{u"version"_s, version}}, std::move(stop));
}

QCoro::Task<Reply> LibraryClient::applyNow(std::stop_token stop) const {
    return post(baseURL, "apply", {}, std::move(stop));
}

QCoro::Task<Reply> LibraryClient::takeBaseline(std::stop_token stop) const {
    return post(baseURL, "baseline", {}, std::move(stop));
}

QCoro::Task<Reply> LibraryClient::retryFailed(std::stop_token stop) const {
    return post(baseURL, "retry", {}, std::move(stop));
}

QCoro::Task<Reply> LibraryClient::dismissFailed(std::stop_token stop) const {
    return post(baseURL, "dismiss", {}, std::move(stop));
}

} // namespace tunedeck
