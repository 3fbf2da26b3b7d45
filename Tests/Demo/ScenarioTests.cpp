#include "DemoService/Log.h"
#include "DemoService/Options.h"
#include "Tests/Demo/TestWorld.h"

#include <gtest/gtest.h>

#include <set>

namespace tunedeck::demo {

using namespace std::chrono_literals;

TEST(DemoScenarios, AllButTheLivelyOneStandStillUntilSomebodyActs) {
    std::set<std::string_view> names;
    for (const Scenario& scenario : scenarios()) {
        EXPECT_TRUE(names.insert(scenario.name).second) << scenario.name;
        if (scenario.name == "lively") {
            continue;
        }
        TestWorld test(scenario.name);
        const std::string before = stateText(test.state());
        test.live(24h);
        test.world.advance(test.now);
        EXPECT_EQ(stateText(test.state()), before) << scenario.name;
        EXPECT_TRUE(test.world.takeJournal().empty()) << scenario.name;
    }
}

TEST(DemoScenarios, AStateComesBackFromItsFileWhole) {
    for (const Scenario& scenario : scenarios()) {
        TestWorld test(scenario.name);
        test.world.installTools(test.now);
        test.live(20min + 1234ms);
        const std::string text = stateText(test.state());
        const auto read = stateFromText(text);
        ASSERT_TRUE(read) << scenario.name;
        EXPECT_EQ(stateText(*read), text) << scenario.name;
    }
}

TEST(DemoScenarios, ABrokenStateFileIsRefusedOrReadAsFarAsItMakesSense) {
    EXPECT_FALSE(stateFromText(""));
    EXPECT_FALSE(stateFromText("[]"));
    EXPECT_FALSE(stateFromText("{}"));
    EXPECT_FALSE(stateFromText(std::string(200'000, '[')));
    const auto odd = stateFromText(R"({"scenario":"quiet","jobs":{"recent":[{"tracks":99999999999}],"xml_version":true},
                                      "links":7,"cloud":{"connected":"yes"}})");
    ASSERT_TRUE(odd);
    EXPECT_EQ(odd->jobs.recent.size(), 1U);
    EXPECT_EQ(odd->jobs.xmlVersion, 0);
}

TEST(DemoScenarios, TheCloudIsUnknownAtFirstThenThereAndStaysUnlessItWavers) {
    State state = startState(*findScenario("quiet"), TestWorld::start);
    state.cloud.reconnect(TestWorld::start);
    TestWorld steady(std::move(state));
    EXPECT_FALSE(steady.state().cloud.connected.has_value());
    EXPECT_EQ(steady.live(1h), 1);
    EXPECT_EQ(steady.state().cloud.connected, true);

    TestWorld wavering("lively");
    wavering.live(2h);
    EXPECT_GT(std::ranges::count(wavering.journal, Level::warn, &LogLine::level), 2);
    EXPECT_GT(*wavering.state().cloud.changeAt, wavering.now);
}

TEST(DemoScenarios, TheCrowdIsAsBigAsItShouldBe) {
    const TestWorld test("crowded");
    EXPECT_EQ(test.state().links.all.size(), 12U);
    const auto& backups = test.state().library->backups;
    EXPECT_EQ(backups.size(), 60U);
    std::set<std::string> versions;
    for (const Backup& backup : backups) {
        versions.insert(backup.version);
    }
    EXPECT_EQ(versions.size(), 60U) << "a version names one backup";
    EXPECT_TRUE(std::ranges::is_sorted(backups, std::ranges::greater{}, &Backup::createdAt));
    EXPECT_EQ(test.state().library->currentVersion, backups.front().version);
    EXPECT_GE(test.state().stagedFolder->dir.size(), 200U);
}

TEST(DemoOptions, ArgumentsAreReadOrRefusedWithASentence) {
    const auto options = parseOptions({"--scenario", "quiet", "--port=8123", "--speed", "2.5", "--reset"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->scenario, "quiet");
    EXPECT_EQ(options->port, 8123);
    EXPECT_EQ(options->speed, 2.5);
    EXPECT_TRUE(options->reset);
    using Arguments = std::vector<std::string>;
    for (const Arguments& wrong : {Arguments{"--scenario"},
                                   {"--scenario", "nonsense"},
                                   {"--port", "65536"},
                                   {"--port", "-1"},
                                   {"--port=12a"},
                                   {"--speed", "0"},
                                   {"--speed", "nan"},
                                   {"--speed", "inf"},
                                   {"--quiet"},
                                   {"lively"}}) {
        EXPECT_FALSE(parseOptions(wrong)) << wrong.back();
    }
}

TEST(DemoLog, ALineHasItsTimeLevelTargetAndMessageAndStaysOneLine) {
    const auto time = std::chrono::sys_time<std::chrono::microseconds>(TestWorld::start) + 42us;
    EXPECT_EQ(logText({Level::info, "tunedeck::jobs", "job-1 done"}, time),
              "2026-11-21T09:00:00.000042Z  INFO tunedeck::jobs: job-1 done\n");
    EXPECT_NE(logText({Level::warn, "a", "b"}, time).find("Z  WARN a: b"), std::string::npos);
    EXPECT_NE(logText({Level::error, "a", "x\ny\x1b[0m"}, time).find("Z ERROR a: x y [0m\n"), std::string::npos);
    EXPECT_EQ(levelOf("tunedeck=info"), Level::info);
    EXPECT_EQ(levelOf("tunedeck=debug"), Level::debug);
    EXPECT_EQ(levelOf(""), Level::info);
}

} // namespace tunedeck::demo
