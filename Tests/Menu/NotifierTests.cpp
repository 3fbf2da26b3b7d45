#include "Tests/Helpers/FakePlatform.h"
#include "Tests/Helpers/Test.h"
#include "TunedeckMenu/Background/Notifier.h"

namespace tunedeck::test {

namespace {

class NotifierTest : public testing::Test {
protected:
    void post(JobEvent::Kind kind, const ServiceStatus::Job& about) { notifier.post({kind, about}); }
    /// The identifiers of the notifications that the status leads to.
    QStringList update() {
        center.posted.clear();
        notifier.update(status);
        QStringList identifiers;
        for (const auto& notification : center.posted) {
            identifiers << notification.identifier;
        }
        return identifiers;
    }
    [[nodiscard]] QString body() const { return center.posted.back().body; }

    TemporaryHome home;
    ManualClock clock;
    FakeNotificationCenter center;
    Notifier notifier{center, clock, home.path(u".tunedeck/notifications.log"_s)};
    ServiceStatus::Job job{.jobId = u"j1"_s, .playlist = u"Friday"_s};
    ServiceStatus status;
};

} // namespace

TEST_F(NotifierTest, NotifiesOnceOfEachChangeSinceTheFirstStatus) {
    status.recentJobs = {{.jobId = u"old"_s, .state = u"done"_s}};
    status.rekordboxDb = ServiceStatus::Library{};
    status.rekordboxDb->lastApplied = {.at = u"T1"_s};
    EXPECT_EQ(update(), QStringList());
    status.recentJobs = {{.jobId = u"new"_s, .state = u"queued"_s}};
    status.rekordboxDb->lastApplied->at = u"T2"_s;
    EXPECT_EQ(update(), (QStringList{u"new-requested"_s, u"library-T2"_s}));
    EXPECT_EQ(update(), QStringList());

    const auto library = std::exchange(status.rekordboxDb, std::nullopt);
    EXPECT_EQ(update(), QStringList());
    status.rekordboxDb = library; // a status without a library doesn't count as one without changes
    EXPECT_EQ(update(), QStringList());
}

TEST_F(NotifierTest, SumsUpMoreThanFiftyChangesButLogsEach) {
    update();
    for (int i = 0; i < 53; ++i) {
        status.recentJobs.push_back({.jobId = QString::number(i), .state = u"queued"_s});
    }
    const auto posted = update();
    ASSERT_EQ(posted.size(), 51);
    EXPECT_EQ(posted[49], u"49-requested"_s);
    EXPECT_EQ(body(), u"And 3 more changes"_s);
    EXPECT_EQ(home.read(u".tunedeck/notifications.log"_s).count('\n'), 53);
}

TEST_F(NotifierTest, DescribesJobEventsAndGroupsThemByJob) {
    post(JobEvent::Kind::requested, job);
    EXPECT_EQ(center.posted.back(),
              (UserNotification{u"j1-requested"_s, u"j1"_s, u"New download request"_s, u"Links → “Friday”"_s}));
    job.links = 1;
    post(JobEvent::Kind::requested, job);
    EXPECT_EQ(body(), u"1 link → “Friday”"_s);

    job.tracks = 0;
    post(JobEvent::Kind::finished, job);
    EXPECT_EQ(body(), u"0 tracks in “Friday”"_s);
    job.xmlVersion = u"8"_s;
    post(JobEvent::Kind::finished, job);
    EXPECT_EQ(body(), u"0 tracks in “Friday” · XML v8"_s);
    EXPECT_EQ(center.posted.back().title, u"Added to Rekordbox"_s);

    job.message = u"é"_s.repeated(161);
    post(JobEvent::Kind::failed, job);
    EXPECT_EQ(body(), u"“Friday”: "_s + u"é"_s.repeated(160));
    EXPECT_EQ(center.posted.back().identifier, u"j1-failed"_s);
    job.playlist = u"ü"_s.repeated(161);
    post(JobEvent::Kind::requested, job);
    EXPECT_EQ(body(), u"1 link → “"_s + u"ü"_s.repeated(160) + u'”');
}

TEST_F(NotifierTest, LogsOneLinePerNotification) {
    post(JobEvent::Kind::requested, job);
    clock.advance(61s);
    job.playlist = u"two\nlines"_s;
    post(JobEvent::Kind::failed, job);
    notifier.postLibrary({.at = u"T1"_s, .version = {}, .summary = u"Added 3 tracks"_s});
    EXPECT_EQ(center.posted.back().identifier, u"library-T1"_s);
    EXPECT_EQ(body(), u"Added 3 tracks"_s);
    notifier.postLibrary({.at = u"T2"_s, .version = u"1.1"_s, .summary = u"x"_s});
    EXPECT_EQ(body(), u"x · v1.1"_s);
    EXPECT_EQ(home.read(u".tunedeck/notifications.log"_s), "2026-03-01T12:00:00Z requested j1 Friday\n"
                                                           "2026-03-01T12:01:01Z failed j1 two\ufffdlines\n"
                                                           "2026-03-01T12:01:01Z library - Added 3 tracks\n"
                                                           "2026-03-01T12:01:01Z library 1.1 x\n");
}

} // namespace tunedeck::test
