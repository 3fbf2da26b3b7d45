#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Installation/Launchctl.h"

namespace tunedeck::test {

TEST(LaunchctlTest, PassesArgumentsAndReturnsTheExitStatusAsItIs) {
    const TemporaryHome home;
    const auto log = home.path(u"log"_s);
    const auto launchctl =
        launchctlProgram(home.writeScript(u"launchctl"_s, "echo \"$@\" >'" + log.toUtf8() + "'; exit 113"));
    EXPECT_EQ(runToEnd(launchctl({u"print"_s, u"gui/501/a b"_s}, {})), 113);
    EXPECT_EQ(home.read(u"log"_s), "print gui/501/a b\n");
    EXPECT_EQ(runToEnd(launchctlProgram(home.path(u"missing"_s))({u"print"_s}, {})), -1);
}

} // namespace tunedeck::test
