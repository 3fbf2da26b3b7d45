#include "Tests/Demo/TestWorld.h"

#include <gtest/gtest.h>

namespace tunedeck::demo {

using namespace std::chrono_literals;

TEST(DemoLibrary, ChangesWaitWhileRekordboxIsOpenAndAreMadeWhenItCloses) {
    State state = startState(*findScenario("rekordbox-open"), TestWorld::start);
    state.library->toggleAt = TestWorld::start + 10min;
    TestWorld test(std::move(state));
    const auto& library = *test.state().library;
    ASSERT_EQ(library.pending.size(), 2U);
    const auto backups = library.backups;

    test.live(9min);
    EXPECT_EQ(library.pending.size(), 2U);
    EXPECT_EQ(test.world.apply(test.now).status, 409);
    EXPECT_FALSE(test.world.restore(test.now, "1.0.0").ok);
    EXPECT_FALSE(test.world.takeBaseline(test.now).ok);
    EXPECT_EQ(library.backups.size(), backups.size()) << "a refused action changes nothing";

    test.live(1min + 30s);
    EXPECT_FALSE(library.rekordboxRunning);
    EXPECT_TRUE(library.pending.empty());
    ASSERT_EQ(library.backups.size(), backups.size() + 1);
    EXPECT_EQ(library.backups.front().version, "1.1.2");
    EXPECT_EQ(library.currentVersion, "1.1.2");
    EXPECT_EQ(library.lastApplied->version, "1.1.2");
    EXPECT_EQ(library.lastApplied->summary, "2 changes applied");
}

TEST(DemoLibrary, ApplyingMakesThePendingChangesAtOnceAndSaysHowMany) {
    TestWorld test("pending");
    const LibraryReply reply = test.world.apply(test.now);
    EXPECT_TRUE(reply.ok);
    EXPECT_EQ(reply.message, "Applied 2 changes.");
    EXPECT_EQ(reply.version, "1.1.2");
    EXPECT_TRUE(test.state().library->pending.empty());

    const LibraryReply again = test.world.apply(test.now);
    EXPECT_TRUE(again.ok);
    EXPECT_EQ(test.state().library->currentVersion, "1.1.2") << "with nothing to apply there is nothing to back up";
}

TEST(DemoLibrary, ARestoreBacksUpFirstSoThatItCanBeUndone) {
    TestWorld test("quiet");
    const LibraryReply reply = test.world.restore(test.now, "1.0.0");
    EXPECT_TRUE(reply.ok);
    EXPECT_EQ(reply.version, "1.0.0");
    const auto& library = *test.state().library;
    EXPECT_EQ(library.backups.size(), 4U);
    EXPECT_EQ(library.backups.front().version, "2.0.0");
    EXPECT_EQ(library.backups.front().reason, "Before restoring v1.0.0");
    EXPECT_TRUE(test.world.restore(test.now, "2.0.0").ok);

    const LibraryReply unknown = test.world.restore(test.now, "9.9.9");
    EXPECT_EQ(unknown.status, 404);
    EXPECT_FALSE(unknown.ok);
    EXPECT_EQ(library.backups.size(), 5U);
}

TEST(DemoLibrary, FailedChangesAreTriedAgainOrDismissed) {
    State state = startState(*findScenario("failed-changes"), TestWorld::start);
    state.library->failurePercent = 100;
    TestWorld retried(std::move(state));
    EXPECT_TRUE(retried.world.retryFailed(retried.now).ok);
    EXPECT_TRUE(retried.state().library->failed.empty());
    EXPECT_EQ(retried.state().library->pending.size(), 2U);
    EXPECT_FALSE(retried.state().library->lastError);
    retried.live(10s);
    EXPECT_TRUE(retried.state().library->pending.empty())
        << "what was asked for happens, and the second time it succeeds";
    EXPECT_TRUE(retried.state().library->failed.empty());
    EXPECT_EQ(retried.state().library->currentVersion, "1.1.2");

    TestWorld dismissed("failed-changes");
    EXPECT_TRUE(dismissed.world.dismissFailed(dismissed.now).ok);
    EXPECT_TRUE(dismissed.state().library->failed.empty());
    dismissed.live(1h);
    EXPECT_EQ(dismissed.state().library->currentVersion, "1.1.1");
}

TEST(DemoLibrary, AChangeThatCannotBeMadeIsKeptWithItsReason) {
    State state = startState(*findScenario("pending"), TestWorld::start);
    state.library->failurePercent = 100;
    state.library->applyAt = TestWorld::start + 1s;
    TestWorld test(std::move(state));
    test.live(1min);
    const auto& library = *test.state().library;
    ASSERT_EQ(library.failed.size(), 2U);
    EXPECT_TRUE(library.pending.empty());
    EXPECT_FALSE(library.failed.front().error.value_or("").empty());
    EXPECT_EQ(library.lastError, library.failed.back().error);
    EXPECT_EQ(library.backups.size(), 3U) << "nothing was written, so nothing was backed up";
}

TEST(DemoLibrary, TheFirstBackupIsTakenOnce) {
    TestWorld test("fresh");
    EXPECT_EQ(test.world.takeBaseline(test.now).version, "1.0.0");
    EXPECT_EQ(test.world.takeBaseline(test.now).version, "1.0.0");
    EXPECT_EQ(test.state().library->backups.size(), 1U);

    TestWorld without("no-rekordbox");
    EXPECT_FALSE(without.world.takeBaseline(without.now).ok);
}

TEST(DemoLibrary, VersionsRiseByTheKindOfChange) {
    EXPECT_EQ(raised("1.9.9", Bump::patch), "1.9.10");
    EXPECT_EQ(raised("1.9.9", Bump::minor), "1.10.0");
    EXPECT_EQ(raised("1.9.9", Bump::major), "2.0.0");
    EXPECT_EQ(raised("", Bump::minor), "1.0.0");
}

} // namespace tunedeck::demo
