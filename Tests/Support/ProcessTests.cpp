#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Support/Async/Process.h"
#include "TunedeckCore/Support/Async/TaskScope.h"

#include <unistd.h>

#include <csignal>
#include <memory>

namespace tunedeck::test {
namespace {

ProcessRequest shell(const QString& script) {
    return {.program = u"/bin/sh"_s, .arguments = {u"-c"_s, script}, .keepOutput = true};
}

TEST(ProcessTest, ReturnsStatusAndOutputWithoutBlocking) {
    const Heartbeat heartbeat;
    const auto result = runToEnd(runProcess(shell(u"echo out; echo err >&2; read x || sleep 0.1; exit 7"_s), {}));
    ASSERT_TRUE(result);
    EXPECT_EQ(result->exitStatus, 7);
    EXPECT_EQ(result->output, "out\n");
    EXPECT_GT(heartbeat.ticks(), 10);
    EXPECT_EQ(runToEnd(runProcess(shell(u"kill -TERM $$"_s), {}))->exitStatus, 128 + SIGTERM);
}

TEST(ProcessTest, LimitsTheOutputKept) {
    auto request = shell(u"head -c 3000000 /dev/zero; echo end"_s);
    EXPECT_EQ(runToEnd(runProcess(request, {}))->output, QByteArray(1024 * 1024, '\0'));
    request.outputLimit = 10'000'000;
    EXPECT_TRUE(runToEnd(runProcess(request, {}))->output.endsWith("\0end\n"));
    request.keepOutput = false;
    EXPECT_EQ(runToEnd(runProcess(request, {}))->output, QByteArray());
}

TEST(ProcessTest, EndsTheWholeGroupOfAnIsolatedProgram) {
    const TemporaryHome home;
    auto request = shell(u"sleep 1000 & echo $! >> pids; [ $1 ] || wait"_s);
    request.isolatedIn = home.path();
    request.timeLimit = 200ms;
    EXPECT_FALSE(runToEnd(runProcess(request, {}))) << "killed by the time limit";
    request.arguments += {u"-"_s, u"exits"_s};
    EXPECT_TRUE(runToEnd(runProcess(request, {})));
    const auto pids = home.read(u"pids"_s).trimmed().split('\n');
    ASSERT_EQ(pids.size(), 2);
    for (const auto& pid : pids) {
        EXPECT_TRUE(runUntil([&] { return ::kill(pid.toInt(), 0) != 0; }));
    }
}

TEST(ProcessTest, ReportsAProgramThatCannotBeStarted) {
    const TemporaryHome home;
    for (const auto& program : {u"/nonexistent/program"_s, home.path(), home.write(u"file"_s, "text")}) {
        const auto result = runToEnd(runProcess({.program = program}, {}));
        ASSERT_FALSE(result);
        EXPECT_TRUE(result.error().startsWith(program + u": "_s)) << result.error().toStdString();
    }
    EXPECT_FALSE(startDetached(u"/nonexistent/program"_s, {}));
}

/// Destroyed by its own coroutine when that resumes.
struct Owner {
    std::unique_ptr<Owner>& self;
    bool& ended;
    TaskScope scope = {};

    QCoro::Task<> run(QString script) {
        const auto stop = scope.token();
        bool& done = ended;
        co_await runProcess(shell(script), stop);
        if (!stop.stop_requested()) {
            self.reset();
        }
        done = true;
    }
};

TEST(ProcessTest, KillsTheProgramWhenTheOwnerIsDestroyed) {
    const TemporaryHome home;
    bool ended = false;
    std::unique_ptr<Owner> owner;
    owner.reset(new Owner{owner, ended});
    spawn(owner->run(u"echo $$ > %1; trap '' TERM; while :; do sleep 0.05; done"_s.arg(home.path(u"pid"_s))));
    ASSERT_TRUE(runUntil([&] { return home.read(u"pid"_s).endsWith('\n'); }));
    const auto pid = home.read(u"pid"_s).trimmed().toInt();
    ASSERT_EQ(::kill(pid, 0), 0);
    owner.reset();
    EXPECT_TRUE(ended);
    EXPECT_TRUE(runUntil([&] { return ::kill(pid, 0) != 0; }));
}

TEST(ProcessTest, AllowsDestroyingTheOwnerOnCompletion) {
    bool ended = false;
    std::unique_ptr<Owner> owner;
    owner.reset(new Owner{owner, ended});
    spawn(owner->run(u"exit 0"_s));
    EXPECT_TRUE(runUntil([&] { return ended; }));
    EXPECT_FALSE(owner);
    std::stop_source stopped;
    stopped.request_stop();
    EXPECT_FALSE(runToEnd(runProcess(shell(u"exit 0"_s), stopped.get_token())));
}

TEST(ProcessTest, StartsDetachedProgramsInTheirOwnSession) {
    const TemporaryHome home;
    ASSERT_TRUE(startDetached(u"/bin/sh"_s, {u"-c"_s, u"ps -o sid= -p $$ > %1"_s.arg(home.path(u"session"_s))}));
    ASSERT_TRUE(runUntil([&] { return home.read(u"session"_s).endsWith('\n'); }));
    EXPECT_NE(home.read(u"session"_s).trimmed().toInt(), ::getsid(0));
}

} // namespace
} // namespace tunedeck::test
