#include "Tests/Helpers/Test.h"
#include "Tests/Helpers/TestServer.h"
#include "Tests/Helpers/Update/Signing.h"
#include "TunedeckCore/Update/UpdateCheck.h"
#include "TunedeckCore/Update/UpdateFeed.h"

namespace tunedeck::test {

namespace {

const char* const goodFeed = R"({"latest":{"version":"1.4.1","url":"https://x.example/a.zip","sha256":"AB"}})";

const UpdateCheck upToDate{UpdateCheck::UpToDate{}};

UpdateCheck failed(const char* message) {
    return {UpdateCheck::Failed{QString::fromUtf8(message)}};
}

/// A server with a feed and its signature, fetched with the real update helper.
class UpdateFeedTest : public testing::Test {
protected:
    void publish(const QByteArray& feed) {
        server.on("GET /download/appcast.json", behave::answer(200, feed));
        server.on("GET /download/appcast.json.sig", behave::answer(200, key.sign(feed) + "\n"));
    }

    UpdateCheck check(const char* current = "1.4.0", SystemVersion system = {14, 1, 3}) {
        const UpdateFeed feed{.url = server.url("/download/appcast.json"),
                              .publicKey = key.publicKey(),
                              .fetch = UpdateFeed::download(Downloader(helper)),
                              .helper = verifier};
        return runToEnd(feed.check(QString::fromLatin1(current), system, {}));
    }

    TestServer server;
    SigningKey key;
    QString helper = QStringLiteral(TUNEDECK_UPDATE);
    QString verifier = helper;
};

} // namespace

TEST_F(UpdateFeedTest, FindsANewerRelease) {
    publish(R"({"latest":{"version":"1.4.1","min_macos":"14.1","url":"u","sha256":"AB","size":5000000000,"notes":"N",
                "published_at":"p","dmg_url":"d","new":[1]}})");
    const UpdateCheck found = check();
    const auto* available = std::get_if<UpdateCheck::Available>(&found.value);
    ASSERT_TRUE(available);
    EXPECT_EQ(available->release,
              (Release{u"1.4.1"_s, u"14.1"_s, u"u"_s, u"AB"_s, 5'000'000'000, u"p"_s, u"N"_s, u"d"_s}));
    const auto requests = server.requests();
    ASSERT_EQ(requests.size(), 2);
    EXPECT_EQ(requests[0].target, "/download/appcast.json") << "the feed is fetched first";
    EXPECT_EQ(requests[1].target, "/download/appcast.json.sig");
    EXPECT_TRUE(requests[0].headers.at("cache-control").contains("no-cache"));
}

TEST_F(UpdateFeedTest, ComparesVersionsByPrecedence) {
    publish(goodFeed);
    EXPECT_EQ(check("1.4.1"), upToDate);
    EXPECT_NE(check("1.4.1-beta.1"), upToDate);
    EXPECT_EQ(check("1.4"), failed("Unreadable version in the update feed."));
    publish(R"({"latest":{"version":"one","url":"u","sha256":""}})");
    EXPECT_EQ(check(), failed("Unreadable version in the update feed."));
}

TEST_F(UpdateFeedTest, ReportsTheSystemThatAReleaseRequires) {
    publish(R"({"latest":{"version":"1.5.0","minMacos":"14.2","url":"u","sha256":""}})");
    EXPECT_EQ(check("1.4.0", {14, 1, 3}), failed("Tunedeck 1.5.0 needs macOS 14.2 or later."));
    EXPECT_NE(check("1.4.0", {14, 2, 0}), failed("Tunedeck 1.5.0 needs macOS 14.2 or later."));
    EXPECT_EQ(check("1.5.0", {1, 0, 0}), upToDate) << "only matters for a newer release";
}

TEST(UpdateFeedSystem, ComparesTheMinimumByComponents) {
    const SystemVersion system{14, 1, 3};
    for (const char* met : {"", "abc", "14", "14.1.3", "14.1.3.9", "14.x", "..14..1", "13.99", "14. 2", "+14"}) {
        EXPECT_TRUE(UpdateFeed::satisfies(system, QString::fromLatin1(met))) << met;
    }
    for (const char* unmet : {"15", "14.2", "14.1.4", "14.10", "14.99999999999"}) {
        EXPECT_FALSE(UpdateFeed::satisfies(system, QString::fromLatin1(unmet))) << unmet;
    }
}

TEST_F(UpdateFeedTest, RejectsFeedsWithoutAValidSignature) {
    publish(goodFeed);
    const UpdateCheck unsignedFeed = failed("The update feed isn't signed by Tunedeck.");
    server.on("GET /download/appcast.json", behave::answer(200, QByteArray(goodFeed) + " "));
    EXPECT_EQ(check(), unsignedFeed) << "an added space";
    server.on("GET /download/appcast.json", behave::answer(200, "not JSON"));
    EXPECT_EQ(check(), unsignedFeed) << "verified before it is parsed";
    publish(R"({"latest":{"version":"2","url":"u","sha256":"s","size":"1"}})");
    EXPECT_EQ(check(), failed("Unreadable document: \"latest.size\" expected an integer, found text."));
    publish(goodFeed);
    server.on("GET /download/appcast.json.sig", behave::answer(200, "\xef\xbb\xbf" + key.sign(goodFeed)));
    EXPECT_EQ(check(), unsignedFeed) << "a byte order mark isn't white space";
    publish(goodFeed);
    verifier = u"/bin/false"_s;
    EXPECT_EQ(check(), failed("The helper program /bin/false ended unexpectedly."));
}

TEST_F(UpdateFeedTest, WritesNoFilesThatAKilledCheckWouldLeave) {
    publish(goodFeed);
    const auto folder = qgetenv("TMPDIR");
    qputenv("TMPDIR", "/proc/self"); // where nobody can create files
    EXPECT_TRUE(std::holds_alternative<UpdateCheck::Available>(check().value));
    folder.isEmpty() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", folder);
}

TEST_F(UpdateFeedTest, A404MeansUpToDateAndOtherFailuresAreReported) {
    EXPECT_EQ(check(), upToDate) << "no feed";
    publish(goodFeed);
    server.on("GET /download/appcast.json.sig", behave::answer(404, ""));
    EXPECT_EQ(check(), upToDate);
    for (const int status : {204, 304, 500}) {
        server.on("GET /download/appcast.json", behave::raw("HTTP/1.1 " + QByteArray::number(status) + " X\r\n\r\n"));
        EXPECT_EQ(check(), failed(("The update server answered " + std::to_string(status) + ".").c_str()));
    }
    server.on("GET /download/appcast.json", behave::flood("HTTP/1.1 200 OK\r\n\r\n", 1'100'000));
    EXPECT_EQ(check(), failed("The download exceeds its size limit."));
    server.stop();
    EXPECT_TRUE(std::holds_alternative<UpdateCheck::Failed>(check().value));
}

} // namespace tunedeck::test
