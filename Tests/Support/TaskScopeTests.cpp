#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Support/Async/TaskScope.h"

#include <QString>

#include <memory>
#include <stdexcept>

namespace tunedeck {
namespace {

using namespace test;

/// Runs nested coroutines on timers, descriptors and an injected clock.
class Owner {
public:
    Owner(Clock& clock, int& steps) : m_clock(clock), m_steps(steps) {}
    void start() { spawn(work()); }
    void stop() { m_scope.stop(); }

private:
    QCoro::Task<> step(std::stop_token stop) {
        co_await m_clock.sleep(10ms, stop);
        if (stop.stop_requested()) {
            co_return;
        }
        ++m_steps;
        co_await m_system.sleep(1ms, stop);
        if (stop.stop_requested()) {
            co_return;
        }
        ++m_steps;
        co_await m_system.sleepThroughSuspend(1ms, stop);
        if (stop.stop_requested()) {
            co_return;
        }
        ++m_steps;
    }

    QCoro::Task<> work() {
        const auto stop = m_scope.token();
        for (int round = 0; round < 2; ++round) {
            co_await step(stop);
            if (stop.stop_requested()) {
                co_return;
            }
            ++m_steps;
        }
    }

    Clock& m_clock;
    int& m_steps;
    SystemClock m_system;
    TaskScope m_scope;
};

TEST(TaskScope, AllowsDestroyingTheOwnerAtEachSuspensionPoint) {
    for (int goal = 0; goal <= 8; ++goal) {
        int steps = 0;
        ManualClock clock;
        auto owner = std::make_unique<Owner>(clock, steps);
        owner->start();
        // After the third step of a round the fourth follows without a suspension.
        const int last = goal % 4 == 3 ? goal + 1 : goal;
        ASSERT_TRUE(test::runUntil([&] {
            if (steps < last && clock.sleeping() > 0) {
                clock.advance(10ms);
            }
            return steps >= last;
        }));
        owner.reset();
        EXPECT_EQ(clock.sleeping(), 0U);
        clock.advance(1h);
        test::runDueEvents();
        EXPECT_EQ(steps, last);
    }
}

QCoro::Task<> holdsOwner(std::unique_ptr<Owner> owner, Clock& clock, std::stop_token stop) {
    owner->start();
    co_await clock.sleep(1h, stop);
}

TEST(TaskScope, AllowsDestroyingTheScopeWhileStopping) {
    struct Holder {
        ManualClock clock;
        int steps = 0;
        std::unique_ptr<TaskScope> scope = std::make_unique<TaskScope>();
        QCoro::Task<> hold(std::stop_token stop) {
            co_await clock.sleep(1h, stop);
            scope.reset();
        }
    } holder;
    spawn(holder.hold(holder.scope->token()));
    const auto owner = test::endingOf(
        holdsOwner(std::make_unique<Owner>(holder.clock, holder.steps), holder.clock, holder.scope->token()));
    holder.scope->stop();
    EXPECT_FALSE(holder.scope);
    EXPECT_TRUE(owner->isThere());
    EXPECT_EQ(holder.clock.sleeping(), 0U);
}

QCoro::Task<> failing(Clock& clock, std::stop_token stop) {
    co_await clock.sleep(1ms, stop);
    throw std::runtime_error("no such thing");
}

TEST(TaskScope, LogsAnEscapedException) {
    static QStringList messages;
    messages.clear();
    const auto previous = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& message) { messages << message; });
    ManualClock clock;
    TaskScope scope;
    spawn(failing(clock, scope.token()));
    clock.advance(1ms);
    qInstallMessageHandler(previous);
    EXPECT_EQ(messages, QStringList{u"a task ended with an exception: no such thing"_s});
}

} // namespace
} // namespace tunedeck
