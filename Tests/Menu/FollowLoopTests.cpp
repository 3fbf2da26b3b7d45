#include "Tests/Menu/MenuFixture.h"
#include "TunedeckMenu/Background/FollowLoop.h"

namespace tunedeck::test {

namespace {

class FollowLoopTest : public MenuTest {
protected:
    /// Lets the loop fetch once.
    void poll() {
        const auto fetches = results.size();
        if (fetches == 0) {
            loop.start();
        } else {
            clock.advance(3999ms);
            settle();
            EXPECT_EQ(results.size(), fetches) << "before 4 seconds have passed";
            clock.advance(1ms);
        }
        EXPECT_TRUE(comes([&] { return results.size() == fetches + 1 && clock.sleeping() == 1; }));
    }
    void pollWithJob(const QByteArray& state) {
        serveStatus(R"("recent_jobs":[{"job_id":"a","playlist":"P","message":"","state":")" + state + R"("}])");
        poll();
    }

    FakeNotificationCenter center;
    Notifier notifier{center, clock, home.path(u".tunedeck/notifications.log"_s)};
    std::vector<std::optional<QString>> results; ///< the version in each status, nothing for a failure
    FollowLoop loop{clock, services.status, notifier, [this](const std::optional<ServiceStatus>& status) {
                        results.push_back(status ? std::optional(status->version) : std::nullopt);
                    }};
};

} // namespace

TEST_F(FollowLoopTest, KeepsTheKnownJobsWhenAFetchFails) {
    pollWithJob("running");
    serve("GET /local/status", "{}", 500);
    poll();
    EXPECT_EQ(results, (decltype(results){u"5.0"_s, std::nullopt}));
    pollWithJob("running");
    EXPECT_TRUE(center.posted.empty());
    pollWithJob("done");
    ASSERT_EQ(center.posted.size(), 1U);
    EXPECT_EQ(center.posted[0].identifier, u"a-finished"_s);
}

TEST_F(FollowLoopTest, LogsWhyAStatusIsInvalidOnceUntilThatChanges) {
    static QStringList warnings;
    warnings.clear();
    const auto previous = qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtWarningMsg) {
            warnings << text.section(u": "_s, -1);
        }
    });
    const auto missing = u"\"recentJobs[0].jobId\" is missing."_s;
    const auto wrong = u"\"downloadDirWritable\" expected a boolean, found null."_s;
    const struct {
        QByteArray document;
        int status;
        QStringList logged;
    } polls[]{
        {statusDocument(), 200, {}},
        {statusDocument(R"("recent_jobs":[{}])"), 200, {missing}},
        {statusDocument(R"("recent_jobs":[{}])"), 200, {missing}},
        {"", 500, {missing}},
        {statusDocument(R"("recent_jobs":[{}])"), 200, {missing}},
        {statusDocument(R"("download_dir_writable":null)"), 200, {missing, wrong}},
        {statusDocument(), 200, {missing, wrong}},
        {statusDocument(R"("download_dir_writable":null)"), 200, {missing, wrong, wrong}},
    };
    for (const auto& each : polls) {
        serve("GET /local/status", each.document, each.status);
        poll();
        EXPECT_EQ(warnings.join(u'\n').toStdString(), each.logged.join(u'\n').toStdString());
    }
    qInstallMessageHandler(previous);
}

} // namespace tunedeck::test
