#include "TunedeckCore/Service/LinksClient.h"

#include "TunedeckCore/Service/ServiceCall.h"
#include "TunedeckCore/Support/Json/Parse.h"
#include "TunedeckCore/Support/Json/Record.h"
#include "TunedeckCore/Support/Json/Value.h"

#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;

using Failure = LinksClient::Failure;

namespace {

struct LinkList {
    std::vector<AssistantLink> links;

    static constexpr auto members = json::members<&LinkList::links>;
};

/// Fails for any status but 200 to 299.
QCoro::Task<LinksClient::Result<HttpReply>> send(HttpRequest request, std::stop_token stop) {
    const auto reply = co_await sendLocal(request, stop);
    if (!reply) {
        co_return std::unexpected(Failure{.message = service::sentence(reply.error())});
    }
    if (reply->status < 200 || reply->status > 299) {
        co_return std::unexpected(Failure::from(reply->status, reply->body));
    }
    co_return *reply;
}

template<class Record>
QCoro::Task<LinksClient::Result<Record>> receive(HttpRequest request, std::stop_token stop) {
    const auto reply = co_await send(request, stop);
    if (!reply) {
        co_return std::unexpected(reply.error());
    }
    auto record = json::decode<Record>(reply->body, json::Keys::AsWritten);
    if (!record) {
        co_return std::unexpected(Failure{.message = service::unexpectedReply()});
    }
    co_return std::move(*record);
}

QCoro::Task<LinksClient::Result<std::vector<AssistantLink>>> receiveList(HttpRequest request, std::stop_token stop) {
    auto list = co_await receive<LinkList>(request, stop);
    if (!list) {
        co_return std::unexpected(list.error());
    }
    co_return std::move(list->links);
}

QCoro::Task<LinksClient::Result<void>> receiveNothing(HttpRequest request, std::stop_token stop) {
    const auto reply = co_await send(request, stop);
    if (!reply) {
        co_return std::unexpected(reply.error());
    }
    co_return LinksClient::Result<void>();
}

template<class T>
QCoro::Task<LinksClient::Result<T>> refuse() {
    co_return std::unexpected(Failure{.message = service::unexpectedReply()});
}

HttpRequest request(const LinksClient& client, HttpMethod method, const QByteArray& path) {
    return {.method = method,
            .url = service::resource(client.baseURL, path),
            .timeout = std::chrono::seconds(30),
            .limits = service::shortReply};
}

/// The path of one link. Nothing for "", "." and "..": as a path component they name another resource, even
/// percent-encoded.
std::optional<QByteArray> pathOf(const QString& id) {
    if (id.isEmpty() || id == u"."_s || id == u".."_s) {
        return std::nullopt;
    }
    return "local/links/" + QUrl::toPercentEncoding(id);
}

} // namespace

Failure Failure::from(int status, const QByteArray& body) {
    const auto object = json::parseObject(body).value_or(json::Object());
    const auto code = object.text("code"_L1);
    if (code == u"telegram_not_configured"_s) {
        return {.message = u"Telegram isn't available yet."_s, .code = code};
    }
    return {.message = object.text("error"_L1).value_or(u"tunedeck answered %1."_s.arg(status)), .code = code};
}

QCoro::Task<LinksClient::Result<std::vector<AssistantLink>>> LinksClient::list(std::stop_token stop) const {
    auto listing = request(*this, HttpMethod::Get, "local/links");
    listing.limits = {};
    return receiveList(std::move(listing), std::move(stop));
}

QCoro::Task<LinksClient::Result<AssistantLink>> LinksClient::create(Assistant assistant, std::stop_token stop) const {
    auto creation = request(*this, HttpMethod::Post, "local/links");
    creation.json =
        json::compactText(json::Object{{u"kind"_s, info(assistant).rawValue}, {u"label"_s, info(assistant).name}});
    return receive<AssistantLink>(std::move(creation), std::move(stop));
}

QCoro::Task<LinksClient::Result<AssistantLink>> LinksClient::rotate(QString id, std::stop_token stop) const {
    const auto path = pathOf(id);
    return path ? receive<AssistantLink>(request(*this, HttpMethod::Post, *path + "/rotate"), std::move(stop))
                : refuse<AssistantLink>();
}

QCoro::Task<LinksClient::Result<void>> LinksClient::remove(QString id, std::stop_token stop) const {
    const auto path = pathOf(id);
    return path ? receiveNothing(request(*this, HttpMethod::Delete, *path), std::move(stop)) : refuse<void>();
}

} // namespace tunedeck
