#include "Tests/Demo/TestWorld.h"

#include <gtest/gtest.h>

namespace tunedeck::demo {

TEST(DemoWorld, ARequestWaitsForTheToolsDownloadsItsTracksAndReachesTheLibrary) {
    State state = startState(*findScenario(u"quiet"_s), TestWorld::start);
    state.jobs.recent.resize(1);
    Job& request = state.jobs.recent.front();
    request = {.jobId = u"1"_s, .state = job_state::queued, .playlist = u"Friday"_s, .requested = 3};
    request.nextStep = TestWorld::start + 2s;
    state.toolbox = Toolbox::make(false, TestWorld::start);
    TestWorld test(std::move(state));
    const Job& job = test.state().jobs.recent.front();
    EXPECT_EQ(test.live(1h), 0) << "a waiting job must not wake the service";
    EXPECT_EQ(test.send("POST", "toolbox/install").status, 202);
    while (job.message != u"Downloading 2 of 3"_s && test.now < TestWorld::start + 2h) {
        test.live(1s);
    }
    EXPECT_TRUE(job.state == job_state::running && !job.finishedAt);
    test.live(30s);
    ASSERT_EQ(job.state, job_state::done);
    EXPECT_EQ(job.message, u"Added 3 tracks to “Friday”"_s);
    EXPECT_EQ(test.state().library->backups.size(), 4U);
    EXPECT_FALSE(test.world.nextEvent()) << "nothing is left to do";
}

TEST(DemoWorld, ChangesWaitWhileRekordboxIsOpenAndAreAppliedWhenItCloses) {
    State state = startState(*findScenario(u"rekordbox-open"_s), TestWorld::start);
    state.library->toggleAt = TestWorld::start + 10min;
    TestWorld test(std::move(state));
    const auto& library = *test.state().library;
    test.live(9min);
    for (const char* action : {"apply", "restore", "baseline"}) {
        const auto reply = test.send("POST", QByteArray("rekordbox/") + action, R"({"version":"1.0.0"})");
        EXPECT_EQ(reply.status, 409) << action;
    }
    EXPECT_TRUE(library.pending.size() == 2 && library.backups.size() == 3) << "refusing changes nothing";
    test.live(1min + 30s);
    EXPECT_TRUE(!library.rekordboxRunning && library.pending.empty());
    EXPECT_EQ(library.backups.front().version, u"1.1.2"_s);
    EXPECT_EQ(test.send("POST", "rekordbox/restore", R"({"version":"1.0.0"})").status, 200);
    EXPECT_EQ(library.backups.front().version, u"2.0.0"_s) << "the library before the restoration is kept";
}

TEST(DemoWorld, LinksGetSeparateSecretsAndAreUsedAfterAWhile) {
    TestWorld test(u"fresh"_s);
    const auto& links = test.state().links.all;
    for (const char* kind : {"claude", "shortcut", "telegram"}) {
        const auto reply = test.send("POST", "links", QByteArray(R"({"kind":")") + kind + R"(","label":"L"})");
        EXPECT_TRUE(reply.body.contains(R"("createdAt":)") && !reply.body.contains("first")) << reply.body.data();
    }
    ASSERT_EQ(links.size(), 3U);
    EXPECT_TRUE(test.send("GET", "links").body.contains(R"("createdAt":)"));
    EXPECT_TRUE(links[0].url && !links[0].token && links[1].apiUrl && links[1].token && !links[1].url);
    EXPECT_EQ(links[2].expiresAt, test.now + 10min);
    EXPECT_FALSE(test.send("GET", "status").body.contains("public_url"));
    test.live(1min);
    EXPECT_TRUE(test.send("GET", "status").body.contains("public_url"));
    EXPECT_TRUE(links[0].isConnected() && links[1].isConnected() && links[2].isConnected() && !links[2].expiresAt);

    const auto old = links[0];
    EXPECT_EQ(test.send("POST", "links/" + old.id.toUtf8() + "/rotate").status, 200);
    EXPECT_TRUE(links[0].id == old.id && links[0].url != old.url && !links[0].isConnected());
    EXPECT_EQ(test.send("DELETE", "links/" + old.id.toUtf8()).status, 204);
    EXPECT_EQ(links.size(), 2U);
}

TEST(DemoHttp, RejectsWhatItCannotServe) {
    const struct {
        const char *scenario, *method, *path, *body;
        int status;
        const char* contains;
    } rows[] = {
        {"quiet", "GET", "status/", "", 404, "error"},
        {"quiet", "PUT", "links", "", 405, "error"},
        {"quiet", "POST", "rekordbox/restore", "[", 400, R"("ok":false)"},
        {"quiet", "POST", "rekordbox/restore", R"({"version":"7"})", 404, R"("ok":false)"},
        {"no-rekordbox", "POST", "rekordbox/apply", "", 404, R"("ok":false)"},
        {"quiet", "POST", "links", R"({"kind":"fax"})", 400, "unknown_kind"},
        {"quiet", "DELETE", "links/a%2Fb", "", 404, "link_not_found"},
        {"no-telegram", "POST", "links", R"({"kind":"telegram"})", 503, "telegram_not_configured"},
        {"cloud-off", "POST", "links", R"({"kind":"claude"})", 409, "cloud_disabled"},
        {"cloud-unreachable", "DELETE", "links/x", "", 503, "cloud_unreachable"},
    };
    for (const auto& row : rows) {
        const auto reply = TestWorld(QLatin1StringView(row.scenario)).send(row.method, row.path, row.body);
        EXPECT_EQ(reply.status, row.status) << row.path;
        EXPECT_TRUE(reply.body.contains(row.contains)) << row.path << ": " << reply.body.data();
        EXPECT_EQ(reply.allow, row.status == 405 ? "GET, POST" : "") << row.path;
    }
}

} // namespace tunedeck::demo
