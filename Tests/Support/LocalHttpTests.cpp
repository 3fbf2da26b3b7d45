#include "Tests/Helpers/Descriptors.h"
#include "Tests/Helpers/Test.h"
#include "Tests/Helpers/TestServer.h"
#include "TunedeckCore/Support/Http/HttpReplyReader.h"
#include "TunedeckCore/Support/Http/LocalHttp.h"

#include <fcntl.h>

#include <vector>

namespace tunedeck::test {
namespace {

using namespace behave;
using enum HttpFailure;
using Outcome = std::expected<HttpReply, HttpFailure>;

/// "200 body", or the failure's number.
std::string textOf(const Outcome& outcome) {
    if (!outcome) {
        return "failure " + std::to_string(static_cast<int>(outcome.error()));
    }
    return std::to_string(outcome->status) + ' ' + outcome->body.toStdString();
}

std::string textOf(HttpFailure failure) {
    return textOf(Outcome(std::unexpected(failure)));
}

HttpRequest get(const QUrl& url, std::chrono::milliseconds timeout = 5s) {
    return {.method = HttpMethod::Get, .url = url, .timeout = timeout};
}

struct Misbehaviour {
    const char* name;
    Behaviour behaviour;
    std::string outcome;
};

const QByteArray ok = "HTTP/1.1 200 OK\r\n";
const QByteArray chunked = ok + "Transfer-Encoding: chunked\r\n\r\n";
constexpr std::int64_t hundredMegabytes = 100LL * 1024 * 1024;

std::vector<Misbehaviour> misbehaviours() {
    const QByteArray five = ok + "Content-Length: 5\r\n\r\n";
    return {
        {"ClosesAfterTheRequest", raw(""), textOf(BrokenOff)},
        {"ResetsABodyWithoutLength", resetAfter(ok + "\r\n1234"), textOf(BrokenOff)},
        {"ResetsAfterAWholeAnswer", resetAfter(five + "12345"), "200 12345"},
        {"StopsInTheBody", hang(five + "1234"), textOf(TimedOut)},
        {"DripsABody", drip(ok + "\r\n", 1ms), textOf(TimedOut)},
        {"SendsGarbage", raw(QByteArray("\x16\x03\x01\0\xff what?\r\n\r\n", 15)), textOf(Malformed)},
        {"SendsAStatusOfZero", raw("HTTP/1.1 000 No\r\nContent-Length: 0\r\n\r\n"), textOf(Malformed)},
        {"SendsAShortStatusUntilTheEnd", raw("HTTP/1.1 020 No\r\n\r\nbody"), textOf(Malformed)},
        {"SendsTwoLengths", raw(ok + "Content-Length: 5\r\nContent-Length: 6\r\n\r\n123456"), textOf(Malformed)},
        {"SendsNoLength", raw(ok + "\r\nuntil the end"), "200 until the end"},
        {"SendsChunks", hang(chunked + "3;a=b\r\nabc\r\n4\r\ndefg\r\n0\r\nX: y\r\n\r\n"), "200 abcdefg"},
        {"SendsInterimAnswers",
         hang("HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 103 Hints\r\nX: y\r\n\r\n" + five + "12345"), "200 12345"},
        {"SwitchesProtocols", raw("HTTP/1.1 101 Switching\r\n\r\n"), textOf(BrokenOff)},
        {"SendsAnEndlessHead", flood(ok + "X: ", hundredMegabytes), textOf(TooLarge)},
        {"SendsEndlessInterimAnswers", raw(QByteArray("HTTP/1.1 100 Continue\r\n\r\n").repeated(4000)),
         textOf(TooLarge)},
        {"SendsAnEndlessChunkLine", flood(chunked + "3;", hundredMegabytes), textOf(TooLarge)},
        {"Announces100Megabytes", hang(ok + "Content-Length: 104857600\r\n\r\n"), textOf(TooLarge)},
    };
}

TEST(LocalHttp, ReportsEachMisbehaviourAfterOneRequest) {
    for (const auto& [name, behaviour, outcome] : misbehaviours()) {
        SCOPED_TRACE(name);
        TestServer server;
        server.on("GET /it", behaviour);
        const auto before = nextDescriptor();
        const Heartbeat heart;
        const bool timesOut = outcome == textOf(TimedOut);
        EXPECT_EQ(textOf(runToEnd(sendLocal(get(server.url("/it"), timesOut ? 150ms : 20s), {}))), outcome);
        EXPECT_TRUE(!timesOut || heart.ticks() >= 5);
        EXPECT_TRUE(runUntil([&] { return server.open() == 0; }));
        EXPECT_EQ(nextDescriptor(), before);
        EXPECT_EQ(server.connections(), 1);
        EXPECT_EQ(server.requests().size(), 1);
    }
}

TEST(LocalHttp, ReceivesALargeBodyWithoutBlockingTheEventLoop) {
    TestServer server;
    server.on("GET /", flood(ok + "Content-Length: 104857600\r\n\r\n", hundredMegabytes));
    const Heartbeat heart;
    HttpRequest request = get(server.url("/"), 30s);
    request.limits.body = hundredMegabytes;
    const auto outcome = runToEnd(sendLocal(request, {}), 40s);
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->body.count('x'), hundredMegabytes);
    EXPECT_GE(heart.ticks(), 3);
}

TEST(LocalHttp, SendsTheRequestAsGiven) {
    TestServer server;
    server.on("*", answer(200, "{}"));
    runToEnd(sendLocal(get(server.url("/a%2Fb/%C3%A9%20?q=%26&r#not-this")), {}));
    runToEnd(sendLocal({.method = HttpMethod::Post, .url = server.url(), .timeout = 5s, .json = "{\"a\":1}"}, {}));
    runToEnd(sendLocal({.method = HttpMethod::Post, .url = server.url("/p"), .timeout = 5s}, {}));
    runToEnd(sendLocal({.method = HttpMethod::Delete, .url = server.url("/d"), .timeout = 5s}, {}));
    const auto requests = server.requests();
    ASSERT_EQ(requests.size(), 4);
    std::map<QByteArray, QByteArray> headers{{"host", "127.0.0.1:" + QByteArray::number(server.port())},
                                             {"connection", "close"}};
    EXPECT_EQ(requests[0].method + ' ' + requests[0].target, "GET /a%2Fb/%C3%A9%20?q=%26&r");
    EXPECT_EQ(requests[0].headers, headers);
    EXPECT_EQ(requests[3].method, "DELETE");
    headers["content-length"] = "0";
    EXPECT_EQ(requests[2].headers, headers);
    headers["content-length"] = "7";
    headers["content-type"] = "application/json";
    EXPECT_EQ(requests[1].method + ' ' + requests[1].target + requests[1].body, "POST /{\"a\":1}");
    EXPECT_EQ(requests[1].headers, headers);
}

TEST(LocalHttp, SendsALargeBodyUnlessThePeerRepliesEarly) {
    TestServer server;
    server.on("POST /whole", after(30ms, answer(200, "whole")));
    server.on("POST /early", answer(413, "too much"), TestServer::When::HeadCame);
    server.on("POST /cut", raw(ok + "\r\nno length"), TestServer::When::HeadCame);
    const QByteArray body(8 * 1024 * 1024, 'j');
    const auto post = [&](const QByteArray& path) {
        return textOf(runToEnd(
            sendLocal({.method = HttpMethod::Post, .url = server.url(path), .timeout = 10s, .json = body}, {})));
    };
    EXPECT_EQ(post("/whole"), "200 whole");
    EXPECT_EQ(server.requests()[0].body, body);
    EXPECT_EQ(post("/early"), "413 too much");
    EXPECT_EQ(post("/cut"), textOf(BrokenOff)); // the reset may have lost data
}

TEST(LocalHttp, AStopRequestEndsTheCallAtOnce) {
    TestServer server;
    server.on("GET /silent", hang());
    server.on("GET /begun", hang(ok + "Content-Length: 5\r\n\r\n12"));
    server.on("POST /deaf", hang(), TestServer::When::HeadCame);
    const QByteArray body(8 * 1024 * 1024, 'j');
    const auto before = nextDescriptor();
    for (const auto& request :
         {get(server.url("/silent")), get(server.url("/begun")),
          HttpRequest{.method = HttpMethod::Post, .url = server.url("/deaf"), .timeout = 5s, .json = body}}) {
        std::stop_source stop;
        const auto seen = server.requests().size();
        const auto ending = endingOf(sendLocal(request, stop.get_token()));
        ASSERT_TRUE(runUntil([&] { return server.requests().size() == seen + 1; }));
        runDueEvents();
        ASSERT_FALSE(ending->isThere());
        EXPECT_EQ(::fcntl(before, F_GETFD), FD_CLOEXEC) << "child processes inherit the socket";
        stop.request_stop(); // works without the event loop
        ASSERT_TRUE(ending->isThere());
        EXPECT_EQ(textOf(*ending->value), textOf(Cancelled));
        EXPECT_EQ(textOf(*endingOf(sendLocal(request, stop.get_token()))->value), textOf(Cancelled));
        EXPECT_EQ(nextDescriptor(), before);
    }
}

TEST(LocalHttp, ReachesOnlyThisMachineAndResolvesNoNames) {
    TestServer server;
    server.on("GET /", answer(200, "here"));
    const auto port = QString::number(server.port());
    for (const auto* host : {"http://127.0.0.1:%1/", "http://LOCALHOST:%1"}) {
        EXPECT_EQ(textOf(runToEnd(sendLocal(get(QUrl(QString::fromLatin1(host).arg(port))), {}))), "200 here") << host;
    }
    for (const auto* other :
         {"https://127.0.0.1:%1/", "http://tunedeck.invalid:%1/", "http://192.0.2.1:%1/", "http://[2001:db8::1]:%1/",
          "http://0.0.0.0:%1/", "http://127.0.0.1:99999/", "/local/status"}) {
        const auto ending = endingOf(sendLocal(get(QUrl(QString::fromLatin1(other).replace(u"%1"_s, port))), {}));
        ASSERT_TRUE(ending->isThere()) << other;
        EXPECT_EQ(textOf(*ending->value), textOf(Unreachable)) << other;
    }
    server.stop();
    EXPECT_EQ(textOf(runToEnd(sendLocal(get(server.url("/")), {}))), textOf(Unreachable));

    std::optional<TestServer> newer;
    try {
        newer.emplace("::1");
    } catch (const std::runtime_error&) {
        return; // no IPv6 here
    }
    newer->on("GET /", answer(200, "here too"));
    EXPECT_EQ(textOf(runToEnd(sendLocal(get(newer->url("/")), {}))), "200 here too");
    EXPECT_EQ(newer->requests().first().headers["host"], "[::1]:" + QByteArray::number(newer->port()));
}

TEST(HttpReplyReader, ReadsTheSameReplyFromPiecesOfAnySize) {
    const QByteArray text = "HTTP/1.1 100 Continue\r\nX: y\r\n\r\n" + chunked +
                            "3;a=\"b\"\r\nabc\r\nA\r\n0123456789\r\n0\r\nX: y\r\nZ: w\r\n\r\n";
    for (qsizetype piece = 1; piece <= text.size(); ++piece) {
        HttpReplyReader reader({});
        for (qsizetype at = 0; at < text.size(); at += piece) {
            ASSERT_FALSE(reader.isComplete());
            ASSERT_EQ(reader.feed(text.mid(at, piece)), std::nullopt);
        }
        ASSERT_TRUE(reader.isComplete()) << piece;
        EXPECT_EQ(textOf(reader.takeReply()), "200 abc0123456789");
    }
    EXPECT_EQ(HttpReplyReader({.body = 12}).feed(text), TooLarge);
    EXPECT_EQ(HttpReplyReader({.body = 12}).feed(ok + "\r\n" + QByteArray(13, 'x')), TooLarge);
    EXPECT_EQ(HttpReplyReader({.body = 12}).feed(ok + "Content-Length: 3000000000\r\n\r\nx"), TooLarge);
}

} // namespace
} // namespace tunedeck::test
