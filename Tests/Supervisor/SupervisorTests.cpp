#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Installation/Launchctl.h"
#include "TunedeckCore/Installation/ServiceInstaller.h"
#include "TunedeckCore/Support/Async/Process.h"
#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckMenu/Platform/Linux/Service/SystemdUserManager.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/stat.h>

#include <csignal>

namespace tunedeck::test {
namespace {

/// The service: records its environment, then runs until it is terminated.
const QByteArray service = R"(#!/bin/sh
printf '%s\n' "$0|$PWD|$PATH|$RUST_LOG" > "$PWD/seen.new" && mv "$PWD/seen.new" "$PWD/seen"
echo out; echo err >&2
exec sleep 1000
)";

const QString target = u"gui/501/com.brightfold.tunedeck"_s;

/// Uses a private systemd user manager (tools/lib/user-manager).
class SupervisorTest : public testing::TestWithParam<QString> {
protected:
    void SetUp() override {
        if (!QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/manager.log"_s)) {
            GTEST_SKIP() << "don't run this on your own service manager; use tools/lib/user-manager";
        }
        ASSERT_TRUE(createFolder(m_home));
        writeProgram(service);
    }

    void TearDown() override {
        operation({u"bootout"_s, target});
        QFile::remove(SystemdUserManager::ofUser().unitFolder + u"/com.brightfold.tunedeck.service"_s);
    }

    void writeProgram(const QByteArray& bytes) {
        ASSERT_TRUE(writeFileAtomically(m_bundled, bytes));
        ::chmod(QFile::encodeName(m_bundled).constData(), 0755);
    }

    std::int32_t operation(const QStringList& arguments) { return runToEnd(m_launchctl(arguments, {})); }

    ServiceInstaller installer() { return {m_home, m_bundled, 501, m_launchctl, m_clock}; }

    std::string install() { return runToEnd(installer().ensureInstalled({})).description().toStdString(); }

    /// Installs with another delay before restarts, in seconds.
    void installWithPause(std::int64_t pause) {
        ASSERT_EQ(install(), "installed(serviceChanged: true, plistChanged: true)");
        auto plist = installer().plist();
        plist.insert_or_assign(u"ThrottleInterval"_s, PropertyValue(pause));
        ASSERT_TRUE(writeFileAtomically(installer().plistURL(), xmlPropertyList(plist)));
        ASSERT_EQ(operation({u"bootout"_s, target}), 0);
        ASSERT_EQ(operation({u"bootstrap"_s, u"gui/501"_s, installer().plistURL()}), 0);
    }

    /// The id of the service's process; 0 when it isn't running.
    static int pid() {
        const ProcessRequest request{.program = u"systemctl"_s,
                                     .arguments = {u"--user"_s, u"show"_s, u"--property=MainPID"_s, u"--value"_s,
                                                   u"com.brightfold.tunedeck.service"_s},
                                     .keepOutput = true};
        return runToEnd(runProcess(request, {}))->output.trimmed().toInt();
    }

    static bool isEnabled() {
        return QFileInfo(SystemdUserManager::ofUser().unitFolder +
                         u"/default.target.wants/com.brightfold.tunedeck.service"_s)
            .isSymLink();
    }

    /// The state, the last exit and whether the unit has started just now.
    static std::string state() {
        const auto seen = runToEnd(SystemdUserManager::ofUser().state(u"com.brightfold.tunedeck"_s, {}));
        if (!seen) {
            return "unreachable";
        }
        const auto age = seen->since ? seen->since->secsTo(QDateTime::currentDateTimeUtc()) : 0;
        return std::array{"unknown", "stopped", "restarting", "running"}.at(static_cast<std::size_t>(seen->state)) +
               (seen->lastExit ? ", " + seen->lastExit->toStdString() : "") +
               (seen->restarts > 0 ? ", restarted" : "") + (age >= 0 && age < 100 ? "" : ", wrong start");
    }

    [[nodiscard]] QByteArray read(const QString& relative) const {
        return readFile(m_home + u'/' + relative).value_or(QByteArray());
    }

    const QTemporaryDir m_folder;
    QString m_home = m_folder.filePath(u"home"_s);
    const QString m_bundled = m_folder.filePath(u"bundled"_s);
    ManualClock m_clock;
    Launchctl m_launchctl = [this](const QStringList& arguments, const std::stop_token& stop) {
        const auto agentFolder = QFileInfo(installer().plistURL()).path();
        return SystemdUserManager::ofUser(agentFolder).launchctl()(arguments, stop);
    };
};

TEST_P(SupervisorTest, RunsTheServiceAsThePropertyListSays) {
    m_home = m_folder.filePath(GetParam());
    ASSERT_TRUE(createFolder(m_home));
    EXPECT_EQ(install(), "installed(serviceChanged: true, plistChanged: true)");
    EXPECT_EQ(operation({u"print"_s, target}), 0);
    EXPECT_TRUE(isEnabled());
    ASSERT_TRUE(runUntil([&] { return !read(u".tunedeck/seen"_s).isEmpty(); }));
    const auto seen = m_home + u"/.tunedeck/bin/tunedeck|"_s + m_home + u"/.tunedeck|"_s + m_home +
                      u"/.local/bin:/opt/homebrew/bin:/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin|tunedeck=info\n"_s;
    EXPECT_EQ(read(u".tunedeck/seen"_s).toStdString(), seen.toStdString());
    EXPECT_TRUE(runUntil([&] { return read(u"Library/Logs/tunedeck.log"_s) == "err\n"; }));
    EXPECT_EQ(read(u"Library/Logs/tunedeck.out.log"_s), "out\n");
    const auto running = pid();
    EXPECT_GT(running, 0);
    EXPECT_EQ(install(), "upToDate");
    EXPECT_EQ(pid(), running);
}

INSTANTIATE_TEST_SUITE_P(Homes, SupervisorTest,
                         testing::Values(u"home"_s, u"DJ's \"set\" 100%h $HOME ${x} back\\slash\\t"_s,
                                         u"Ünïcode 音楽 😀 a=b;c #d"_s, u" -~@:!+ "_s),
                         [](const auto& parameter) { return "Home" + std::to_string(parameter.index); });

TEST_F(SupervisorTest, RestartsAServiceThatDies) {
    installWithPause(0);
    for (const int signal : {SIGKILL, SIGTERM}) {
        const auto before = pid();
        ASSERT_GT(before, 0);
        ASSERT_EQ(::kill(before, signal), 0);
        ASSERT_TRUE(runUntil([&] { return pid() != before && pid() > 0; }));
    }
    EXPECT_EQ(operation({u"print"_s, target}), 0);
    EXPECT_EQ(state(), "running, restarted");
}

TEST_F(SupervisorTest, ReportsAServiceThatWaitsForItsRestartAsLoaded) {
    installWithPause(1000);
    ASSERT_EQ(::kill(pid(), SIGKILL), 0);
    ASSERT_TRUE(runUntil([&] { return pid() == 0; }));
    EXPECT_EQ(operation({u"print"_s, target}), 0);
    EXPECT_EQ(state(), "restarting, signal 9");
    EXPECT_EQ(operation({u"kickstart"_s, target}), 0); // starts without waiting
    EXPECT_GT(pid(), 0);
}

TEST_F(SupervisorTest, RestartReplacesTheProcessAndStartKeepsIt) {
    ASSERT_EQ(install(), "installed(serviceChanged: true, plistChanged: true)");
    const auto first = pid();
    EXPECT_EQ(operation({u"kickstart"_s, target}), 0);
    EXPECT_EQ(pid(), first);
    EXPECT_EQ(operation({u"kickstart"_s, u"-k"_s, target}), 0);
    const auto second = pid();
    EXPECT_TRUE(second > 0 && second != first);
    writeProgram(QByteArray(service).replace("echo out", "echo new"));
    EXPECT_EQ(install(), "installed(serviceChanged: true, plistChanged: false)");
    EXPECT_TRUE(pid() > 0 && pid() != second);
    EXPECT_TRUE(runUntil([&] { return read(u"Library/Logs/tunedeck.out.log"_s).endsWith("new\n"); }));
}

TEST_F(SupervisorTest, UnloadsAndLoadsTheService) {
    EXPECT_EQ(operation({u"print"_s, target}), 4);
    EXPECT_EQ(state(), "unknown");
    EXPECT_NE(operation({u"kickstart"_s, u"-k"_s, target}), 0);
    EXPECT_NE(operation({u"bootout"_s, target}), 0);
    const auto manager = SystemdUserManager::ofUser();
    const auto unit = manager.unitFolder + u"/com.brightfold.tunedeck.service"_s;
    const auto outdated = [&] { return manager.outdatedUnit(u"com.brightfold.tunedeck"_s, installer().plist()); };
    EXPECT_EQ(outdated(), unit);
    ASSERT_EQ(install(), "installed(serviceChanged: true, plistChanged: true)");
    EXPECT_EQ(outdated(), std::nullopt);
    EXPECT_EQ(state(), "running");
    EXPECT_EQ(operation({u"bootout"_s, target}), 0);
    EXPECT_EQ(state(), "stopped");
    EXPECT_EQ(pid(), 0);
    EXPECT_EQ(operation({u"print"_s, target}), 3);
    EXPECT_FALSE(isEnabled());
    EXPECT_EQ(operation({u"kickstart"_s, u"-k"_s, target}), 0); // also starts a stopped service
    EXPECT_GT(pid(), 0);
    EXPECT_EQ(operation({u"bootout"_s, target}), 0);
    EXPECT_EQ(install(), "upToDate");
    EXPECT_GT(pid(), 0);
    EXPECT_TRUE(isEnabled());
}

TEST_F(SupervisorTest, RepairsWhatTheManagerRuns) {
    ASSERT_EQ(install(), "installed(serviceChanged: true, plistChanged: true)");
    const auto unit = SystemdUserManager::ofUser().unitFolder + u"/com.brightfold.tunedeck.service"_s;
    const auto text = readFile(unit).value();
    const std::vector<std::function<void()>> faults{
        [&] { QDir(m_home + u"/Library/Logs"_s).removeRecursively(); },
        [&] { ASSERT_TRUE(writeFileAtomically(unit, text + "# edited\n")); },
        [&] { ASSERT_TRUE(writeFileAtomically(unit, text)); }, // a reload is missing
    };
    for (const auto& breakIt : faults) {
        const auto before = pid();
        breakIt();
        EXPECT_EQ(operation({u"print"_s, target}), 78);
        EXPECT_EQ(install(), "upToDate");
        EXPECT_EQ(operation({u"print"_s, target}), 0);
        EXPECT_EQ(readFile(unit), text);
        EXPECT_TRUE(pid() > 0 && pid() != before);
    }
    EXPECT_TRUE(runUntil([&] { return read(u"Library/Logs/tunedeck.log"_s).startsWith("err\n"); }));
}

TEST_F(SupervisorTest, ReportsFailuresByExitStatus) {
    writeProgram("#!/nonexistent/interpreter\n");
    const auto ending = endingOf(installer().ensureInstalled({}));
    while (!ending->isThere()) {
        ASSERT_TRUE(runUntil([&] { return ending->isThere() || m_clock.sleeping() > 0; }));
        m_clock.advance(std::chrono::milliseconds(500));
    }
    EXPECT_EQ(ending->value->message, u"launchctl bootstrap exited 1"_s);
    EXPECT_EQ(operation({u"bootstrap"_s, u"gui/501"_s, m_folder.filePath(u"missing.plist"_s)}), 66);
    EXPECT_EQ(operation({u"unload"_s, target}), 64);
    const auto missing =
        SystemdUserManager{.unitFolder = m_folder.path(), .systemctl = u"/nonexistent/systemctl"_s}.launchctl();
    EXPECT_EQ(runToEnd(missing({u"print"_s, target}, {})), -1);
    const auto blocked = SystemdUserManager{.unitFolder = m_bundled + u"/units"_s}.launchctl();
    EXPECT_EQ(runToEnd(blocked({u"bootstrap"_s, u"gui/501"_s, installer().plistURL()}, {})), 73);
}

TEST_F(SupervisorTest, FailsAtOnceWithoutAUserManager) {
    const auto plist = m_folder.filePath(u"service.plist"_s);
    ASSERT_TRUE(writeFileAtomically(plist, xmlPropertyList(installer().plist())));
    const auto runtime = qgetenv("XDG_RUNTIME_DIR");
    for (const auto& folder : {QByteArray("/nonexistent"), QByteArray()}) {
        folder.isEmpty() ? qunsetenv("XDG_RUNTIME_DIR") : qputenv("XDG_RUNTIME_DIR", folder);
        EXPECT_EQ(state(), "unreachable");
        for (const auto& arguments :
             {QStringList{u"print"_s, target}, QStringList{u"bootout"_s, target}, QStringList{u"kickstart"_s, target},
              QStringList{u"bootstrap"_s, u"gui/501"_s, plist}}) {
            EXPECT_EQ(operation(arguments), 1) << arguments.join(u' ').toStdString();
        }
    }
    qputenv("XDG_RUNTIME_DIR", runtime);
}

} // namespace
} // namespace tunedeck::test
