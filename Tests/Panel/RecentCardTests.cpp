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
    const QString row = u"id: 1 | symbol: %1 | tone: %2 | playlist: Friday | %3 | message: Saved."_s;
    EXPECT_EQ(
        rows.join(u'\n').toStdString(),
        (QStringList{row.arg(u"arrow.down.circle.fill"_s, u"Accent | pulsing: true"_s,
                             u"trailing: Downloading | stateName: Downloading"_s),
                     row.arg(u"checkmark.circle.fill"_s, u"Good"_s, u"trailing: 5 minutes ago | stateName: Added"_s),
                     row.arg(u"xmark.octagon.fill"_s, u"Bad"_s, u"stateName: Failed"_s),
                     row.arg(u"clock.fill"_s, u"Secondary"_s, u"trailing: 2 hours ago | stateName: Waiting"_s)})
            .join(u'\n')
            .toStdString());
}

} // namespace tunedeck::test
