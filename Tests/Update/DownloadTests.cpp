#include "Tests/Helpers/Test.h"
#include "Tests/Helpers/TestServer.h"
#include "TunedeckCore/Support/Http/Downloader.h"

#include <QProcess>

#include <unistd.h>

namespace tunedeck::test {

namespace {

class DownloadTest : public testing::Test {
protected:
    std::expected<int, QString> get(const QUrl& url, std::int64_t limit = 1'000'000) {
        DownloadRequest request{.url = url, .file = file, .limit = limit, .timeout = timeout};
        return runToEnd(downloader.download(request,
                                            [this](std::int64_t received, std::optional<std::int64_t> total) {
                                                lastReceived = received;
                                                lastTotal = total;
                                            },
                                            {}));
    }

    QByteArray body() { return home.read(u"body"_s); }

    static Behaviour redirect(const QUrl& target) {
        return behave::answer(302, "elsewhere", "Location: " + target.toEncoded() + "\r\n");
    }

    TestServer server;
    TemporaryHome home;
    QString file = home.path(u"body"_s);
    Downloader downloader{QStringLiteral(TUNEDECK_UPDATE)};
    std::chrono::seconds timeout = 60s;
    std::int64_t lastReceived = 0;
    std::optional<std::int64_t> lastTotal;
};

/// A TLS server. Its certificate is the only one that the helper trusts, in a mount namespace.
class TlsDownloadTest : public DownloadTest {
protected:
    void SetUp() override {
        const QString unshare = geteuid() == 0 ? u"unshare -m"_s : u"unshare -rm"_s;
        if (QProcess::execute(u"sh"_s, {u"-c"_s, unshare + u" true"_s}) != 0) {
            GTEST_SKIP() << "mount namespaces aren't allowed here";
        }
        const auto script = u"exec %1 sh -c 'mount --bind %2/cert /etc/ssl/certs/ca-certificates.crt && "
                            "exec %3 \"$@\"' sh \"$@\""_s.arg(unshare, home.path(), QStringLiteral(TUNEDECK_UPDATE));
        downloader = Downloader(home.writeScript(u"helper"_s, script.toUtf8()));
        tls.setWorkingDirectory(home.path());
        tls.start(u"sh"_s, {u"-c"_s, u"openssl req -x509 -newkey ed25519 -nodes -keyout key -out cert -subj /CN=server "
                                     "-addext subjectAltName=IP:127.0.0.1 && "
                                     "exec openssl s_server -accept 127.0.0.1:0 -cert cert -key key -HTTP"_s});
        QByteArray output;
        while (!(output.contains("ACCEPT ") && output.endsWith('\n')) && tls.waitForReadyRead()) {
            output += tls.readAll();
        }
        secure = QUrl::fromEncoded("https://" + output.mid(output.indexOf("ACCEPT ") + 7).trimmed());
        ASSERT_GT(secure.port(), 0);
    }

    void TearDown() override {
        tls.kill();
        tls.waitForFinished();
    }

    QProcess tls;
    QUrl secure;
};

} // namespace

TEST_F(DownloadTest, KeepsTheBodyOfStatus200Only) {
    const QByteArray bytes = QByteArray(300'000, 'x') + QByteArray("\0end", 4);
    server.on("GET /good", behave::answer(200, bytes));
    server.on("GET /endless", behave::raw("HTTP/1.1 200 OK\r\n\r\nabc"));
    EXPECT_EQ(get(server.url("/good")), 200);
    EXPECT_EQ(body(), bytes);
    EXPECT_EQ(lastTotal, bytes.size());
    EXPECT_EQ(get(server.url("/endless")), 200);
    EXPECT_EQ(body(), "abc");
    EXPECT_EQ(lastReceived, 3);
    EXPECT_FALSE(lastTotal);
    EXPECT_EQ(server.requests().last().headers.at("user-agent"), "Tunedeck");
}

TEST_F(DownloadTest, FollowsTenRedirectsAndNoOtherProtocol) {
    server.on("GET /here", behave::answer(200, "here"));
    server.on("GET /start", redirect(QUrl(u"/here"_s)));
    server.on("GET /loop", redirect(QUrl(u"/loop"_s)));
    server.on("GET /file", redirect(QUrl(u"file:///etc/passwd"_s)));
    EXPECT_EQ(get(server.url("/start")), 200);
    EXPECT_EQ(body(), "here");
    EXPECT_FALSE(get(server.url("/loop")));
    EXPECT_EQ(server.requests().size(), 2 + 11);
    EXPECT_FALSE(get(server.url("/file")));
    EXPECT_FALSE(get(QUrl(u"file:///etc/passwd"_s)));
}

TEST_F(TlsDownloadTest, NeverFollowsARedirectFromHttpsToHttp) {
    const auto at = [this](const QString& path) { return secure.resolved(QUrl(path)); };
    home.write(u"ok"_s, "HTTP/1.1 200 OK\r\nContent-Length: 6\r\n\r\nsecure");
    home.write(u"same"_s, "HTTP/1.1 302 Found\r\nContent-Length: 0\r\nLocation: /ok\r\n\r\n");
    home.write(u"down"_s,
               "HTTP/1.1 302 Found\r\nContent-Length: 0\r\nLocation: " + server.url("/plain").toEncoded() + "\r\n\r\n");
    server.on("GET /plain", behave::answer(200, "plain"));
    server.on("GET /up", redirect(at(u"/same"_s)));
    server.on("GET /up-and-down", redirect(at(u"/down"_s)));
    EXPECT_EQ(get(server.url("/up")), 200);
    EXPECT_EQ(body(), "secure");
    for (const auto& url : {at(u"/down"_s), server.url("/up-and-down")}) {
        const auto result = get(url);
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error(), u"The server redirected to an insecure address.");
        EXPECT_EQ(body(), "");
    }
    EXPECT_EQ(server.requests().last().target, "/up-and-down") << "the plain address wasn't requested";
    downloader = Downloader(QStringLiteral(TUNEDECK_UPDATE));
    EXPECT_FALSE(get(at(u"/ok"_s))) << "an unknown certificate";
}

TEST_F(DownloadTest, EndsAtOnceOnAnotherStatusWhateverItsBodyDoes) {
    server.on("GET /announced", behave::hang("HTTP/1.1 404 X\r\nContent-Length: 5000000\r\n\r\nx"));
    server.on("GET /flood", behave::flood("HTTP/1.1 404 X\r\n\r\n", 5'000'000));
    server.on("GET /endless", behave::hang("HTTP/1.1 103 Early Hints\r\n\r\nHTTP/1.1 404 X\r\n\r\nx"));
    server.on("GET /redirect", behave::hang("HTTP/1.1 302 X\r\nLocation: /endless\r\n\r\nx"));
    for (const char* path : {"/announced", "/flood", "/endless", "/redirect"}) {
        EXPECT_EQ(get(server.url(path)), 404) << path;
    }
    EXPECT_EQ(body(), "");
}

TEST_F(DownloadTest, RejectsContradictoryLengths) {
    const auto lengths = [this](const QByteArray& headers) {
        server.on("GET /", behave::raw("HTTP/1.1 200 OK\r\n" + headers + "\r\nabcde"));
        return get(server.url("/")).has_value();
    };
    EXPECT_TRUE(lengths("Content-Length: 5\r\nContent-Length: 5\r\n"));
    for (const char* headers : {"Content-Length: 5\r\nContent-Length: 4\r\n", "Content-Length: 5, 4\r\n",
                                "Content-Length: 4\r\nX: y\r\ncontent-length: 5\r\n"}) {
        EXPECT_FALSE(lengths(headers)) << headers;
    }
}

TEST_F(DownloadTest, EveryTransferHasATotalTime) {
    timeout = 1s;
    server.on("GET /silent", behave::hang());
    server.on("GET /endless", behave::drip("HTTP/1.1 200 OK\r\n\r\nabc", 20ms));
    for (const char* path : {"/silent", "/endless"}) {
        EXPECT_EQ(get(server.url(path)), std::unexpected(u"The request timed out."_s)) << path;
    }
    timeout = 0s;
    EXPECT_FALSE(get(server.url("/silent")));
}

TEST_F(DownloadTest, ReportsTransportErrors) {
    server.on("GET /reset", behave::resetAfter("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nabc"));
    server.on("GET /large", behave::answer(200, QByteArray(2000, 'x')));
    server.on("GET /unknown", behave::raw("HTTP/1.1 200 OK\r\n\r\n" + QByteArray(2000, 'x')));
    const auto result = get(server.url("/reset"));
    ASSERT_FALSE(result);
    EXPECT_FALSE(result.error().isEmpty());
    for (const char* path : {"/large", "/unknown"}) {
        EXPECT_FALSE(get(server.url(path), 1999)) << path;
        EXPECT_EQ(get(server.url(path), 2000), 200) << path;
    }
    file = u"/nowhere/at/all"_s;
    EXPECT_TRUE(get(server.url("/large"), 2000).error().contains(u"No such file"));
    EXPECT_FALSE(runToEnd(Downloader(u"/nowhere"_s).fetch(server.url("/large"), 1, {}, {})));
}

TEST_F(DownloadTest, HelperDiesWithItsParent) {
    server.on("GET /", behave::hang()); // without progress, which would end the helper by SIGPIPE
    const auto command = [this](const QString& parent) {
        return QStringList{u"-c"_s, u"%1 fetch %2 100 60 %3; exit $?"_s.arg(QStringLiteral(TUNEDECK_UPDATE), parent,
                                                                            server.url("/").toString())};
    };
    QProcess parent;
    parent.start(u"sh"_s, command(u"$$"_s));
    ASSERT_TRUE(runUntil([this] { return server.open() == 1; }));
    parent.kill();
    EXPECT_TRUE(runUntil([this] { return server.open() == 0; }));
    parent.waitForFinished();
    EXPECT_EQ(QProcess::execute(u"sh"_s, command(u"1"_s)), 1) << "the parent was already dead";
    EXPECT_EQ(server.connections(), 1);
}

} // namespace tunedeck::test
