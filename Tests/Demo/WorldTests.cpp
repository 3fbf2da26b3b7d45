#include "Tests/Demo/TestWorld.h"

#include <gtest/gtest.h>

namespace tunedeck::demo {

using namespace std::chrono_literals;

namespace {

Link made(const LinkResult& result) {
    const auto* link = std::get_if<Link>(&result);
    EXPECT_NE(link, nullptr);
    return link == nullptr ? Link{} : *link;
}

Link find(const TestWorld& test, const std::string& id) {
    const auto& links = test.state().links.all;
    const auto found = std::ranges::find(links, id, &Link::id);
    return found == links.end() ? Link{} : *found;
}

} // namespace

TEST(DemoWorld, ARequestWaitsForTheToolsIsDownloadedTrackByTrackAndReachesTheLibrary) {
    State state = startState(*findScenario("quiet"), TestWorld::start);
    Job request;
    request.id = "job-1";
    request.state = job_state::queued;
    request.playlist = "Friday";
    request.wanted = 3;
    request.nextStep = TestWorld::start + 2s;
    state.jobs.recent = {request};
    state.toolbox = makeToolbox(false, TestWorld::start);
    TestWorld test(std::move(state));
    const Job& job = test.state().jobs.recent.front();
    const auto backups = test.state().library->backups.size();
    EXPECT_EQ(test.live(1h), 0) << "a waiting job must not keep the service awake";
    EXPECT_EQ(job.state, job_state::queued);

    test.world.installTools(test.now);
    while (job.message != "Downloading 2 of 3" && test.live(1s) >= 0 && test.now < TestWorld::start + 2h) {
    }
    EXPECT_EQ(job.state, job_state::running);
    EXPECT_FALSE(job.finishedAt);

    test.live(30s);
    ASSERT_EQ(job.state, job_state::done);
    EXPECT_EQ(job.tracks, 3);
    EXPECT_EQ(job.message, "Added 3 tracks to “Friday”");
    EXPECT_EQ(job.xmlVersion, std::to_string(test.state().jobs.xmlVersion));
    EXPECT_EQ(test.state().library->backups.size(), backups + 1);
    EXPECT_NE(test.state().library->lastApplied->summary.find("Friday"), std::string::npos);
    EXPECT_FALSE(test.world.nextEvent()) << "nothing is left to do";
}

TEST(DemoWorld, ChangesWaitWhileRekordboxIsOpenAndAreMadeWhenItCloses) {
    State state = startState(*findScenario("rekordbox-open"), TestWorld::start);
    state.library->toggleAt = TestWorld::start + 10min;
    TestWorld test(std::move(state));
    const auto& library = *test.state().library;
    const auto backups = library.backups.size();

    test.live(9min);
    EXPECT_EQ(test.world.apply(test.now).status, 409);
    EXPECT_FALSE(test.world.restore(test.now, "1.0.0").ok);
    EXPECT_FALSE(test.world.takeBaseline(test.now).ok);
    EXPECT_EQ(library.pending.size(), 2U);
    EXPECT_EQ(library.backups.size(), backups) << "a refused action changes nothing";

    test.live(1min + 30s);
    EXPECT_FALSE(library.rekordboxRunning);
    EXPECT_TRUE(library.pending.empty());
    ASSERT_EQ(library.backups.size(), backups + 1);
    EXPECT_EQ(library.backups.front().version, "1.1.2");
    EXPECT_EQ(library.lastApplied->summary, "2 changes applied");
}

TEST(DemoWorld, ApplyingAndRestoringSayWhatTheyDidAndBackUpOnlyWhenSomethingChanges) {
    TestWorld test("pending");
    const LibraryReply applied = test.world.apply(test.now);
    EXPECT_EQ(applied.message, "Applied 2 changes.");
    EXPECT_EQ(applied.version, "1.1.2");
    EXPECT_TRUE(test.world.apply(test.now).ok);
    EXPECT_EQ(test.state().library->currentVersion, "1.1.2") << "with nothing to apply there is nothing to back up";

    const auto& backups = test.state().library->backups;
    const auto count = backups.size();
    EXPECT_EQ(test.world.restore(test.now, "1.0.0").version, "1.0.0");
    ASSERT_EQ(backups.size(), count + 1);
    EXPECT_EQ(backups.front().reason, "Before restoring v1.0.0");
    EXPECT_TRUE(test.world.restore(test.now, backups.front().version).ok) << "so that it can be undone";
    EXPECT_EQ(test.world.restore(test.now, "9.9.9").status, 404);
    EXPECT_EQ(backups.size(), count + 2);

    TestWorld fresh("fresh");
    EXPECT_EQ(fresh.world.takeBaseline(fresh.now).version, "1.0.0");
    EXPECT_EQ(fresh.world.takeBaseline(fresh.now).version, "1.0.0");
    EXPECT_EQ(fresh.state().library->backups.size(), 1U);
}

TEST(DemoWorld, ChangesThatFailAreKeptWithTheirReasonAndTriedAgainOrDismissed) {
    State state = startState(*findScenario("pending"), TestWorld::start);
    state.library->failurePercent = 100;
    state.library->applyAt = TestWorld::start + 1s;
    TestWorld test(std::move(state));
    const auto& library = *test.state().library;
    const auto backups = library.backups.size();
    test.live(1min);
    ASSERT_EQ(library.failed.size(), 2U);
    EXPECT_TRUE(library.pending.empty());
    EXPECT_FALSE(library.failed.back().error.value_or("").empty());
    EXPECT_EQ(library.lastError, library.failed.back().error);
    EXPECT_EQ(library.backups.size(), backups) << "nothing was written, so nothing was backed up";

    EXPECT_TRUE(test.world.retryFailed(test.now).ok);
    EXPECT_FALSE(library.lastError);
    EXPECT_EQ(library.pending.size(), 2U);
    test.live(10s);
    EXPECT_TRUE(library.pending.empty() && library.failed.empty()) << "the second time it succeeds";
    EXPECT_EQ(library.backups.size(), backups + 1);

    TestWorld dismissed("failed-changes");
    EXPECT_TRUE(dismissed.world.dismissFailed(dismissed.now).ok);
    EXPECT_TRUE(dismissed.state().library->failed.empty());
    EXPECT_EQ(dismissed.live(1h), 0);
}

TEST(DemoWorld, LinksHaveSecretsOfTheirOwnAndAreUsedAfterAWhile) {
    TestWorld test("fresh");
    const Link claude = made(test.world.createLink(test.now, link_kind::claude, "Claude"));
    const Link shortcut = made(test.world.createLink(test.now, link_kind::shortcut, "iPhone"));
    const Link telegram = made(test.world.createLink(test.now, link_kind::telegram, "Telegram"));
    EXPECT_TRUE(claude.url->ends_with("/mcp") && !claude.token);
    EXPECT_TRUE(shortcut.apiUrl && shortcut.token && !shortcut.url);
    EXPECT_NE(claude.id, shortcut.id);
    EXPECT_FALSE(claude.isConnected());
    EXPECT_EQ(telegram.paired, false);

    test.live(1min);
    EXPECT_TRUE(find(test, claude.id).isConnected());
    EXPECT_TRUE(find(test, shortcut.id).isConnected());
    const Link paired = find(test, telegram.id);
    EXPECT_EQ(paired.paired, true);
    EXPECT_TRUE(paired.telegramUsername && !paired.expiresAt);

    const Link renewed = made(test.world.rotateLink(test.now, claude.id));
    EXPECT_EQ(renewed.id, claude.id);
    EXPECT_NE(renewed.url, claude.url);
    EXPECT_FALSE(renewed.isConnected()) << "nobody has used the new URL yet";

    TestWorld expired("telegram-expired");
    const Link old = expired.state().links.all.front();
    EXPECT_LE(*old.expiresAt, expired.now);
    const Link next = made(expired.world.rotateLink(expired.now, old.id));
    EXPECT_EQ(*next.expiresAt, expired.now + 10min);
    EXPECT_NE(next.url, old.url);
}

TEST(DemoWorld, ToolsAreInstalledWithGrowingProgressAndAFailureIsForgottenByTheNextTry) {
    TestWorld test("install-fails");
    test.world.installTools(test.now);
    test.live(1min);
    ToolReport report = test.world.tools(test.now);
    EXPECT_FALSE(report.installing || test.state().toolbox.ready());
    EXPECT_FALSE(report.error.value_or("").empty());

    test.world.installTools(test.now);
    double last = 0;
    for (report = test.world.tools(test.now); report.installing; report = test.world.tools(test.now)) {
        ASSERT_TRUE(report.step && report.progress && !report.error);
        ASSERT_GE(*report.progress, last) << "a second request joins the first";
        ASSERT_LE(*report.progress, 1.0);
        last = *report.progress;
        test.world.installTools(test.now);
        test.live(500ms);
        ASSERT_LT(test.now, TestWorld::start + 1h);
    }
    EXPECT_GT(last, 0.8);
    EXPECT_TRUE(test.state().toolbox.ready());
    EXPECT_FALSE(report.step || report.progress || report.error);
    EXPECT_FALSE(test.world.nextEvent());
}

} // namespace tunedeck::demo
