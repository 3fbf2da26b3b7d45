#include "Tests/Helpers/Test.h"
#include "Tests/Panel/Fixtures.h"

namespace tunedeck::test {

namespace {

ServiceStatus::Job job(const QString& state, std::optional<QString> created, std::optional<QString> finished = {}) {
    return {.jobId = u"1"_s,
            .state = state,
            .playlist = u"Friday"_s,
            .message = u"Saved."_s,
            .createdAt = std::move(created),
            .finishedAt = std::move(finished)};
}

} // namespace

TEST(RecentCard, ShowsTheThreeLatestJobsWithTheirTimes) {
    ServiceStatus status = goodStatus();
    EXPECT_FALSE(recentCard(ServiceState::running(status), moment()).shown);
    status.recentJobs = {
        job(u"running"_s, ago(400)),
        job(u"done"_s, ago(9000), ago(305)),
        job(u"failed"_s, ago(9000), u"2025-03-01 18:04:05"_s), // its creation time doesn't replace this one
        job(u"paused"_s, ago(7500)),
    };
    QStringList rows;
    const auto addRows = [&] {
        for (const JobRowView& row : recentCard(ServiceState::running(status), moment()).jobs) {
            rows << QString::fromStdString(textOf(row));
        }
    };
    addRows();
    status.recentJobs.erase(status.recentJobs.begin(), status.recentJobs.begin() + 3);
    addRows();
    EXPECT_EQ(rows, (QStringList{
                        u"id: 1 | symbol: arrow.down.circle.fill | tone: Accent | pulsing: true | playlist: Friday | "
                        "trailing: Downloading | stateName: Downloading | message: Saved."_s,
                        u"id: 1 | symbol: checkmark.circle.fill | tone: Good | playlist: Friday | "
                        "trailing: 5 minutes ago | stateName: Added | message: Saved."_s,
                        u"id: 1 | symbol: xmark.octagon.fill | tone: Bad | playlist: Friday | stateName: Failed | "
                        "message: Saved. | openName: Why “Friday” failed | openHelp: Saved. | logButton: Open Log | "
                        "logName: Open Log for “Friday”"_s,
                        u"id: 1 | symbol: clock.fill | playlist: Friday | trailing: 2 hours ago | stateName: Waiting | "
                        "message: Saved."_s}));
}

} // namespace tunedeck::test
