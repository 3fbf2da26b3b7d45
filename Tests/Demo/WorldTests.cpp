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

} // namespace tunedeck::demo
