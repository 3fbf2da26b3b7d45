#include "Tests/Helpers/Desktop/Program.h"
#include "Tests/Helpers/Test.h"
#include "TunedeckMenu/Platform/Linux/Desktop/SessionBus.h"
#include "TunedeckMenu/Platform/Linux/Instance/LinuxReopenListener.h"
#include "TunedeckMenu/Platform/Processes.h"
#include "TunedeckMenu/Platform/SingleInstance.h"

#include <QCoreApplication>
#include <QFile>
#include <QSysInfo>

#include <signal.h>
#include <unistd.h>

#include <tuple>
#include <vector>

namespace tunedeck::test {
namespace {

class SingleInstanceTest : public testing::Test {
protected:
    /// Starts an instance in another process (see Roles.h).
    [[nodiscard]] std::unique_ptr<Program> start(int patience = 5000) const {
        return std::make_unique<Program>(QCoreApplication::applicationFilePath(),
                                         QStringList{u"--instance"_s, m_lockPath, QString::number(patience)},
                                         m_environment);
    }

    /// The result of an instance in another process that isn't the first.
    [[nodiscard]] std::string resultOfStart(int patience = 5000) const {
        const auto process = start(patience);
        auto result = process->nextLine();
        EXPECT_TRUE(process->exits());
        return result;
    }

    /// A lock file as `process` would have written it with this program.
    void writeLock(pid_t process) const {
        m_home.write(u"app.lock"_s, QByteArray::number(process) + "\nPlatformTests\n" +
                                        QSysInfo::machineHostName().toUtf8() + '\n' + QSysInfo::machineUniqueId() +
                                        '\n' + QSysInfo::bootUniqueId() + '\n');
    }

    const TemporaryHome m_home;
    const QString m_lockPath = m_home.path(u"app.lock"_s);
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
};

TEST_F(SingleInstanceTest, ASecondStartReopensTheFirstWithItsActivationToken) {
    const auto first = start();
    ASSERT_EQ(first->nextLine(), "first");
    EXPECT_EQ(resultOfStart(), "handed over");
    EXPECT_EQ(first->nextLine(), "reopen");
    m_environment.insert(u"DESKTOP_STARTUP_ID"_s, u"token-7"_s);
    EXPECT_EQ(resultOfStart(), "handed over");
    EXPECT_EQ(first->nextLine(), "reopen token-7");
    m_environment.insert(u"XDG_ACTIVATION_TOKEN"_s, u"token-8"_s);
    EXPECT_EQ(resultOfStart(), "handed over");
    EXPECT_EQ(first->nextLine(), "reopen token-8");
    first->closeInput();
    EXPECT_EQ(start()->nextLine(), "first") << "while the first one exits";
    EXPECT_TRUE(first->exits());
}

TEST_F(SingleInstanceTest, OneOfManySimultaneousStartsIsTheFirstEvenAfterACrash) {
    for (int round = 0; round < 3; ++round) {
        std::vector<std::unique_ptr<Program>> starts;
        for (int i = 0; i < 6; ++i) {
            starts.push_back(start(9000));
        }
        std::vector<Program*> firsts;
        for (const auto& start : starts) {
            const auto result = start->nextLine();
            if (result == "first") {
                firsts.push_back(start.get());
            } else {
                EXPECT_EQ(result, "handed over");
            }
        }
        ASSERT_EQ(firsts.size(), 1U);
        firsts.front()->kill();
        EXPECT_TRUE(QFile::exists(m_lockPath));
    }
}

TEST_F(SingleInstanceTest, WaitsForAFirstThatIsStillStarting) {
    SingleInstance instance(m_lockPath);
    ASSERT_EQ(instance.start(0ms), SingleInstance::Start::First);
    const auto second = start();
    runUntil([] { return false; }, 300ms); // longer than the second start takes to ask for the first time
    SessionBus bus;
    LinuxReopenListener listener(bus);
    int requests = 0;
    QObject::connect(&listener, &ReopenListener::reopenRequested, [&requests] { ++requests; });
    listener.start();
    EXPECT_TRUE(runUntil([&] { return requests == 1; }));
    EXPECT_EQ(second->nextLine(), "handed over");
    listener.Activate({{u"desktop-startup-id"_s, u"token-5"_s}}); // some desktops send only this one
    EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "token-5");
    qunsetenv("XDG_ACTIVATION_TOKEN");
    qunsetenv("DESKTOP_STARTUP_ID");
}

TEST_F(SingleInstanceTest, ReportsAFirstThatHangsOrCannotBeReached) {
    const auto first = start();
    ASSERT_EQ(first->nextLine(), "first");
    ::kill(first->id(), SIGSTOP);
    EXPECT_EQ(resultOfStart(300), "already running but not responding");
    m_environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent"_s);
    EXPECT_EQ(resultOfStart(), "already running, but its window can't be shown without a session bus");
    EXPECT_EQ(SingleInstance(m_lockPath).takeOver(300ms), std::unexpected(u"the running application doesn't exit"_s));
    first->kill();
}

TEST_F(SingleInstanceTest, TakesOverFromARunningOne) {
    EXPECT_EQ(SingleInstance(m_lockPath).takeOver(), false);
    m_environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent"_s);
    const auto first = start();
    ASSERT_EQ(first->nextLine(), "first");
    SingleInstance instance(m_lockPath);
    EXPECT_EQ(instance.takeOver(), true);
    EXPECT_TRUE(first->exits());
    EXPECT_EQ(resultOfStart(), "already running, but its window can't be shown without a session bus");
}

TEST_F(SingleInstanceTest, IgnoresTheLockOfADeadProcessWhoseIdWasReused) {
    Program other(u"sleep"_s, {u"60"_s}, m_environment);
    writeLock(other.id());
    EXPECT_EQ(SingleInstance(m_lockPath).takeOver(), false);
    writeLock(other.id());
    EXPECT_EQ(SingleInstance(m_lockPath).start(0ms), SingleInstance::Start::First);
    terminateSameProgram(other.id());
    EXPECT_FALSE(waitForExit(other.id(), 100ms));
    other.kill();
    EXPECT_TRUE(waitForExit(other.id(), 5s));
}

TEST_F(SingleInstanceTest, RunsWithoutALockFileWhereNoneCanBeMade) {
    const auto file = m_home.write(u"file"_s, {});
    EXPECT_EQ(SingleInstance(file + u"/app.lock"_s).start(0ms), SingleInstance::Start::First);
    const auto missing = m_home.path(u"missing"_s);
    EXPECT_EQ(SingleInstance(missing + u"/app.lock"_s).takeOver(), false);
    EXPECT_FALSE(QFile::exists(missing));
    SingleInstance instance(missing + u"/app.lock"_s);
    EXPECT_EQ(instance.start(0ms), SingleInstance::Start::First);
    EXPECT_TRUE(QFile::exists(missing + u"/app.lock"_s));
}

TEST_F(SingleInstanceTest, LocksInTheRuntimeFolderOrElseInTheHome) {
    const auto runtime = qgetenv("XDG_RUNTIME_DIR");
    const auto name = u"/com.brightfold.tunedeck.menu.lock"_s;
    const auto other = QFile::encodeName(m_home.path());
    const QByteArray foreign =
        ::chown(other.constData(), 65534, 65534) == 0 ? other : "/"; // only root can give it away
    for (const auto& unusable : {QByteArray("."), QByteArray("/nonexistent"), QByteArray(), foreign}) {
        qputenv("XDG_RUNTIME_DIR", unusable);
        EXPECT_EQ(SingleInstance::defaultLockPath(), m_home.path(u".tunedeck"_s) + name);
    }
    std::ignore = ::chown(other.constData(), ::getuid(), ::getgid());
    qputenv("XDG_RUNTIME_DIR", other);
    EXPECT_EQ(SingleInstance::defaultLockPath(), m_home.path() + name);
    qputenv("XDG_RUNTIME_DIR", runtime);
}

} // namespace
} // namespace tunedeck::test
