#include "Tests/Helpers/Test.h"
#include "Tests/Helpers/TestServer.h"
#include "TunedeckCore/Service/CloudHealth.h"

#include <QElapsedTimer>

namespace tunedeck::test {

namespace {

const QByteArray healthy = R"({"status":"ok","version":"2","protocol":"3","agent":{"online":true,"last_seen":"t"}})";

QCoro::Task<std::optional<CloudHealth>> fetch(const QString& base, const std::stop_token& stop = {}) {
    return CloudHealth::fetch(base, Downloader(u"" TUNEDECK_UPDATE ""_s), stop);
}

} // namespace

TEST(CloudHealthTest, RequestsHealthBelowTheBaseURL) {
    TestServer server;
    server.on("GET /health", behave::answer(200, healthy));
    server.on("GET /relay/health", behave::answer(200, healthy));
    const QString base = server.url().toString();
    for (const QString& url : {base, u'/' + base, base + u"/relay//"_s}) {
        const auto health = runToEnd(fetch(url));
        ASSERT_TRUE(health) << url.toStdString();
        EXPECT_EQ(health->protocol, u"3");
        EXPECT_EQ(health->agent->lastSeen, u"t");
    }
    const auto withoutScheme = u"localhost:%1"_s.arg(server.url().port());
    for (const auto& invalid : {QString(), u"no address"_s, u"http://"_s, u"file:///etc"_s, withoutScheme}) {
        EXPECT_FALSE(runToEnd(fetch(invalid))) << invalid.toStdString();
    }
    EXPECT_EQ(server.requests().size(), 3);
}

TEST(CloudHealthTest, RejectsOtherResponsesAndTimesOutAfterFourSeconds) {
    TestServer slow; // never stalls, never finishes
    slow.on("GET /health", behave::drip("HTTP/1.1 200 OK\r\nX: y\r\n", 1s));
    QElapsedTimer watch;
    watch.start();
    const auto ending = endingOf(fetch(slow.url().toString()));
    std::stop_source stop;
    const auto stopped = endingOf(fetch(slow.url().toString(), stop.get_token()));
    stop.request_stop();
    EXPECT_TRUE(stopped->isThere());
    TestServer server;
    for (const auto& behaviour : {behave::answer(404, healthy), behave::answer(200, "{}"),
                                  behave::answer(302, healthy, "Location: file:///etc/passwd\r\n"),
                                  behave::flood("HTTP/1.1 200 OK\r\n\r\n", 2 * 1024 * 1024)}) {
        server.on("GET /health", behaviour);
        EXPECT_FALSE(runToEnd(fetch(server.url().toString())));
    }
    ASSERT_TRUE(runUntil([&] { return ending->isThere(); }));
    EXPECT_FALSE(*ending->value);
    EXPECT_GE(watch.elapsed(), 3900);
    EXPECT_LT(watch.elapsed(), 7000);
}

} // namespace tunedeck::test
