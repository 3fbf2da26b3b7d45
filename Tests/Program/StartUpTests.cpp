#include "Tests/Helpers/StatusDocument.h"
#include "Tests/Helpers/TestServer.h"
#include "Tests/Peers/NotificationServer.h"
#include "Tests/Program/Journey.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <signal.h>

#include <algorithm>
#include <utility>

namespace tunedeck::test {

namespace {

const QByteArray status =
    statusDocument(R"("cloud":{"enabled":true,"base_url":"https://x.example","registered":true})");

/// The test acts as the service. The first run is already done.
class StartUpJourney : public Journey {
protected:
    void prepare() override {
        removeServiceProgram();
        writeInHome(u".tunedeck/settings.json"_s, R"({"onboarded": true})");
    }

    /// Makes the service unreachable, so that the application waits for it.
    void stopService() {
        service.stop();
        publishServicePort(service.port());
    }

    /// Ends the application with a signal, and returns the milliseconds that it needed.
    qint64 terminate(int signal) {
        QElapsedTimer time;
        time.start();
        ::kill(static_cast<pid_t>(application.processId()), signal);
        EXPECT_TRUE(application.waitForFinished());
        EXPECT_EQ(application.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(application.exitCode(), 0);
        return time.elapsed();
    }

    TestServer service;
};

TEST_F(StartUpJourney, TerminatesWithinHalfASecondInEveryStep) {
    const auto answer = behave::answer(200, status);
    const struct {
        const char* name;
        Behaviour statusReply;
        QByteArray lastRequest; ///< terminated once it arrived
        bool isWindowOpen = false;
    } steps[]{
        {"waiting for the status", behave::hang(), "/local/status"},
        {"waiting for the links", answer, "/local/links"},
        {"waiting for the tools with the window open", answer, "/local/toolbox", true},
        {"between two attempts to reach the service", behave::answer(503, ""), "/local/status"},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.name);
        qint64 fastest = 1'000'000;
        for (int attempt = 0; attempt < 3 && fastest >= 500; ++attempt) { // a busy machine may delay one
            TestServer hanging;
            hanging.on("GET /local/status", step.statusReply);
            hanging.on("*", behave::hang());
            publishServicePort(hanging.port());
            start();
            ASSERT_TRUE(!step.isWindowOpen || run().status == 0);
            ASSERT_TRUE(eventually([&] {
                const auto requests = hanging.requests();
                return std::ranges::any_of(requests, [&](const auto& each) { return each.target == step.lastRequest; });
            }));
            fastest = std::min(fastest, terminate(SIGTERM));
        }
        EXPECT_LT(fastest, 500);
    }
}

TEST_F(StartUpJourney, TerminatesDuringTheInstallationAndTheFirstRunWithoutLosingSettings) {
    const auto hung = hangProgram(u"systemctl"_s);
    writeBundle(bundle, "1.4.0");
    writeInHome(u".tunedeck/settings.json"_s, "{}");
    start();
    ASSERT_TRUE(eventually([&] { return hung() > 0; }));
    terminate(SIGTERM);
    EXPECT_TRUE(eventually([&] { return ::kill(hung(), 0) != 0; })) << "its child process still runs";

    removeServiceProgram();
    service.on("GET /local/status", behave::answer(200, status));
    service.on("*", behave::hang());
    publishServicePort(service.port());
    start();
    ASSERT_TRUE(opensWith(u"Install the tools"_s));
    ASSERT_TRUE(press(u"Continue"_s));
    ASSERT_TRUE(sees(u"Find Rekordbox"_s));
    ASSERT_TRUE(press(u"Continue"_s));
    ASSERT_TRUE(press(u"Claude"_s));
    ASSERT_TRUE(sees(u"Making your private link…"_s));
    terminate(SIGINT);
    EXPECT_EQ(read(u".tunedeck/settings.json"_s), "{}");
    start();
    EXPECT_TRUE(opensWith(u"Install the tools"_s)) << "the first run starts over";
}

TEST_F(StartUpJourney, RestartsAfterAnUpgradeOfItsBundleAndReportsAMissingOne) {
    stopService();
    start(); // no window yet, so its module isn't loaded
    const auto old = processes();
    auto upgrade = folder->filePath(u"upgrade/Tunedeck.app"_s);
    writeBundle(upgrade, "1.4.1", '!');
    ASSERT_TRUE(QDir(bundle).removeRecursively() && QDir().rename(upgrade, bundle));
    removeServiceProgram();
    EXPECT_TRUE(run({u"--checkup"_s}).output.contains("Tunedeck was updated or moved while it was running."));
    EXPECT_EQ(run().status, 0);
    ASSERT_TRUE(eventually([&] { return processes().size() == 1 && processes() != old && icons() == 1; }));
    EXPECT_TRUE(sees(u"Version 1.4.1"_s));
    quit();

    NotificationServer notifications({u"body"_s}, busAddress());
    start();
    const auto running = processes();
    ASSERT_TRUE(QDir().rename(bundle, upgrade)); // as if removed by the user
    std::swap(bundle, upgrade);
    EXPECT_EQ(run().status, 0);
    std::swap(bundle, upgrade);
    ASSERT_TRUE(eventually([&] { return !notifications.calls.empty(); }));
    EXPECT_TRUE(notifications.calls.front().body.contains(u"is missing"_s));
    EXPECT_EQ(application.state(), QProcess::Running);
    ASSERT_TRUE(QDir().rename(upgrade, bundle));
    EXPECT_EQ(processes(), running);
    EXPECT_TRUE(opensWith(u"Version 1.4.1"_s));
}

} // namespace

} // namespace tunedeck::test
