#include "Tests/Helpers/ManualClock.h"
#include "Tests/Helpers/NoDescriptors.h"
#include "Tests/Helpers/RunTask.h"
#include "TunedeckCore/Support/TaskScope.h"

#include <QString>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace tunedeck {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;
using test::endingOf;
using test::ManualClock;
using test::nextDescriptor;
using test::NoDescriptors;
using test::runDueEvents;
using test::runToEnd;
using test::runUntil;

TEST(SystemClock, SleepsNeverEndEarlyAndTheLoopStaysAlive) {
    SystemClock clock;
    test::Heartbeat heart;
    for (const auto duration : {1ms, 7ms, 20ms, 33ms}) {
        const auto start = clock.elapsed();
        EXPECT_TRUE(runToEnd(clock.sleep(duration, {})));
        EXPECT_GE(clock.elapsed() - start, duration);
        const auto boot = clock.uptime();
        EXPECT_TRUE(runToEnd(clock.sleepThroughSuspend(duration, {})));
        EXPECT_GE(clock.uptime() - boot, duration);
    }
    EXPECT_GE(heart.ticks(), 5);
    EXPECT_TRUE(runToEnd(clock.sleep(-5ms, {})));
    EXPECT_TRUE(runToEnd(clock.sleepThroughSuspend(0ms, {})));
}

TEST(SystemClock, AStopEndsASleepAtOnceAndAStoppedTokenNeverSleeps) {
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

TEST(SystemClock, ASleepThroughSuspendWorksWithoutDescriptorsAndLeavesNone) {
    SystemClock clock;
    const int next = nextDescriptor();
    ASSERT_TRUE(runToEnd(clock.sleepThroughSuspend(1ms, {})));
    EXPECT_EQ(nextDescriptor(), next);

    if (!NoDescriptors::arePossible) {
        GTEST_SKIP() << "the sanitizer needs descriptors itself";
    }
    const auto start = clock.uptime();
    const bool slept = [&] {
        const NoDescriptors none;
        return runToEnd(clock.sleepThroughSuspend(20ms, {}));
    }();
    EXPECT_TRUE(slept);
    EXPECT_GE(clock.uptime() - start, 20ms);
}

QCoro::Task<> diary(ManualClock& clock, milliseconds period, QString name, QStringList& pages, std::stop_token stop) {
    for (;;) {
        const bool slept = co_await clock.sleep(period, stop);
        if (!slept) {
            co_return;
        }
        pages << name + QString::number(std::chrono::floor<milliseconds>(clock.elapsed()).count() % 1000);
    }
}

TEST(ManualClock, SleepersWakeInTheOrderOfTheirMoments) {
    ManualClock clock;
    QStringList pages;
    TaskScope scope;
    spawn(diary(clock, 30ms, QStringLiteral("a"), pages, scope.token()));
    spawn(diary(clock, 20ms, QStringLiteral("b"), pages, scope.token()));
    const auto start = clock.now();
    clock.advance(19ms);
    EXPECT_TRUE(pages.isEmpty());
    clock.advance(41ms);
    EXPECT_EQ(pages.join(u' '), QStringLiteral("b20 a30 b40 a60 b60"));
    EXPECT_EQ(start.msecsTo(clock.now()), 60);
    EXPECT_EQ(clock.sleeping(), 2U);
    EXPECT_EQ(clock.sleeps().size(), 7U);
    scope.stop();
    EXPECT_EQ(clock.sleeping(), 0U);
}

TEST(ManualClock, OnlySleepsThroughSuspendCountTheMachinesSleep) {
    ManualClock clock;
    const auto elapsed = clock.elapsed();
    TaskScope scope;
    const auto plain = endingOf(clock.sleep(100ms, scope.token()));
    const auto boot = endingOf(clock.sleepThroughSuspend(100ms, scope.token()));
    clock.suspend(100ms);
    EXPECT_FALSE(plain->isThere());
    EXPECT_EQ(boot->value, std::optional(true));
    EXPECT_EQ(clock.elapsed(), elapsed);
    clock.advance(100ms);
    EXPECT_EQ(plain->value, std::optional(true));
}

} // namespace
} // namespace tunedeck
