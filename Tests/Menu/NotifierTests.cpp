#include "Tests/Helpers/FakePlatform.h"
#include "Tests/Helpers/ManualClock.h"
#include "Tests/Helpers/TemporaryHome.h"
#include "TunedeckMenu/Notifier.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tunedeck {

using namespace test;
using namespace std::chrono_literals;

namespace {

class NotifierTest : public testing::Test {
protected:
    void post(JobEvent::Kind kind, const ServiceStatus::Job& about) { notifier.post({kind, about}); }
    [[nodiscard]] QString body() const { return center.posted.back().body; }

    TemporaryHome home;
    ManualClock clock;
    FakeNotificationCenter center;
    Notifier notifier{center, clock, home.path(QStringLiteral(".tunedeck/notifications.log"))};
    ServiceStatus::Job job{.jobId = QStringLiteral("j1"), .playlist = QStringLiteral("Friday")};
};

} // namespace

TEST_F(NotifierTest, SaysWhatHappenedToAJobAndGroupsItsNotifications) {
    post(JobEvent::Kind::requested, job);
    EXPECT_EQ(center.posted.back(),
              (UserNotification{QStringLiteral("j1-requested"), QStringLiteral("j1"),
                                QStringLiteral("New download request"), QStringLiteral("Links → “Friday”")}));
    job.links = 1;
    post(JobEvent::Kind::requested, job);
    EXPECT_EQ(body(), QStringLiteral("1 link → “Friday”"));

    job.tracks = 0;
    post(JobEvent::Kind::finished, job);
    EXPECT_EQ(body(), QStringLiteral("0 tracks in “Friday”"));
    job.xmlVersion = QStringLiteral("8");
    post(JobEvent::Kind::finished, job);
    EXPECT_EQ(body(), QStringLiteral("0 tracks in “Friday” · XML v8"));
    EXPECT_EQ(center.posted.back().title, QStringLiteral("Added to Rekordbox"));

    job.message = QStringLiteral("é").repeated(161);
    post(JobEvent::Kind::failed, job);
    EXPECT_EQ(body(), QStringLiteral("“Friday”: ") + QStringLiteral("é").repeated(160));
    EXPECT_EQ(center.posted.back().identifier, QStringLiteral("j1-failed"));
}

TEST_F(NotifierTest, KeepsATrailWithOneLineForEachNotification) {
    post(JobEvent::Kind::requested, job);
    clock.advance(61s);
    job.playlist = QStringLiteral("two\nlines");
    post(JobEvent::Kind::failed, job);
    notifier.postLibrary({.at = QStringLiteral("T1"), .version = {}, .summary = QStringLiteral("Added 3 tracks")});
    EXPECT_EQ(center.posted.back().identifier, QStringLiteral("library-T1"));
    EXPECT_EQ(body(), QStringLiteral("Added 3 tracks"));
    notifier.postLibrary(
        {.at = QStringLiteral("T2"), .version = QStringLiteral("1.1"), .summary = QStringLiteral("x")});
    EXPECT_EQ(body(), QStringLiteral("x · v1.1"));
    EXPECT_EQ(home.read(QStringLiteral(".tunedeck/notifications.log")),
              "2026-03-01T12:00:00Z requested j1 Friday\n"
              "2026-03-01T12:01:01Z failed j1 two lines\n"
              "2026-03-01T12:01:01Z library - Added 3 tracks\n"
              "2026-03-01T12:01:01Z library 1.1 x\n");
}

TEST_F(NotifierTest, PostsEvenWhenTheTrailCannotBeKept) {
    home.write(QStringLiteral(".tunedeck/notifications.log/in-the-way"), "x");
    post(JobEvent::Kind::requested, job);
    EXPECT_EQ(center.posted.size(), 1U);
    EXPECT_EQ(home.read(QStringLiteral(".tunedeck/notifications.log/in-the-way")), "x");

    // Nobody reads from it: a writer that waits would wait for ever.
    const auto fifo = home.path(QStringLiteral("fifo"));
    ASSERT_EQ(::mkfifo(fifo.toUtf8().constData(), 0600), 0);
    appendLine(fifo, QStringLiteral("line\n"));
}

TEST_F(NotifierTest, OpensWhenTheUserClicks) {
    int opened = 0;
    Q_EMIT center.opened(QStringLiteral("j1-requested"));
    notifier.onOpen = [&] { ++opened; };
    Q_EMIT center.opened(QStringLiteral("j1-requested"));
    EXPECT_EQ(opened, 1);
}

} // namespace tunedeck
