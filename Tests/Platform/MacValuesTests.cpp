#include "Tests/Helpers/Test.h"
#include "TunedeckMenu/Platform/MacValues/LaunchctlReport.h"
#include "TunedeckMenu/Platform/MacValues/LoginItemStatus.h"
#include "TunedeckMenu/Platform/MacValues/ScreenCoordinates.h"

namespace tunedeck::test {

// What the macOS side decides, from the values that macOS reports.

TEST(LaunchctlReportTest, ReadsTheStateAndTheLastExit) {
    using State = SupervisedService::State;
    const auto running = LaunchctlReport::parse("gui/501/com.brightfold.tunedeck = {\n"
                                                "\tactive count = 1\n"
                                                "\tstate = running\n"
                                                "\tendpoints = {\n\t\tstate = none\n\t\tpid = 7\n\t}\n"
                                                "\truns = 3\n\tpid = 4711\n"
                                                "\tlast exit code = 78: EX_CONFIG\n}\n");
    EXPECT_EQ(running.service.state, State::Running);
    EXPECT_EQ(running.process, 4711);
    EXPECT_EQ(running.service.restarts, 2);
    EXPECT_EQ(running.service.lastExit, u"exit status 78"_s);

    const auto killed = LaunchctlReport::parse("x = {\n\tstate = spawn scheduled\n\tlast exit code = 0\n"
                                               "\tlast terminating signal = Killed: 9\n}\n");
    EXPECT_EQ(killed.service.state, State::Restarting);
    EXPECT_EQ(killed.service.lastExit, u"signal 9"_s);
    EXPECT_FALSE(killed.process);

    const auto fresh = LaunchctlReport::parse("x = {\n\tstate = not running\n\tlast exit code = (never exited)\n}\n");
    EXPECT_EQ(fresh.service.state, State::Stopped);
    EXPECT_FALSE(fresh.service.lastExit);
    EXPECT_EQ(fresh.service.restarts, 0);
}

TEST(LoginItemStatusTest, OnlyAnEnabledItemIsOnAndOthersSayWhy) {
    EXPECT_EQ(loginItemState(LoginItemStatus::Enabled), LoginItemState::On);
    EXPECT_FALSE(loginItemProblem(LoginItemStatus::Enabled));
    EXPECT_EQ(loginItemState(LoginItemStatus::RequiresApproval), LoginItemState::Broken);
    EXPECT_TRUE(loginItemProblem(LoginItemStatus::RequiresApproval)->contains(u"requires your approval"));
    for (const auto status : {LoginItemStatus::NotRegistered, LoginItemStatus::NotFound}) {
        EXPECT_EQ(loginItemState(status), LoginItemState::Off);
        EXPECT_TRUE(loginItemProblem(status)->contains(u"Applications"));
    }
}

TEST(ScreenCoordinatesTest, FlipsRectanglesOfAllScreensAtThePrimaryOne) {
    EXPECT_EQ(fromLowerLeft({1200, 949, 24, 33}, 982), QRect(1200, 0, 24, 33));
    EXPECT_EQ(fromLowerLeft({-300, 1200, 24.5, 24}, 982), QRect(-300, -242, 25, 24)) << "on a screen above";
}

} // namespace tunedeck::test
