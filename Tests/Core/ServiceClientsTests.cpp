#include "Tests/Helpers/StatusDocument.h"
#include "Tests/Helpers/Test.h"
#include "Tests/Helpers/TestServer.h"
#include "TunedeckCore/Service/Assistants.h"
#include "TunedeckCore/Service/LibraryClient.h"
#include "TunedeckCore/Service/LinksClient.h"
#include "TunedeckCore/Service/StatusClient.h"
#include "TunedeckCore/Service/ToolboxClient.h"
#include "TunedeckCore/Support/Async/Clock.h"

#include <QRegularExpression>

#include <functional>
#include <type_traits>
#include <vector>

namespace tunedeck::test {
namespace {

using namespace behave;
using Url = std::optional<QUrl>;
using Outcome = QCoro::Task<QString>;

const QString notRunning = u"tunedeck isn't running."_s;
const QString unexpected = u"Unexpected reply from tunedeck."_s;
const QString sorry = u"tunedeck answered 500."_s;
const QString nothing = u"nothing"_s;
const QString done = u"done"_s;

QString textOf(const auto& result) {
    if constexpr (requires { result.ok; }) {
        return result.ok ? done : result.error.value_or(nothing);
    } else if constexpr (requires { result.error().message; }) {
        return result ? done : result.error().message;
    } else {
        return result ? done : nothing;
    }
}

/// The result of a client's operation as text.
template<class Client, auto Operation, class... Arguments>
Outcome outcomeOf(Url base, std::stop_token stop, Arguments... arguments) {
    Client client{base};
    if constexpr (std::is_same_v<Client, StatusClient>) {
        client.url = base ? Url(base->resolved(QUrl(u"/local/status"_s))) : Url();
    }
    const auto result = co_await (client.*Operation)(arguments..., stop);
    co_return textOf(result);
}

constexpr auto status = outcomeOf<StatusClient, &StatusClient::fetch>;
constexpr auto report = outcomeOf<ToolboxClient, &ToolboxClient::fetch>;
constexpr auto install = outcomeOf<ToolboxClient, &ToolboxClient::install>;
constexpr auto list = outcomeOf<LinksClient, &LinksClient::list>;

/// A client call: its request and its results, as text, by kind of response.
struct Call {
    QByteArray route;
    std::function<Outcome(Url, std::stop_token)> run;
    QByteArray body;                   ///< of the request
    int status;                        ///< of a valid response
    QByteArray answer;                 ///< body of a valid response
    QString unreachable;               ///< result without a response
    QString undecodable;               ///< result for an invalid body
    QString failed;                    ///< result for status 500
    std::chrono::seconds timeout = 0s; ///< if it is short enough for a test
};

std::vector<Call> calls() {
    using namespace std::placeholders;
    using Library = LibraryClient;
    using Links = LinksClient;
    const QByteArray tools = R"({"tools": [], "venvs": [], "installing": false})";
    const QByteArray link = R"({"id": "l/1", "kind": "shortcut", "paired": null, "more": 1})";
    const auto restore = std::bind(outcomeOf<Library, &Library::restore, QString>, _1, _2, u"v\"7 é\n"_s);
    const auto create = std::bind(outcomeOf<Links, &Links::create, Assistant>, _1, _2, Assistant::iphone);
    const auto rotate = std::bind(outcomeOf<Links, &Links::rotate, QString>, _1, _2, u"l/1"_s);
    const auto remove = std::bind(outcomeOf<Links, &Links::remove, QString>, _1, _2, u"l/1"_s);
    std::vector<Call> all{
        {"GET /local/status", status, "", 200, statusDocument(), nothing, nothing, nothing, 2s},
        {"GET /local/toolbox", report, "", 200, tools, nothing, nothing, nothing, 3s},
        {"POST /local/toolbox/install", install, "", 202, "", nothing, done, nothing},
        {"GET /local/links", list, "", 200, R"({"links": [)" + link + "]}", notRunning, unexpected, sorry},
        {"POST /local/links", create, R"({"kind":"shortcut","label":"iPhone"})", 201, link, notRunning, unexpected,
         sorry},
        {"POST /local/links/l%2F1/rotate", rotate, "", 200, link, notRunning, unexpected, sorry},
        {"DELETE /local/links/l%2F1", remove, "", 200, "", notRunning, done, sorry},
    };
    const auto action = [&](const QByteArray& path, auto run, const QByteArray& body) {
        all.push_back(
            {"POST /local/rekordbox/" + path, run, body, 200, R"({"ok": true})", notRunning, unexpected, done});
    };
    action("restore", restore, "{\"version\":\"v\\\"7 é\\n\"}");
    action("apply", outcomeOf<Library, &Library::applyNow>, "{}");
    action("baseline", outcomeOf<Library, &Library::takeBaseline>, "{}");
    action("retry", outcomeOf<Library, &Library::retryFailed>, "{}");
    action("dismiss", outcomeOf<Library, &Library::dismissFailed>, "{}");
    return all;
}

TEST(ServiceClients, SendOneRequestToTheCurrentPort) {
    for (const auto& call : calls()) {
        SCOPED_TRACE(call.route.constData());
        const TemporaryHome home;
        TestServer first;
        TestServer second;
        for (auto* server : {&first, &second}) {
            server->on(call.route, answer(call.status, call.answer));
            home.write(u".tunedeck/runtime.json"_s, "{\"port\": " + QByteArray::number(server->port()) + '}');
            EXPECT_EQ(runToEnd(call.run({}, {})), done);
        }
        EXPECT_EQ(runToEnd(call.run(first.url(), {})), done); // the file names the second
        EXPECT_EQ(first.connections(), 2);
        EXPECT_EQ(second.connections(), 1);
        for (const auto& request : first.requests()) {
            EXPECT_EQ(request.method + ' ' + request.target, call.route);
            EXPECT_EQ(request.body, call.body);
            EXPECT_EQ(request.headers.contains("content-type"), !call.body.isEmpty());
        }
    }
}

TEST(ServiceClients, ReportEachKindOfFailureAfterOneAttempt) {
    for (const auto& call : calls()) {
        const std::vector<std::pair<Behaviour, QString>> responses{
            {raw(""), call.unreachable},
            {raw("HTTP/1.1 " + QByteArray::number(call.status) + " Said\r\nContent-Length: 900\r\n\r\n" + call.answer),
             call.unreachable},
            {answer(call.status, "[1, true]"), call.undecodable},
            {answer(call.status, "{}"), call.undecodable},
            {answer(500, call.answer), call.failed},
        };
        TestServer server;
        int made = 0;
        for (const auto& [behaviour, words] : responses) {
            server.on(call.route, behaviour);
            EXPECT_EQ(runToEnd(call.run(server.url(), {})), words) << call.route.toStdString() << ", response " << made;
            EXPECT_EQ(server.connections(), ++made);
        }
        server.stop();
        EXPECT_EQ(runToEnd(call.run(server.url(), {})), call.unreachable) << call.route.toStdString();
    }
}

TEST(ServiceClients, TimeOutAndStopAtOnce) {
    TestServer server;
    server.on("*", hang());
    std::stop_source stop;
    const auto all = calls();
    std::vector<std::shared_ptr<Ending<QString>>> endings;
    const SystemClock clock;
    const auto start = clock.elapsed();
    for (const auto& call : all) {
        endings.push_back(endingOf(call.run(server.url(), stop.get_token())));
    }
    for (const std::size_t i : {0U, 1U}) { // the others take longer
        ASSERT_TRUE(runUntil([&] { return endings[i]->isThere(); }));
        EXPECT_GE(clock.elapsed() - start, all[i].timeout);
        EXPECT_LE(clock.elapsed() - start, all[i].timeout + 900ms);
    }
    for (std::size_t i = 2; i < all.size(); ++i) {
        EXPECT_FALSE(endings[i]->isThere()) << all[i].route.toStdString();
    }
    stop.request_stop(); // as a quit does; no event loop is needed
    for (std::size_t i = 0; i < all.size(); ++i) {
        EXPECT_EQ(endings[i]->value, all[i].unreachable) << all[i].route.toStdString();
    }
}

TEST(ServiceClients, AcceptOnlyTheirStatusCodes) {
    TestServer server;
    const auto all = calls();
    for (const int code : {200, 202, 206, 300, 404}) {
        const auto isDone = [&](const Call& call) {
            server.on("*", answer(code, call.answer));
            return runToEnd(call.run(server.url(), {})) == done;
        };
        EXPECT_EQ(isDone(all[0]), code == 200) << code;
        EXPECT_EQ(isDone(all[1]), code == 200) << code;
        EXPECT_EQ(isDone(all[2]), code == 202) << code;
        EXPECT_EQ(isDone(all[3]), code < 300) << code;
    }
}

TEST(LibraryClient, ReportsRefusalsAndInvalidReplies) {
    TestServer server;
    const auto reply = [&](const QByteArray& body) {
        server.on("POST /local/rekordbox/apply", answer(409, body));
        return runToEnd(LibraryClient{server.url()}.applyNow());
    };
    EXPECT_EQ(reply(R"({"ok": false, "error": "Rekordbox is open.", "message": null, "version": "7"})"),
              (LibraryClient::Reply{.ok = false, .error = u"Rekordbox is open."_s, .version = u"7"_s}));
    for (const auto* body : {"", R"({"ok": 1})", R"({"ok": true, "error": 5})"}) {
        EXPECT_EQ(reply(body), (LibraryClient::Reply{.ok = false, .error = unexpected})) << body;
    }
}

TEST(LinksClient, NeverRequestsAnotherPath) {
    TestServer server;
    server.on("*", answer(200, R"({"id": "i", "kind": "k"})"));
    const auto nonsense = LinksClient::Failure{.message = unexpected};
    const LinksClient client{server.url()};
    for (const auto& id : {u""_s, u"."_s, u".."_s}) {
        EXPECT_EQ(runToEnd(client.rotate(id)), std::unexpected(nonsense));
        EXPECT_FALSE(runToEnd(client.remove(id)));
    }
    ASSERT_EQ(server.connections(), 0);
    const QRegularExpression onePath(u"^/local/links/([A-Za-z0-9._~%-]+)(/rotate)?$"_s);
    for (const auto& id : {u"../rekordbox/apply"_s, u"%2E%2E"_s, u"a?b#c"_s, u"a b\r\nX: y"_s, u"é"_s, u"..."_s}) {
        EXPECT_TRUE(runToEnd(client.rotate(id)));
        EXPECT_TRUE(runToEnd(client.remove(id)));
        for (const auto& request : server.requests().last(2)) {
            const auto match = onePath.match(QString::fromLatin1(request.target));
            EXPECT_EQ(QUrl::fromPercentEncoding(match.captured(1).toLatin1()), id) << request.target.toStdString();
            EXPECT_EQ(match.captured(2).isEmpty(), request.method == "DELETE");
        }
    }
    server.on("*", answer(204, {}));
    EXPECT_TRUE(runToEnd(client.remove(u"a"_s)));
}

TEST(LinksClient, ReadsErrorResponses) {
    const auto from = [](const QByteArray& body) { return LinksClient::Failure::from(503, body); };
    using Failure = LinksClient::Failure;
    const auto telegram = u"telegram_not_configured"_s;
    EXPECT_EQ(from(R"({"code": "telegram_not_configured", "error": 5})"),
              (Failure{u"Telegram isn't available yet."_s, telegram}));
    EXPECT_EQ(from(R"({"error": "No room.", "code": "full"})"), (Failure{u"No room."_s, u"full"_s}));
    for (const auto* body : {"", R"({"error": 7})", R"([{"error": "x"}])"}) {
        EXPECT_EQ(from(body), (Failure{u"tunedeck answered 503."_s})) << body;
    }
}

} // namespace
} // namespace tunedeck::test
