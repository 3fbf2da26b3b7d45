#include "Tests/Demo/TestWorld.h"

#include <gtest/gtest.h>

#include <map>

namespace tunedeck::demo {

using namespace std::chrono_literals;

namespace {

/// A world with one connected assistant, no job, and everything the jobs need.
State quietState() {
    State state = startState(*findScenario("quiet"), TestWorld::start);
    state.jobs.recent.clear();
    return state;
}

State withRequest(bool doomed, int wanted) {
    State state = quietState();
    Job job;
    job.id = "job-1";
    job.state = job_state::queued;
    job.playlist = "Friday";
    job.wanted = wanted;
    job.doomed = doomed;
    job.nextStep = TestWorld::start + 2s;
    state.jobs.recent.push_back(job);
    return state;
}

} // namespace

TEST(DemoJobs, ARequestIsDownloadedTrackByTrackAndReachesTheLibrary) {
    TestWorld test(withRequest(false, 3));
    const auto backups = test.state().library->backups.size();
    const auto& job = [&]() -> const Job& { return test.state().jobs.recent.front(); };

    test.live(2s);
    EXPECT_EQ(job().state, job_state::running);
    EXPECT_EQ(job().message, "Downloading 1 of 3");
    EXPECT_FALSE(job().finishedAt);

    test.live(30s);
    ASSERT_EQ(job().state, job_state::done);
    EXPECT_EQ(job().tracks, 3);
    EXPECT_EQ(job().message, "Added 3 tracks to “Friday”");
    EXPECT_EQ(job().xmlVersion, std::to_string(test.state().jobs.xmlVersion));
    EXPECT_GT(*job().finishedAt, TestWorld::start);

    EXPECT_EQ(test.state().library->backups.size(), backups + 1);
    EXPECT_NE(test.state().library->lastApplied->summary.find("Friday"), std::string::npos);
    EXPECT_FALSE(test.world.nextEvent()) << "nothing is left to do";
}

TEST(DemoJobs, ADoomedRequestFailsWithAReasonAndLeavesTheLibraryAlone) {
    TestWorld test(withRequest(true, 4));
    const auto version = test.state().library->currentVersion;
    test.live(5min);
    const Job& job = test.state().jobs.recent.front();
    EXPECT_EQ(job.state, job_state::failed);
    EXPECT_FALSE(job.message.empty());
    EXPECT_EQ(job.tracks, 0);
    EXPECT_TRUE(job.finishedAt);
    EXPECT_FALSE(job.xmlVersion);
    EXPECT_EQ(test.state().library->currentVersion, version);
    EXPECT_TRUE(std::ranges::any_of(test.journal, [](const LogLine& line) { return line.level == Level::error; }));
}

TEST(DemoJobs, RequestsWaitForTheToolsAndStartWhenTheseAreReady) {
    State state = withRequest(false, 1);
    state.toolbox = makeToolbox(false, TestWorld::start);
    TestWorld test(std::move(state));
    EXPECT_EQ(test.live(1h), 0) << "a waiting job must not keep the service awake";
    EXPECT_EQ(test.state().jobs.recent.front().state, job_state::queued);

    test.world.installTools(test.now);
    test.live(1min);
    EXPECT_EQ(test.state().jobs.recent.front().state, job_state::done);
}

TEST(DemoJobs, ALivelyDayHasItsShareOfEverythingAndNeverStandsStill) {
    TestWorld test("lively");
    std::map<std::string, int> ends;
    int opened = 0;
    for (int minute = 0; minute < 8 * 60; ++minute) {
        test.live(1min);
        ASSERT_TRUE(test.world.nextEvent());
        ASSERT_GT(*test.world.nextEvent(), test.now) << "what is due must have happened";
        ASSERT_LE(test.state().jobs.recent.size(), 20U);
    }
    for (const LogLine& line : test.journal) {
        if (line.target == "tunedeck::jobs") {
            ends["done"] += line.message.find(" done: ") != std::string::npos ? 1 : 0;
            ends["failed"] += line.message.find(" failed: ") != std::string::npos ? 1 : 0;
        }
        opened += line.message == "Rekordbox was opened" ? 1 : 0;
    }
    EXPECT_GT(ends["done"], 100);
    EXPECT_GT(ends["failed"], 10);
    EXPECT_GT(opened, 20);
    EXPECT_GT(test.state().library->backups.size(), 50U);
    EXPECT_LE(test.state().library->pending.size(), 30U);
    EXPECT_TRUE(std::ranges::is_sorted(test.state().jobs.recent, std::ranges::greater{}, [](const Job& job) {
        return *job.createdAt;
    })) << "the newest request comes first";
}

TEST(DemoJobs, AfterALongSleepTheWorldGoesOnRatherThanCatchingUp) {
    TestWorld test("lively");
    test.live(1min);
    const int before = test.state().jobs.lastNumber;
    test.now += 72h;
    test.world.advance(test.now);
    EXPECT_LE(test.state().jobs.lastNumber, before + 1);
    EXPECT_GT(*test.world.nextEvent(), test.now);
}

} // namespace tunedeck::demo
