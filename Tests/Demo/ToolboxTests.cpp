#include "Tests/Demo/TestWorld.h"

#include <gtest/gtest.h>

#include <set>

namespace tunedeck::demo {

using namespace std::chrono_literals;

TEST(DemoToolbox, AnInstallationGoesStepByStepWithGrowingProgress) {
    TestWorld test("fresh");
    test.world.installTools(test.now);
    std::set<std::string> steps;
    double last = -1;
    int seconds = 0;
    for (ToolReport report = test.world.tools(test.now); report.installing; report = test.world.tools(test.now)) {
        ASSERT_TRUE(report.step && report.progress);
        EXPECT_GE(*report.progress, last);
        EXPECT_LE(*report.progress, 1.0);
        last = *report.progress;
        steps.insert(*report.step);
        test.live(500ms);
        ASSERT_LT(++seconds, 120);
    }
    EXPECT_EQ(steps.size(), 5U);
    EXPECT_GT(last, 0.8);
    const ToolReport report = test.world.tools(test.now);
    EXPECT_TRUE(test.state().toolbox.ready());
    EXPECT_FALSE(report.step || report.progress || report.error);
    EXPECT_GT(*report.checkedAt, TestWorld::start);
    EXPECT_FALSE(test.world.nextEvent());
}

TEST(DemoToolbox, OnlyWhatIsMissingIsInstalledAndASecondRequestJoinsTheFirst) {
    TestWorld test("tools-missing");
    EXPECT_FALSE(test.state().toolbox.ready());
    test.world.installTools(test.now);
    test.live(3s);
    const auto progress = test.world.tools(test.now).progress;
    test.world.installTools(test.now);
    EXPECT_EQ(test.world.tools(test.now).progress, progress);
    test.live(6s);
    EXPECT_TRUE(test.state().toolbox.ready());
}

TEST(DemoToolbox, AFailedInstallationSaysWhyAndTheNextOneSucceeds) {
    TestWorld test("install-fails");
    test.world.installTools(test.now);
    EXPECT_FALSE(test.world.tools(test.now).error) << "a new attempt forgets the last one's error";
    test.live(1min);
    EXPECT_FALSE(test.world.tools(test.now).installing);
    EXPECT_FALSE(test.world.tools(test.now).error.value_or("").empty());
    EXPECT_FALSE(test.state().toolbox.ready());

    test.world.installTools(test.now);
    test.live(1min);
    EXPECT_TRUE(test.state().toolbox.ready());
    EXPECT_FALSE(test.world.tools(test.now).error);
}

} // namespace tunedeck::demo
