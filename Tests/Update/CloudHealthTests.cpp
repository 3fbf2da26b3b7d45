#include "Tests/Helpers/Test.h"
#include "Tests/Helpers/TestServer.h"
#include "TunedeckCore/Service/CloudHealth.h"

#include <QElapsedTimer>

namespace tunedeck::test {

namespace {

const QByteArray healthy = R"({"status":"ok","version":"2","protocol":"3","agent":{"online":true,"last_seen":"t"}})";

/// A relay that behaves as told, asked through the real helper program.
class CloudHealthTest : public testing::Test {
protected:
    QCoro::Task<std::optional<CloudHealth>> ask(const QString& base, std::stop_token stop = {}) {
        return CloudHealth::fetch(base, Downloader(QStringLiteral(TUNEDECK_FETCH)), std::move(stop));
    }
    QString base(const QByteArray& path = {}) const { return server.url(path).toString(); }

    TestServer server;
};

} // namespace

TEST_F(CloudHealthTest, AsksBelowTheBaseWithOneSlash) {
    server.on("GET /health", behave::answer(200, healthy));
    server.on("GET /relay/health", behave::answer(200, healthy));
    for (const QString& url : {base(), base("/"), base("///"), u'/' + base("/"), base("/relay"), base("/relay//")}) {
        const auto health = runToEnd(ask(url));
        ASSERT_TRUE(health) << url.toStdString();
        EXPECT_EQ(health->protocol, u"3");
        EXPECT_EQ(health->agent->lastSeen, u"t");
    }
    for (const char* nonsense : {"", "/", "no address", "http://", "http://[::1", "file:///etc", "ftp://127.0.0.1"}) {
        EXPECT_FALSE(runToEnd(ask(QString::fromLatin1(nonsense)))) << nonsense;
    }
    EXPECT_EQ(server.requests().size(), 6);
}

TEST_F(CloudHealthTest, TakesNothingButAGoodAnswerWithinItsTime) {
    // Each second a byte: never silent for long, and never done.
    TestServer slow;
    slow.on("GET /health", behave::drip("HTTP/1.1 200 OK\r\nX: y\r\n", std::chrono::seconds(1)));
    QElapsedTimer watch;
    watch.start();
    const auto ending = endingOf(ask(slow.url().toString()));

    const QByteArray head = "HTTP/1.1 200 OK\r\nContent-Length: 4000\r\n\r\n";
    const std::vector<Behaviour> behaviours{
        behave::answer(204, healthy),
        behave::answer(404, healthy),
        behave::answer(500, healthy),
        behave::answer(200, ""),
        behave::answer(200, R"({"status":"ok","version":"2"})"),
        behave::raw("no HTTP at all\r\n\r\n"),
        behave::raw(head + healthy),
        behave::resetAfter(head + healthy),
        behave::flood("HTTP/1.1 200 OK\r\n\r\n", 2 * 1024 * 1024),
        behave::answer(302, healthy, "Location: file:///etc/passwd\r\n"),
    };
    for (std::size_t i = 0; i < behaviours.size(); ++i) {
        server.on("GET /health", behaviours[i]);
        EXPECT_FALSE(runToEnd(ask(base()))) << i;
    }
    server.stop();
    EXPECT_FALSE(runToEnd(ask(base()))) << "nothing listens";

    ASSERT_TRUE(runUntil([&] { return ending->isThere(); }));
    EXPECT_FALSE(*ending->value);
    EXPECT_GE(watch.elapsed(), 3900);
    EXPECT_LT(watch.elapsed(), 7000);
}

TEST_F(CloudHealthTest, EndsAtOnceWhenItIsStopped) {
    server.on("GET /health", behave::hang());
    std::stop_source source;
    const auto ending = endingOf(ask(base(), source.get_token()));
    ASSERT_TRUE(runUntil([&] { return server.open() == 1; }));
    source.request_stop();
    ASSERT_TRUE(ending->isThere());
    EXPECT_FALSE(*ending->value);
    EXPECT_TRUE(runUntil([&] { return server.open() == 0; })) << "the helper goes with it";
}

} // namespace tunedeck::test
