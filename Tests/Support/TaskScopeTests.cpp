#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Support/Async/Background.h"
#include "TunedeckCore/Support/Async/TaskScope.h"

#include <QString>

#include <memory>
#include <stdexcept>

namespace tunedeck::test {
namespace {

/// Runs nested coroutines on timers, descriptors and an injected clock.
class Owner {
public:
    Owner(Clock& clock, int& steps) : m_clock(clock), m_steps(steps) {}
    void start() { spawn(work()); }

private:
    QCoro::Task<bool> counted(QCoro::Task<bool> sleep) {
        const bool slept = co_await sleep;
        m_steps += slept ? 1 : 0;
        co_return slept;
    }

    QCoro::Task<> work() {
        const auto stop = m_scope.token();
        for (bool goesOn = true; goesOn;) {
            goesOn = co_await counted(m_clock.sleep(10ms, stop));
            if (goesOn) {
                goesOn = co_await counted(m_system.sleep(1ms, stop));
            }
            if (goesOn) {
                goesOn = co_await counted(m_system.sleepThroughSuspend(1ms, stop));
            }
        }
    }

    Clock& m_clock;
    int& m_steps;
    SystemClock m_system;
    TaskScope m_scope;
};

TEST(TaskScope, AllowsDestroyingTheOwnerAtEachSuspensionPoint) {
    for (int goal = 0; goal <= 4; ++goal) {
        int steps = 0;
        ManualClock clock;
        auto owner = std::make_unique<Owner>(clock, steps);
        owner->start();
        ASSERT_TRUE(runUntil([&] {
            if (steps < goal && clock.sleeping() > 0) {
                clock.advance(10ms);
            }
            return steps >= goal;
        }));
        owner.reset();
        EXPECT_EQ(clock.sleeping(), 0U);
        clock.advance(1h);
        runDueEvents();
        EXPECT_EQ(steps, goal);
    }
}

TEST(TaskScope, AllowsDestroyingTheScopeWhileStopping) {
    struct Holder {
        ManualClock clock;
        std::unique_ptr<TaskScope> scope = std::make_unique<TaskScope>();
        QCoro::Task<> hold(std::stop_token stop) {
            co_await clock.sleep(1h, stop);
            scope.reset();
        }
    } holder;
    spawn(holder.hold(holder.scope->token()));
    const auto other = endingOf(holder.clock.sleep(1h, holder.scope->token()));
    holder.scope->stop();
    EXPECT_FALSE(holder.scope);
    EXPECT_TRUE(other->isThere());
    EXPECT_EQ(holder.clock.sleeping(), 0U);
}

QCoro::Task<> failing(Clock& clock, std::stop_token stop) {
    co_await clock.sleep(1ms, stop);
    throw std::runtime_error("no such thing");
}

TEST(TaskScope, LogsAnEscapedException) {
    static QStringList messages;
    const auto previous = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& message) { messages << message; });
    ManualClock clock;
    TaskScope scope;
    spawn(failing(clock, scope.token()));
    clock.advance(1ms);
    qInstallMessageHandler(previous);
    EXPECT_EQ(messages, QStringList{u"a task ended with an exception: no such thing"_s});
}

TEST(BackgroundTest, RethrowsTheExceptionOfTheWork) {
    const std::function<int(std::stop_token)> work = [](const std::stop_token&) -> int {
        throw std::runtime_error("broken");
    };
    std::string caught;
    const auto run = [](std::function<int(std::stop_token)> what, std::string& message) -> QCoro::Task<> {
        try {
            co_await inBackground<int>(std::move(what), {});
        } catch (const std::runtime_error& error) {
            message = error.what();
        }
    };
    runToEnd(run(work, caught));
    EXPECT_EQ(caught, "broken");
}

} // namespace
} // namespace tunedeck::test
