#include "Tests/Menu/MenuFixture.h"
#include "TunedeckMenu/Background/FollowLoop.h"

namespace tunedeck {

using namespace test;

namespace {

class FollowLoopTest : public MenuTest {
protected:
    /// Lets the loop fetch once; the identifiers of the notifications that follow.
    QStringList poll() {
        const auto fetches = results.size();
        center.posted.clear();
        if (fetches == 0) {
            loop.start();
        } else {
            clock.advance(3999ms);
            settle();
            EXPECT_EQ(results.size(), fetches) << "before 4 seconds have passed";
            clock.advance(1ms);
        }
        EXPECT_TRUE(comes([&] { return results.size() == fetches + 1 && clock.sleeping() == 1; }));
        QStringList identifiers;
        for (const auto& notification : center.posted) {
            identifiers << notification.identifier;
        }
        return identifiers;
    }
    QStringList pollWith(const QByteArray& changes) {
        serveStatus(changes);
        return poll();
    }

    FakeNotificationCenter center;
    Notifier notifier{center, clock, home.path(u".tunedeck/notifications.log"_s)};
    std::vector<std::optional<QString>> results; ///< the version in each status, nothing for a failure
    FollowLoop loop{clock, services.status, notifier, [this](const std::optional<ServiceStatus>& status) {
                        results.push_back(status ? std::optional(status->version) : std::nullopt);
                    }};
};

QByteArray job(const QByteArray& id, const QByteArray& state) {
    return R"("recent_jobs":[{"job_id":")" + id + R"(","playlist":"P","message":"","state":")" + state + R"("}])";
}

QByteArray applied(const QByteArray& at) {
    return R"("rekordbox_db":{"db_path":"/db","pending":[],"failed":[],"rekordbox_running":false,"backups":[],)"
           R"("last_applied":{"at":")" +
           at + R"(","summary":"Added 3 tracks"}})";
}

} // namespace

TEST_F(FollowLoopTest, NotifiesOnceOfEachChangeSinceTheFirstStatus) {
    EXPECT_EQ(pollWith(job("old", "done") + ',' + applied("T1")), QStringList());
    EXPECT_EQ(poll(), QStringList());
    EXPECT_EQ(pollWith(job("new", "queued") + ',' + applied("T2")), (QStringList{u"new-requested"_s, u"library-T2"_s}));
    EXPECT_EQ(poll(), QStringList());
}

TEST_F(FollowLoopTest, KeepsTheKnownJobsAndLibraryWhenAFetchFails) {
    EXPECT_EQ(pollWith(job("a", "running") + ',' + applied("T1")), QStringList());
    serve("GET /local/status", "{}", 500);
    EXPECT_EQ(poll(), QStringList());
    EXPECT_EQ(results, (decltype(results){u"5.0"_s, std::nullopt}));
    EXPECT_EQ(pollWith(job("a", "running") + ',' + applied("T1")), QStringList());
    EXPECT_EQ(pollWith(job("a", "done") + ',' + applied("T2")), (QStringList{u"a-finished"_s, u"library-T2"_s}));
}

TEST_F(FollowLoopTest, IgnoresTheLibraryOfAStatusWithoutOne) {
    EXPECT_EQ(pollWith(applied("T1")), QStringList());
    EXPECT_EQ(pollWith({}), QStringList());
    EXPECT_EQ(pollWith(applied("T1")), QStringList());
    EXPECT_EQ(pollWith(applied("T2")), QStringList{u"library-T2"_s});
}

} // namespace tunedeck
