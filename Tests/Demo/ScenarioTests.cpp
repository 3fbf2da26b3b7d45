#include "Tests/Demo/TestWorld.h"

#include <gtest/gtest.h>

namespace tunedeck::demo {

TEST(DemoScenarios, OnlyLivelyAndFirstRunChangeWithoutRequests) {
    for (const Scenario& scenario : scenarios()) {
        TestWorld test(scenario.name);
        const int events = test.live(24h);
        EXPECT_EQ(events > 0, scenario.name == u"lively"_s || scenario.name == u"first-run"_s) << scenario.name.data();
        EXPECT_EQ(test.world.takeLines().empty(), events == 0) << scenario.name.data();
    }
}

TEST(DemoScenarios, FirstRunInstallsTheToolsAndThenWaitsForAnAssistant) {
    TestWorld test(u"first-run"_s);
    test.live(6s);
    const auto progress = test.state().toolbox.reportAt(test.now).progress.value_or(0);
    EXPECT_TRUE(progress > 0.2 && progress < 0.6) << progress;
    test.live(1min);
    EXPECT_TRUE(test.state().toolbox.ready() && !test.state().toolbox.report.installing);
    EXPECT_EQ(test.live(24h), 0);

    test.send("POST", "links", R"({"kind":"claude"})");
    test.live(30min);
    EXPECT_FALSE(test.state().library->backups.empty()) << "requests arrive and reach the library";
    const int requests = test.state().jobs.lastNumber;
    test.send("DELETE", "links/" + test.state().links.all.front().id.toUtf8());
    test.live(1h);
    EXPECT_EQ(test.state().jobs.lastNumber, requests) << "nobody is left to send requests";
}

TEST(DemoScenarios, EveryStateSurvivesTheStateFileUnchanged) {
    for (const Scenario& scenario : scenarios()) {
        TestWorld test(scenario.name);
        test.send("POST", "toolbox/install");
        test.live(20min + 1234ms);
        const auto text = test.state().text();
        const auto read = State::fromText(text);
        ASSERT_TRUE(read) << scenario.name.data() << ": " << read.error().path.toStdString();
        EXPECT_EQ(read->text(), text) << scenario.name.data();
    }
}

} // namespace tunedeck::demo
