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
#include <ostream>
#include <type_traits>
#include <vector>

namespace tunedeck {
namespace {

using namespace test::behave;
using namespace test;
using Url = std::optional<QUrl>;
using Outcome = QCoro::Task<QString>;

const QString notRunning = u"tunedeck isn't running."_s;
const QString unexpected = u"Unexpected reply from tunedeck."_s;
const QString none = u"none"_s;
const QString no = u"no"_s;

QString textOf(const std::optional<ServiceStatus>& status) {
    return status ? status->version : none;
}

QString textOf(const std::optional<ToolboxReport>& report) {
    return report ? QString::number(report->all().size()) : none;
}

QString textOf(bool accepted) {
    return accepted ? u"accepted"_s : no;
}

QString textOf(const LibraryClient::Reply& reply) {
    return reply.ok ? reply.message.value_or(none) : reply.error.value_or(none);
}

QString textOf(const std::vector<AssistantLink>& links) {
    return QString::number(links.size());
}

QString textOf(const AssistantLink& link) {
    return link.id;
}

template<class T>
QString textOf(const LinksClient::Result<T>& result) {
    if constexpr (std::is_void_v<T>) {
        return result ? u"gone"_s : result.error().message;
    } else {
        return result ? textOf(*result) : result.error().message;
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
    const char* name;
    std::function<Outcome(Url, std::stop_token)> run;
    QByteArray route;
    QByteArray body;     ///< of the request
    int status;          ///< of a valid response
    QByteArray answer;   ///< body of a valid response
    QString good;        ///< result of a valid response
    QString unreachable; ///< without a response
    QString undecodable; ///< for an invalid body
    QString failed;      ///< for status 500
    std::chrono::seconds timeout;
};

void PrintTo(const Call& call, std::ostream* out) { // NOLINT(readability-identifier-naming): GoogleTest looks for it
    *out << call.name;
}

std::vector<Call> calls() {
    using namespace std::placeholders;
    using Library = LibraryClient;
    using Links = LinksClient;
    const QByteArray link = R"({"id": "l/1", "kind": "shortcut", "paired": null, "more": 1})";
    const QByteArray done = R"({"ok": true, "message": "Done.", "version": "7"})";
    const auto good = u"Done."_s;
    const auto sorry = u"tunedeck answered 500."_s;
    const auto id = u"l/1"_s;
    const auto restore = std::bind(outcomeOf<Library, &Library::restore, QString>, _1, _2, u"v\"7 é\n"_s);
    const auto create = std::bind(outcomeOf<Links, &Links::create, Assistant>, _1, _2, Assistant::iphone);
    const auto rotate = std::bind(outcomeOf<Links, &Links::rotate, QString>, _1, _2, id);
    const auto remove = std::bind(outcomeOf<Links, &Links::remove, QString>, _1, _2, id);
    std::vector<Call> all{
        {"Status", status, "GET /local/status", "", 200, statusDocument(), u"5.0"_s, none, none, none, 2s},
        {"Report", report, "GET /local/toolbox", "", 200,
         R"({"tools": [{"name": "n", "wanted": "1", "ready": true}], "venvs": [], "installing": false})", u"1"_s, none,
         none, none, 3s},
        {"Install", install, "POST /local/toolbox/install", "", 202, "", u"accepted"_s, no, u"accepted"_s, no, 10s},
        {"Restore", restore, "POST /local/rekordbox/restore", "{\"version\":\"v\\\"7 é\\n\"}", 200, done, good,
         notRunning, unexpected, good, 120s},
        {"List", list, "GET /local/links", "", 200, R"({"links": [)" + link + "]}", u"1"_s, notRunning, unexpected,
         sorry, 30s},
        {"Create", create, "POST /local/links", R"({"kind":"shortcut","label":"iPhone"})", 201, link, id, notRunning,
         unexpected, sorry, 30s},
        {"Rotate", rotate, "POST /local/links/l%2F1/rotate", "", 200, link, id, notRunning, unexpected, sorry, 30s},
        {"Remove", remove, "DELETE /local/links/l%2F1", "", 200, "", u"gone"_s, notRunning, u"gone"_s, sorry, 30s},
    };
    const auto action = [&](const char* name, auto run, const QByteArray& path) {
        all.push_back(
            {name, run, "POST /local/rekordbox/" + path, "{}", 200, done, good, notRunning, unexpected, good, 120s});
    };
    action("Apply", outcomeOf<Library, &Library::applyNow>, "apply");
    action("Baseline", outcomeOf<Library, &Library::takeBaseline>, "baseline");
    action("Retry", outcomeOf<Library, &Library::retryFailed>, "retry");
    action("Dismiss", outcomeOf<Library, &Library::dismissFailed>, "dismiss");
    return all;
}

class ServiceCall : public testing::TestWithParam<Call> {};

TEST_P(ServiceCall, SendsOneRequestToTheCurrentPort) {
    const auto& call = GetParam();
    const test::TemporaryHome home;
    const auto runtime = [&](const TestServer& server) {
        home.write(u".tunedeck/runtime.json"_s, "{\"port\": " + QByteArray::number(server.port()) + '}');
    };
    TestServer first;
    TestServer second;
    for (auto* server : {&first, &second}) {
        server->on(call.route, answer(call.status, call.answer));
        runtime(*server);
        EXPECT_EQ(runToEnd(call.run({}, {})), call.good);
    }
    EXPECT_EQ(runToEnd(call.run(first.url(), {})), call.good); // the file names the second
    EXPECT_EQ(first.connections(), 2);
    EXPECT_EQ(second.connections(), 1);
    for (const auto& request : first.requests()) {
        EXPECT_EQ(request.method + ' ' + request.target, call.route);
        EXPECT_EQ(request.body, call.body);
        EXPECT_EQ(request.headers.contains("content-type"), !call.body.isEmpty());
    }
}

TEST_P(ServiceCall, ReportsEachKindOfFailure) {
    const auto& call = GetParam();
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
        EXPECT_EQ(runToEnd(call.run(server.url(), {})), words) << "response " << made;
        EXPECT_EQ(server.connections(), ++made);
    }
    server.stop();
    EXPECT_EQ(runToEnd(call.run(server.url(), {})), call.unreachable);
}

INSTANTIATE_TEST_SUITE_P(Every, ServiceCall, testing::ValuesIn(calls()),
                         [](const auto& parameter) { return std::string(parameter.param.name); });

TEST(ServiceClients, TimeOutAndStopAtOnce) {
    TestServer server;
    server.on("*", hang());
    std::stop_source stop;
    const auto all = calls();
    std::vector<std::shared_ptr<test::Ending<QString>>> endings;
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
    for (std::size_t i = 0; i < all.size(); ++i) {
        EXPECT_EQ(endings[i]->isThere(), all[i].timeout <= 3s) << all[i].name;
    }
    stop.request_stop(); // as a quit does; no event loop is needed
    for (std::size_t i = 0; i < all.size(); ++i) {
        ASSERT_TRUE(endings[i]->isThere()) << all[i].name;
        EXPECT_EQ(*endings[i]->value, all[i].unreachable);
    }
    EXPECT_EQ(server.connections(), static_cast<int>(all.size()));
}

TEST(ServiceClients, AcceptOnlyTheirStatusCodes) {
    TestServer server;
    for (const int code : {200, 202, 206, 300, 404}) {
        server.on("GET /local/status", answer(code, statusDocument()));
        server.on("GET /local/toolbox", answer(code, R"({"tools": [], "venvs": [], "installing": false})"));
        server.on("POST /local/toolbox/install", answer(code, ""));
        server.on("GET /local/links", answer(code, R"({"links": []})"));
        const auto links = code < 300 ? u"0"_s : u"tunedeck answered %1."_s.arg(code);
        EXPECT_EQ(runToEnd(list(server.url(), {})), links);
        EXPECT_EQ(runToEnd(status(server.url(), {})) != none, code == 200) << code;
        EXPECT_EQ(runToEnd(report(server.url(), {})) != none, code == 200) << code;
        EXPECT_EQ(runToEnd(install(server.url(), {})) != no, code == 202) << code;
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
    for (const auto* id : {"", ".", ".."}) {
        const auto rotated = runToEnd(client.rotate(QString::fromLatin1(id)));
        ASSERT_FALSE(rotated);
        EXPECT_EQ(rotated.error(), nonsense);
        EXPECT_FALSE(runToEnd(client.remove(QString::fromLatin1(id))));
    }
    ASSERT_EQ(server.connections(), 0);
    const QRegularExpression onePath(u"^/local/links/([A-Za-z0-9._~%-]+)(/rotate)?$"_s);
    for (const auto& id : {u"../rekordbox/apply"_s, u"a/b"_s, u"..%2f.."_s, u"%2E%2E"_s, u"a?b#c"_s, u"a b\r\nX: y"_s,
                           u"é♫🇩🇪"_s, u"..."_s, u"\\..\\"_s, QString(QChar(0))}) {
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
    EXPECT_EQ(runToEnd(client.rotate(u"a"_s)).error(), nonsense);
}

TEST(LinksClient, ReadsErrorResponses) {
    const auto from = [](const QByteArray& body) { return LinksClient::Failure::from(503, body); };
    using Failure = LinksClient::Failure;
    const auto telegram = u"telegram_not_configured"_s;
    EXPECT_EQ(from(R"({"code": "telegram_not_configured", "error": 5})"),
              (Failure{u"Telegram isn't available yet."_s, telegram}));
    EXPECT_EQ(from(R"({"error": "No room.", "code": 7})"), (Failure{u"No room."_s}));
    EXPECT_EQ(from(R"({"error": "No room.", "code": "full"})"), (Failure{u"No room."_s, u"full"_s}));
    for (const auto* body : {"", "nonsense", "[]", "{}", "\"error\"", R"({"error": 7})", R"([{"error": "x"}])"}) {
        EXPECT_EQ(from(body), (Failure{u"tunedeck answered 503."_s})) << body;
    }
}

} // namespace
} // namespace tunedeck
