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
