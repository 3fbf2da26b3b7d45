#include "Tests/Demo/TestWorld.h"

#include <gtest/gtest.h>

namespace tunedeck::demo {

using namespace std::chrono_literals;

TEST(DemoScenarios, AllButTheLivelyOneAndTheFirstRunStandStillUntilSomebodyActs) {
    for (const Scenario& scenario : scenarios()) {
        if (scenario.name == "lively" || scenario.name == "first-run") {
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

TEST(DemoScenarios, AFirstRunInstallsItsToolsByItselfAndWaitsForAnAssistant) {
    TestWorld test("first-run");
    EXPECT_FALSE(test.state().toolbox.ready());
    test.live(1min);
    EXPECT_TRUE(test.state().toolbox.ready());
    EXPECT_FALSE(test.state().toolbox.report.installing);
    const std::string before = stateText(test.state());
    test.live(24h);
    EXPECT_EQ(stateText(test.state()), before);
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

} // namespace tunedeck::demo
