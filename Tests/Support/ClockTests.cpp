#include "Tests/Helpers/Descriptors.h"
#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Support/Async/Clock.h"

namespace tunedeck {
namespace {

using std::chrono::milliseconds;
using namespace test;

TEST(SystemClock, NeverWakesEarlyNorBlocksTheLoop) {
    SystemClock clock;
    test::Heartbeat heart;
    const int descriptor = nextDescriptor();
    for (const auto duration : {1ms, 7ms, 20ms, 33ms}) {
        const auto start = clock.elapsed();
        EXPECT_TRUE(runToEnd(clock.sleep(duration, {})));
        EXPECT_GE(clock.elapsed() - start, duration);
        const auto boot = clock.uptime();
        EXPECT_TRUE(runToEnd(clock.sleepThroughSuspend(duration, {})));
        EXPECT_GE(clock.uptime() - boot, duration);
    }
    EXPECT_GE(heart.ticks(), 5);
    EXPECT_EQ(nextDescriptor(), descriptor) << "leaked a descriptor";
    EXPECT_TRUE(runToEnd(clock.sleep(-5ms, {})));
}

TEST(SystemClock, StopsSleepingAtOnce) {
    SystemClock clock;
    for (const auto duration : {milliseconds(1h), milliseconds::max()}) {
        std::stop_source stop;
        const auto plain = endingOf(clock.sleep(duration, stop.get_token()));
        const auto boot = endingOf(clock.sleepThroughSuspend(duration, stop.get_token()));
        runDueEvents();
        ASSERT_FALSE(plain->isThere() || boot->isThere());
        stop.request_stop(); // no event loop is needed
        EXPECT_EQ(plain->value, std::optional(false));
        EXPECT_EQ(boot->value, std::optional(false));
        EXPECT_EQ(endingOf(clock.sleep(duration, stop.get_token()))->value, std::optional(false));
        EXPECT_EQ(endingOf(clock.sleepThroughSuspend(duration, stop.get_token()))->value, std::optional(false));
    }
}

} // namespace
} // namespace tunedeck
