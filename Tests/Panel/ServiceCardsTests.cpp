#include "Tests/Helpers/Test.h"
#include "Tests/Panel/Fixtures.h"

namespace tunedeck::test {

namespace {

using look::Tone;

ServiceState runningWith(bool cloudEnabled, std::optional<bool> connected) {
    ServiceStatus status = goodStatus();
    status.cloud.enabled = cloudEnabled;
    status.cloud.connected = connected;
    return ServiceState::running(status);
}

ServiceStatus::Job job(const QString& state, std::optional<QString> created, std::optional<QString> finished = {}) {
    return {.jobId = u"1"_s,
            .state = state,
            .playlist = u"Friday"_s,
            .createdAt = std::move(created),
            .finishedAt = std::move(finished)};
}

ToolboxReport toolbox(bool isReady, bool installing) {
    return {.tools = {{u"yt-dlp"_s, u"1"_s, u"1"_s, true}, {u"spotdl"_s, {}, u"4"_s, isReady}},
            .venvs = {{u"spotdl-env"_s, {}, u"4"_s, isReady}},
            .installing = installing};
}

} // namespace

TEST(ServiceState, ShowsADisabledCloudBeforeItsConnection) {
    const struct {
        ServiceState service;
        QString line;
        Tone tone;
        QString cloudText = {}; ///< on the card of the assistants
    } cases[] = {
        {runningWith(false, true), u"Running · cloud off"_s, Tone::Secondary},
        {runningWith(false, {}), u"Running · cloud off"_s, Tone::Secondary},
        {runningWith(true, true), u"Running · connected to the cloud"_s, Tone::Good,
         u"Connected to Tunedeck cloud: requests arrive instantly."_s},
        {runningWith(true, false), u"Running · cloud not reachable yet"_s, Tone::Warning,
         u"Not connected right now. Requests wait in the cloud until this Mac is back."_s},
        {runningWith(true, {}), u"Running · v2.3.4"_s, Tone::Good, u"Cloud queue on."_s},
        {ServiceState::checking(), u"Checking…"_s, Tone::Secondary},
        {ServiceState::notRunning(), u"Not running"_s, Tone::Bad},
    };
    for (const auto& [service, line, tone, cloudText] : cases) {
        EXPECT_EQ(statusLine(service), line);
        EXPECT_EQ(headerView(service).tone, tone) << line.toStdString();
        PanelState state;
        state.service = service;
        EXPECT_EQ(assistantsCard(state, moment()).cloudText, cloudText);
    }
}

TEST(RecentCard, ShowsTheThreeLatestJobsWithTheirTimes) {
    ServiceStatus status = goodStatus();
    EXPECT_FALSE(recentCard(ServiceState::running(status), moment()).shown);
    status.recentJobs = {
        job(u"running"_s, ago(400)),
        job(u"done"_s, ago(9000), ago(305)),
        job(u"failed"_s, ago(9000), u"2025-03-01 18:04:05"_s), // its creation time doesn't replace this one
        job(u"paused"_s, ago(7500)),
    };
    QStringList texts;
    const auto addRows = [&] {
        for (const JobRowView& row : recentCard(ServiceState::running(status), moment()).jobs) {
            texts << QStringList{row.symbol, row.trailing, row.stateName}.join(u'|');
            EXPECT_EQ(row.pulsing, row.trailing == u"Downloading");
            EXPECT_EQ(row.tone == Tone::Good, row.stateName == u"Added");
            EXPECT_EQ(row.tone == Tone::Bad, row.stateName == u"Failed");
        }
    };
    addRows();
    status.recentJobs.erase(status.recentJobs.begin(), status.recentJobs.begin() + 3);
    addRows();
    EXPECT_EQ(texts, (QStringList{u"arrow.down.circle.fill|Downloading|Downloading"_s,
                                  u"checkmark.circle.fill|5 minutes ago|Added"_s, u"xmark.octagon.fill||Failed"_s,
                                  u"clock.fill|2 hours ago|Waiting"_s}));
}

TEST(ToolsNotice, NamesEachToolThatIsNotReadyOnce) {
    EXPECT_FALSE(toolsNotice({}).shown);
    EXPECT_FALSE(toolsNotice(toolbox(true, false)).shown);

    ToolboxReport broken = toolbox(false, false);
    broken.error = u"No space left"_s;
    const ToolsNoticeView repair = toolsNotice(broken);
    EXPECT_TRUE(repair.shown);
    EXPECT_EQ((QStringList{repair.text, repair.badge, repair.detail}),
              (QStringList{u"Missing: spotdl, spotdl-env"_s, u"Needs repair"_s, u"No space left"_s}));
    broken.venvs[0].name = u"spotdl"_s;
    EXPECT_EQ(toolsNotice(broken).text, u"Missing: spotdl");
}

TEST(ToolsNotice, ShowsTheProgressOfAnInstallation) {
    ToolboxReport report = toolbox(true, true);
    report.step = u"Unpacking"_s;
    report.progress = 0.404;
    const ToolsNoticeView card = toolsNotice(report);
    EXPECT_TRUE(card.shown) << "although everything is ready";
    EXPECT_EQ((QStringList{card.text, card.badge, card.detail}),
              (QStringList{{}, u"Installing"_s, u"Unpacking · 40 %"_s}));
    report.progress = 7;
    EXPECT_EQ(toolsNotice(report).progress, 1);
    report.progress.reset();
    EXPECT_LT(toolsNotice(report).progress, 0);
}

} // namespace tunedeck::test
