#include "Tests/Helpers/Test.h"
#include "Tests/Helpers/TestServer.h"
#include "TunedeckCore/Support/Http/Downloader.h"

#include <QFile>
#include <QTemporaryDir>

namespace tunedeck::test {

namespace {

class DownloadTest : public testing::Test {
protected:
    std::expected<int, QString> get(const QUrl& url, std::int64_t limit = 1'000'000) {
        DownloadRequest request{.url = url, .file = file, .limit = limit};
        return runToEnd(downloader.download(request,
                                            [this](std::int64_t received, std::optional<std::int64_t> total) {
                                                lastReceived = received;
                                                lastTotal = total;
                                            },
                                            {}));
    }

    QByteArray body() {
        QFile read(file);
        return read.open(QIODevice::ReadOnly) ? read.readAll() : QByteArray("unreadable");
    }

    TestServer server;
    QTemporaryDir folder;
    QString file = folder.filePath(u"body"_s);
    Downloader downloader{QStringLiteral(TUNEDECK_FETCH)};
    std::int64_t lastReceived = 0;
    std::optional<std::int64_t> lastTotal;
};

Behaviour redirect(const QByteArray& target) {
    return behave::answer(302, "elsewhere", "Location: " + target + "\r\n");
}

} // namespace

TEST_F(DownloadTest, KeepsTheBodyOfAGoodAnswerOnly) {
    const QByteArray bytes = QByteArray(300'000, 'x') + QByteArray("\0end", 4);
    server.on("GET /good", behave::answer(200, bytes));
    server.on("GET /gone", behave::answer(404, "sorry"));
    EXPECT_EQ(get(server.url("/good")), 200);
    EXPECT_EQ(body(), bytes);
    EXPECT_EQ(lastReceived > 0 && lastReceived <= bytes.size(), true);
    EXPECT_EQ(lastTotal, bytes.size());
    EXPECT_EQ(get(server.url("/gone")), 404);
    EXPECT_EQ(body(), "");
}

TEST_F(DownloadTest, FollowsSafeRedirectsAFewTimes) {
    server.on("GET /a", redirect(server.url("/b").toEncoded()));
    server.on("GET /b", redirect("/c"));
    server.on("GET /c", behave::answer(200, "there"));
    server.on("GET /round", redirect("/round"));
    server.on("GET /file", redirect("file:///etc/passwd"));
    EXPECT_EQ(get(server.url("/a")), 200);
    EXPECT_EQ(body(), "there");
    EXPECT_FALSE(get(server.url("/round")));
    EXPECT_FALSE(get(server.url("/file")));
    EXPECT_FALSE(get(QUrl(u"file:///etc/passwd"_s)));
    EXPECT_EQ(body(), "");
}

TEST_F(DownloadTest, TellsWhatWentWrongInTheTransport) {
    server.on("GET /reset", behave::resetAfter("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nabc"));
    server.on("GET /garbage", behave::raw("\x16\x03\x01 what?\r\n\r\n"));
    server.on("GET /large", behave::answer(200, QByteArray(2000, 'x')));
    for (const char* path : {"/reset", "/garbage"}) {
        const auto result = get(server.url(path));
        ASSERT_FALSE(result) << path;
        EXPECT_FALSE(result.error().isEmpty()) << path;
    }
    EXPECT_FALSE(get(server.url("/large"), 1999));
    EXPECT_EQ(get(server.url("/large"), 2000), 200);
    file = u"/nowhere/at/all"_s;
    EXPECT_TRUE(get(server.url("/large"), 2000).error().contains(u"No such file"));
    const auto noHelper = runToEnd(Downloader(u"/nowhere"_s).fetch(server.url("/large"), 1, {}, {}));
    EXPECT_FALSE(noHelper);
}

} // namespace tunedeck::test
