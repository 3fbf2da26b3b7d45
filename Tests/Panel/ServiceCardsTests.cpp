#include "Tests/Helpers/Test.h"
#include "Tests/Panel/Fixtures.h"

namespace tunedeck::test {

namespace {

QString lineWith(bool enabled, std::optional<bool> connected) {
    ServiceStatus status = goodStatus();
    status.cloud.enabled = enabled;
    status.cloud.connected = connected;
    return statusLine(ServiceState::running(status));
}

ServiceStatus::Job job(const char* id, const char* state, std::optional<QString> created,
                       std::optional<QString> finished = {}) {
    ServiceStatus::Job made;
    made.jobId = QString::fromLatin1(id);
    made.state = QString::fromLatin1(state);
    made.playlist = u"Friday"_s;
    made.createdAt = std::move(created);
    made.finishedAt = std::move(finished);
    return made;
}

ToolboxReport toolbox(bool spotdlReady, bool environmentReady, bool installing) {
    ToolboxReport report;
    report.tools = {{u"yt-dlp"_s, u"1"_s, u"1"_s, true}, {u"spotdl"_s, {}, u"4"_s, spotdlReady}};
    report.venvs = {{u"spotdl-env"_s, {}, u"4"_s, environmentReady}};
    report.installing = installing;
    return report;
}

} // namespace

TEST(StatusLine, ShowsADisabledCloudBeforeItsConnection) {
    EXPECT_EQ(lineWith(false, true), u"Running · cloud off");
    EXPECT_EQ(lineWith(false, {}), u"Running · cloud off");
    EXPECT_EQ(lineWith(true, true), u"Running · connected to the cloud");
    EXPECT_EQ(lineWith(true, false), u"Running · cloud not reachable yet");
    EXPECT_EQ(lineWith(true, {}), u"Running · v2.3.4");
    EXPECT_EQ(statusLine(ServiceState::checking()), u"Checking…");
    EXPECT_EQ(statusLine(ServiceState::notRunning()), u"Not running");
}

TEST(HeaderView, ToneShowsTheStateOfTheConnection) {
    const auto tone = [](bool enabled, std::optional<bool> connected) {
        ServiceStatus status = goodStatus();
        status.cloud.enabled = enabled;
        status.cloud.connected = connected;
        return headerView(ServiceState::running(status)).tone;
    };
    EXPECT_EQ(tone(true, true), look::Tone::Good);
    EXPECT_EQ(tone(true, {}), look::Tone::Good);
    EXPECT_EQ(tone(true, false), look::Tone::Warning);
    EXPECT_EQ(tone(false, true), look::Tone::Secondary);
    EXPECT_EQ(headerView(ServiceState::notRunning()).tone, look::Tone::Bad);
    EXPECT_EQ(headerView(ServiceState::checking()).tone, look::Tone::Secondary);
}

TEST(RecentCard, ShowsTheThreeLatestJobsWithTheirTimes) {
    ServiceStatus status = goodStatus();
    EXPECT_FALSE(recentCard(ServiceState::running(status), moment()).shown);
    status.recentJobs = {
        job("1", "running", ago(400)),
        job("2", "done", ago(9000), ago(305)),
        job("3", "failed", ago(9000), u"2025-03-01 18:04:05"_s),
        job("4", "done", ago(10)),
    };
    const RecentView card = recentCard(ServiceState::running(status), moment());
    ASSERT_EQ(card.jobs.size(), 3);
    EXPECT_EQ(card.jobs[0].trailing, u"Downloading");
    EXPECT_TRUE(card.jobs[0].pulsing);
    EXPECT_FALSE(card.jobs[1].pulsing);
    EXPECT_EQ(card.jobs[1].tone, look::Tone::Good);
    EXPECT_EQ(card.jobs[1].stateName, u"Added");
    EXPECT_EQ(card.jobs[2].tone, look::Tone::Bad);
    EXPECT_EQ(card.jobs[2].stateName, u"Failed");
    EXPECT_EQ(card.jobs[1].trailing, u"5 minutes ago");
    EXPECT_EQ(card.jobs[2].trailing, QString()) << "an unreadable finish time isn't replaced by the creation time";
    EXPECT_EQ(card.jobs[2].symbol, u"xmark.octagon.fill");

    status.recentJobs = {job("5", "paused", ago(7500))};
    const JobRowView other = recentCard(ServiceState::running(status), moment()).jobs.at(0);
    EXPECT_EQ(other.symbol, u"clock.fill");
    EXPECT_EQ(other.trailing, u"2 hours ago");
    EXPECT_FALSE(recentCard(ServiceState::notRunning(), moment()).shown);
}

TEST(ToolsNotice, NamesEveryToolThatIsNotReady) {
    EXPECT_FALSE(toolsNotice({}).shown);
    EXPECT_FALSE(toolsNotice(toolbox(true, true, false)).shown);

    ToolboxReport broken = toolbox(false, false, false);
    broken.error = u"No space left"_s;
    const ToolsNoticeView repair = toolsNotice(broken);
    EXPECT_TRUE(repair.shown);
    EXPECT_EQ(repair.text, u"Missing: spotdl, spotdl-env");
    broken.venvs[0].name = u"spotdl"_s;
    EXPECT_EQ(toolsNotice(broken).text, u"Missing: spotdl");
    EXPECT_EQ(repair.badge, u"Needs repair");
    EXPECT_EQ(repair.detail, u"No space left");
}

TEST(ToolsNotice, ShowsTheProgressOfAnInstallation) {
    ToolboxReport report = toolbox(true, true, true);
    report.step = u"Unpacking"_s;
    report.progress = 0.404;
    const ToolsNoticeView card = toolsNotice(report);
    EXPECT_TRUE(card.shown) << "an installation is shown even if everything is ready";
    EXPECT_EQ(card.badge, u"Installing");
    EXPECT_EQ(card.text, QString());
    EXPECT_EQ(card.detail, u"Unpacking · 40 %");
    report.progress = 7;
    EXPECT_EQ(toolsNotice(report).progress, 1);
    report.progress.reset();
    EXPECT_LT(toolsNotice(report).progress, 0);
}

} // namespace tunedeck::test
