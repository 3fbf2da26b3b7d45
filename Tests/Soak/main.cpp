#include "Tests/Helpers/RunTask.h"
#include "Tests/Helpers/TestServer.h"
#include "Tests/Peers/NotificationServer.h"
#include "Tests/Peers/TrayHost.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <random>
#include <utility>
#include <vector>

namespace tunedeck::soak {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using test::runUntil;

constexpr auto responseTimeout = 20s; ///< whatever takes longer counts as a hang

struct Options {
    double minutes = 60;
    unsigned seed = 0;
    bool limitsMemory = true;
};

/// What the application's process uses.
const QStringList figureNames{u"heap (KiB)"_s, u"private memory (KiB)"_s, u"descriptors"_s, u"threads"_s};
using Figures = std::array<double, 4>;

void wait(int milliseconds) {
    runUntil([] { return false; }, std::chrono::milliseconds(milliseconds));
}

void print(const QString& line) {
    std::puts(line.toUtf8().constData());
    std::fflush(stdout);
}

void systemctl(const QStringList& arguments) {
    QProcess process;
    process.start(u"systemctl"_s,
                  QStringList{u"--user"_s} + arguments + QStringList{u"com.brightfold.tunedeck.service"_s});
    process.waitForFinished();
}

/// The number after `name` in a file of /proc.
double numberIn(const QString& path, const QByteArray& name) {
    QFile file(path);
    const auto text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    return text.mid(std::max<qsizetype>(text.indexOf(name), 0) + name.size()).simplified().split(' ')[0].toDouble();
}

/// Ignores the peaks of windows and lists that happen to be open.
double lowerQuartile(std::vector<double> values) {
    const auto quarter = values.begin() + std::ssize(values) / 4;
    std::ranges::nth_element(values, quarter);
    return *quarter;
}

/// Runs the application, disturbs it in random ways and collects failures.
class SoakTest {
public:
    explicit SoakTest(const Options& options) : m_options(options), m_random(options.seed) { m_time.start(); }
    ~SoakTest() {
        m_application.kill();
        m_application.waitForFinished();
        stopBus();
    }

    /// True when it passed.
    bool run() {
        prepareHome();
        repair();
        startApplication();
        for (const auto& view : {u"window"_s, u"onboarding"_s, u"popover"_s}) {
            wait(1000);
            command(view); // loads everything that is loaded on demand
        }
        disturbAtRandom();
        if (!hasFailed()) {
            quit();
            checkGrowth();
        }
        report();
        return !hasFailed();
    }

private:
    void fail(const QString& failure) { m_failures << failure; }
    [[nodiscard]] bool hasFailed() const { return !m_failures.isEmpty(); }
    int random(int most) { return std::uniform_int_distribution(0, most)(m_random); }
    const auto& oneOf(const auto& list) {
        return list[static_cast<std::size_t>(random(static_cast<int>(list.size()) - 1))];
    }

    /// Installs the application and the demo service in the empty home folder.
    void prepareHome() const {
        const std::filesystem::path home(m_home.toStdString());
        const auto contents = home / "Applications/Tunedeck.app/Contents";
        create_directories(home / "Applications");
        create_directories(home / ".tunedeck");
        create_directories(home / "bin");
        using std::filesystem::copy_options;
        copy(TUNEDECK_BUNDLE, contents.parent_path(), copy_options::recursive | copy_options::copy_symlinks);
        copy_file(SOAK_APPLICATION, contents / "MacOS/Tunedeck", copy_options::overwrite_existing);
        rename(contents / "Helpers/tunedeck", home / "demo-service"); // the application copies only the script
        std::ofstream(contents / "Helpers/tunedeck")
            << "#!/bin/sh\nexec \"$HOME/demo-service\" --reset --speed 60 --scenario \"$(cat \"$HOME/scenario\")\"\n";
        permissions(contents / "Helpers/tunedeck", std::filesystem::perms::owner_all);
        std::ofstream(home / "scenario") << "lively";
        std::ofstream(home / ".tunedeck/settings.json") << R"({"onboarded": true})";
        create_symlink("/bin/true", home / "bin/xdg-open"); // no browser opens on a developer's machine
    }

    void startApplication() {
        qputenv("PATH", m_home.toUtf8() + "/bin:/usr/bin:/bin");
        qunsetenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON");
        m_application.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_application.start(m_home + u"/Applications/Tunedeck.app/Contents/MacOS/Tunedeck"_s, QStringList());
        m_application.waitForStarted();
    }

    /// The response to a command; a failure when the application crashes or hangs.
    QString command(const QString& line) {
        m_application.write(line.toUtf8() + '\n');
        const auto hasEnded = [this] { return m_application.state() == QProcess::NotRunning; };
        runUntil([&] { return m_application.canReadLine() || hasEnded(); }, responseTimeout);
        if (hasEnded()) {
            fail(u"crashed or quit unexpectedly (status or signal %1)"_s.arg(m_application.exitCode()));
        } else if (!m_application.canReadLine()) {
            fail(u"hangs: no response to “%1” within %2 s"_s.arg(line).arg(responseTimeout / 1s));
        }
        return QString::fromUtf8(m_application.readLine()).trimmed();
    }

    void quit() {
        m_application.write("quit\n");
        if (!runUntil([this] { return m_application.state() == QProcess::NotRunning; }, responseTimeout)) {
            fail(u"does not quit"_s);
        } else if (m_application.exitStatus() != QProcess::NormalExit || m_application.exitCode() != 0) {
            fail(u"fails while it quits (status or signal %1)"_s.arg(m_application.exitCode()));
        }
    }

    void disturbAtRandom() {
        const auto length = static_cast<qint64>(m_options.minutes * 60'000);
        const auto interval = std::clamp<qint64>(length / 60, 4000, 60'000);
        for (qint64 nextSample = 0; !hasFailed() && m_time.elapsed() < length;) {
            disturb();
            wait(30 + random(400));
            if (m_repairAt != 0 && m_time.elapsed() >= m_repairAt) {
                repair();
            }
            if (m_time.elapsed() >= nextSample) {
                nextSample = m_time.elapsed() + interval;
                sample();
            }
        }
    }

    /// Causes one random event.
    void disturb() {
        struct Event {
            int weight; ///< all together 100
            QString name;
            std::function<void()> cause;
        };
        static const std::vector<Event> events{
            {47, u"press a control"_s, [this] { pressControl(); }},
            {8, u"click the tray icon"_s, [this] { m_tray ? m_tray->activateItem() : void(); }},
            {4, u"click a notification"_s, [this] { clickNotification(); }},
            {4, u"toggle the popover"_s, [this] { command(u"popover"_s); }},
            {4, u"open the window"_s, [this] { command(u"window"_s); }},
            {2, u"open the first-run window"_s, [this] { command(u"onboarding"_s); }},
            {5, u"close the windows"_s, [this] { command(u"close"_s); }},
            {3, u"crash the service"_s, [this] { breakService({u"kill"_s, u"--signal=KILL"_s}); }},
            {2, u"terminate the service"_s, [this] { breakService({u"kill"_s}); }},
            {3, u"suspend the service"_s, [this] { breakService({u"kill"_s, u"--signal=STOP"_s}); }},
            {2, u"stop the service"_s, [this] { breakService({u"stop"_s, u"--no-block"_s}); }},
            {6, u"serve bad responses"_s, [this] { serveBadResponses(); }},
            {2, u"stop the session bus"_s, [this] { stopBus(); }},
            {2, u"stop the notification server"_s, [this] { m_notificationServer.reset(); }},
            {3, u"stop the tray"_s, [this] { m_tray.reset(); }},
            {3, u"suspend the machine"_s, [this] { command(u"suspend %1"_s.arg(5 + random(600))); }},
        };
        int chosen = random(99);
        const auto event = std::ranges::find_if(events, [&](const Event& each) { return (chosen -= each.weight) < 0; });
        m_events << u"%1 s  %2"_s.arg(seconds(), 8, 'f', 2).arg(event->name);
        event->cause();
        if (m_repairAt == 0) {
            m_repairAt = m_time.elapsed() + 100 + random(5000);
        }
    }

    void pressControl() {
        const auto name = command(u"press %1"_s.arg(random(1'000'000)));
        m_events.last() += u": "_s + name;
        if (name.isEmpty() && !hasFailed()) {
            command(u"popover"_s);
        }
    }

    void clickNotification() {
        if (m_notificationServer && m_notificationServer->lastId > 0) {
            Q_EMIT m_notificationServer->ActionInvoked(m_notificationServer->lastId, u"default"_s);
            Q_EMIT m_notificationServer->NotificationClosed(m_notificationServer->lastId, 2);
        }
    }

    void breakService(const QStringList& systemctlArguments) {
        systemctl(systemctlArguments);
        m_serviceIsBroken = true;
    }

    /// Directs the application to a server that misbehaves.
    void serveBadResponses() {
        using namespace test::behave;
        static const std::vector<test::Behaviour> behaviours{
            answer(500, "{}"),
            answer(200, R"({"version": 7, "cloud": null})"),
            raw("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{"),
            resetAfter("HTTP/1.1 200 OK\r\n"),
            drip("x", std::chrono::milliseconds(20)),
            hang(),
            flood("HTTP/1.1 200 OK\r\n\r\n", 100'000'000),
        };
        m_badServer = std::make_unique<test::TestServer>();
        m_badServer->on("*", oneOf(behaviours));
        std::ofstream(m_home.toStdString() + "/.tunedeck/runtime.json") << "{\"port\": " << m_badServer->port() << "}";
        m_serviceIsBroken = true;
    }

    void stopBus() {
        m_notificationServer.reset();
        m_tray.reset();
        m_bus.kill();
        m_bus.waitForFinished();
    }

    /// Ends all disturbances.
    void repair() {
        m_repairAt = 0;
        if (m_bus.state() == QProcess::NotRunning) {
            const auto address = u"unix:path="_s + m_home + u"/bus"_s;
            qputenv("DBUS_SESSION_BUS_ADDRESS", address.toUtf8());
            m_bus.start(u"dbus-daemon"_s, {u"--config-file="_s + QString::fromUtf8(SESSION_BUS_CONFIGURATION),
                                           u"--nofork"_s, u"--print-address=1"_s, u"--address="_s + address});
            m_bus.waitForReadyRead();
        }
        if (!m_tray) {
            m_tray = std::make_unique<test::TrayHost>();
        }
        if (!m_notificationServer) {
            const QStringList capabilities{u"body-markup"_s, u"actions"_s};
            m_notificationServer = std::make_unique<test::NotificationServer>(capabilities);
        }
        if (std::exchange(m_serviceIsBroken, false)) {
            static const std::vector<const char*> scenarios{"lively", "lively", "pending", "tools-missing"};
            std::ofstream(m_home.toStdString() + "/scenario") << oneOf(scenarios);
            systemctl({u"restart"_s, u"--no-block"_s});
            m_badServer.reset();
        }
    }

    [[nodiscard]] double seconds() const { return static_cast<double>(m_time.elapsed()) / 1000; }
    int polls() { return command(u"figures"_s).section(u' ', 1).toInt(); }

    /// Waits until everything has settled, then measures.
    void sample() {
        repair();
        command(u"close"_s);
        wait(1200);
        const int before = polls();
        if (!runUntil([&] { return hasFailed() || polls() >= before + 3; }, responseTimeout)) {
            fail(u"no longer polls the service"_s);
        }
        const auto process = u"/proc/%1/"_s.arg(m_application.processId());
        double descriptors = 1e9;
        for (int i = 0; i < 10; ++i) { // the minimum leaves out requests in flight
            const QDir folder(process + u"fd"_s, {}, {}, QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
            descriptors = std::min<double>(descriptors, folder.count());
            wait(30);
        }
        m_samples.push_back({command(u"figures"_s).section(u' ', 0, 0).toDouble(),
                             numberIn(process + u"smaps_rollup"_s, "Private_Dirty:"), descriptors,
                             numberIn(process + u"status"_s, "Threads:")});
        m_notifications += std::ssize(std::exchange(m_notificationServer->calls, {}));
        const auto& [heap, memory, open, threads] = m_samples.back();
        print(u"%1 min, heap %2 KiB, private memory %3 KiB, %4 descriptors, %5 threads, %6 notifications"_s
                  .arg(seconds() / 60, 5, 'f', 1)
                  .arg(heap)
                  .arg(memory)
                  .arg(open)
                  .arg(threads)
                  .arg(m_notifications));
    }

    /// Compares the last third of the samples with the first one after the warm-up.
    void checkGrowth() {
        // The heap reaches its size after about ten minutes; a shorter run is all warm-up.
        const int scale = m_options.minutes >= 40 ? 1 : m_options.minutes < 10 ? 4 : 2;
        const double memoryLimit = m_options.limitsMemory ? 2048 * scale : 1e9;
        const Figures limits{memoryLimit, memoryLimit, 0, 0};
        const auto warmUp = std::ssize(m_samples) / 4;
        const auto third = (std::ssize(m_samples) - warmUp) / 3;
        if (third == 0) {
            fail(u"ran too briefly to measure growth"_s);
            return;
        }
        for (std::size_t i = 0; i < limits.size(); ++i) {
            std::vector<double> values;
            std::ranges::transform(m_samples, std::back_inserter(values), [i](const auto& each) { return each[i]; });
            const auto first = values.begin() + warmUp;
            const auto early = lowerQuartile({first, first + third});
            const auto late = lowerQuartile({values.end() - third, values.end()});
            const auto change = u"%1 %2 → %3"_s.arg(figureNames[static_cast<qsizetype>(i)]).arg(early).arg(late);
            print(change);
            if (late - early > limits[i]) {
                fail(u"uses more and more: "_s + change);
            }
        }
        if (m_notifications == 0) {
            fail(u"posted no notification"_s);
        }
    }

    void report() const {
        if (!hasFailed()) {
            print(u"Passed (seed %1)."_s.arg(m_options.seed));
            return;
        }
        print(u"\nLatest events:\n  "_s + m_events.mid(m_events.size() - 30).join(u"\n  "_s));
        for (const auto& failure : m_failures) {
            print(u"FAILED: the application "_s + failure);
        }
        print(u"Repeat with: ./tools/soak --minutes %1 --seed %2"_s.arg(m_options.minutes).arg(m_options.seed));
    }

    Options m_options;
    std::mt19937 m_random;
    QString m_home = QDir::homePath();
    QElapsedTimer m_time;
    qint64 m_repairAt = 0; ///< on m_time; 0 when nothing is disturbed
    bool m_serviceIsBroken = false;
    std::ptrdiff_t m_notifications = 0;
    QStringList m_events;
    QStringList m_failures;
    std::vector<Figures> m_samples;
    QProcess m_bus;
    std::unique_ptr<test::NotificationServer> m_notificationServer;
    std::unique_ptr<test::TrayHost> m_tray;
    std::unique_ptr<test::TestServer> m_badServer;
    QProcess m_application;
};

Options parseOptions(const QCoreApplication& application) {
    QCommandLineParser parser;
    const auto randomSeed = QString::number(std::random_device()() % 1'000'000);
    parser.addHelpOption();
    parser.addOptions({{u"minutes"_s, u"Length of the run."_s, u"M"_s, u"60"_s},
                       {u"seed"_s, u"Seed of the random events."_s, u"N"_s, randomSeed},
                       {u"any-memory"_s, u"Do not limit memory, for sanitizers."_s}});
    parser.process(application);
    return {.minutes = parser.value(u"minutes"_s).toDouble(),
            .seed = parser.value(u"seed"_s).toUInt(),
            .limitsMemory = !parser.isSet(u"any-memory"_s)};
}

} // namespace
} // namespace tunedeck::soak

/// Needs a private desktop, a user manager and an empty home folder; tools/lib/soak provides them.
int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const auto options = tunedeck::soak::parseOptions(application);
    if (QFile::exists(QDir::home().filePath(QString::fromUtf8(".tunedeck")))) {
        std::fputs("soak: the home folder is in use; run ./tools/soak\n", stderr);
        return 2;
    }
    return tunedeck::soak::SoakTest(options).run() ? 0 : 1;
}
