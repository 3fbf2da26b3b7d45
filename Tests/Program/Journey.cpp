#include "Tests/Program/Journey.h"

#include "TunedeckBuildId.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QDirIterator>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTimer>

#include <signal.h>
#include <sys/stat.h>

#include <stdexcept>
#include <tuple>
#include <utility>

namespace tunedeck::test {

namespace {

const QString accessibilityProgram = u"/usr/libexec/at-spi-bus-launcher"_s;
constexpr int timeoutMs = 30'000; // generous, for slow machines

QByteArray bytesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly) ||
        file.write(bytes) != bytes.size() || !file.flush()) {
        throw std::runtime_error("can't write " + path.toStdString());
    }
}

} // namespace

void Journey::SetUp() {
    const auto runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!QFileInfo::exists(runtime + u"/manager.log"_s)) {
        GTEST_SKIP() << "run it with tools/lib/user-manager, which provides a private service manager";
    }
    if (!BareDesktop::isPossible() || !QFileInfo::exists(accessibilityProgram) ||
        QStandardPaths::findExecutable(u"openbox"_s).isEmpty()) {
        GTEST_SKIP() << "Xvfb, openbox, trayer, dbus-daemon or at-spi2-core is missing; ./tools/test installs them";
    }
    home = qEnvironmentVariable("HOME");
    // In memory, so that syncing is fast.
    folder.emplace(runtime + u"/journey-XXXXXX"_s);
    bundle = folder->filePath(u"apps/Tunedeck.app"_s);
    replaceProgram(u"xdg-open"_s, "echo \"$1\" >> '" + QFile::encodeName(folder->filePath(u"opened"_s)) + '\'');

    desktop.emplace(u"1280x940x24"_s); // the first run's window and the panel must fit
    environment = desktop->environment();
    for (const auto& name : environment.keys()) {
        if (name.startsWith(u"XDG_"_s) || name.startsWith(u"QT_"_s) || name.endsWith(u"_proxy"_s)) {
            environment.remove(name);
        }
    }
    environment.insert(u"XDG_RUNTIME_DIR"_s, runtime);
    environment.insert(u"LANG"_s, u"C.UTF-8"_s);
    environment.insert(u"PATH"_s, folder->filePath(u"bin"_s) + u':' + environment.value(u"PATH"_s));
    environment.insert(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s, u"1"_s);
    bus = desktop->startBus();
    readers = std::make_unique<Program>(accessibilityProgram, QStringList{u"--launch-immediately"_s}, environment);
    ASSERT_TRUE(eventually([this] {
        screen = std::make_unique<Accessibility>(busAddress());
        return screen->isConnected();
    })) << "the accessibility bus doesn't start";
    windowManager = std::make_unique<Program>(u"openbox"_s, QStringList{u"--sm-disable"_s}, environment);
    tray = desktop->startTray();
    application.setProcessChannelMode(QProcess::MergedChannels);
    application.setStandardOutputFile(folder->filePath(u"log"_s), QIODevice::Append);
    writeBundle(bundle, "1.4.0");
    prepare();
}

void Journey::TearDown() {
    if (!desktop) {
        return;
    }
    if (HasFailure()) {
        GTEST_LOG_(INFO) << bytesOf(folder->filePath(u"log"_s)).toStdString();
    }
    for (const auto process : processes()) {
        ::kill(process, SIGKILL);
    }
    application.waitForFinished();
    QFile::remove(qEnvironmentVariable("XDG_RUNTIME_DIR") +
                  u"/com.brightfold.tunedeck.menu.lock"_s); // remains after a kill
    std::ignore = output(u"systemctl"_s, {u"--user"_s, u"disable"_s, u"--now"_s, u"com.brightfold.tunedeck.service"_s});
    QDir own(home);
    for (const auto& entry : own.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)) {
        entry.isDir() ? QDir(entry.filePath()).removeRecursively() : QFile::remove(entry.filePath());
    }
}

QString Journey::busAddress() const {
    return environment.value(u"DBUS_SESSION_BUS_ADDRESS"_s);
}

void Journey::replaceProgram(const QString& name, const QByteArray& script) const {
    const auto path = folder->filePath(u"bin/"_s + name);
    write(path, "#!/bin/sh\n" + script + '\n');
    ::chmod(QFile::encodeName(path).constData(), 0755);
}

std::function<pid_t()> Journey::hangProgram(const QString& name) const {
    const auto pidFile = folder->filePath(u"hung"_s);
    replaceProgram(name, "echo $$ > '" + QFile::encodeName(pidFile) + "'; exec sleep 1000");
    return [pidFile] { return bytesOf(pidFile).trimmed().toInt(); };
}

void Journey::writeBundle(const QString& bundle, const QByteArray& version, char build) {
    const QString source = QString::fromUtf8(TUNEDECK_BUNDLE);
    QByteArray otherBuild(buildId);
    otherBuild.back() = build != 0 ? build : otherBuild.back();
    for (QDirIterator files(source, QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
        const auto path = files.next();
        const auto name = path.mid(source.size());
        const bool isProgram = name == u"/Contents/MacOS/Tunedeck";
        auto bytes = bytesOf(isProgram ? QString::fromUtf8(TUNEDECK_PROGRAM) : path);
        if (name.endsWith(u"/Info.plist")) {
            const QByteArray key = "<key>CFBundleShortVersionString</key>\n\t<string>";
            const auto begin = bytes.indexOf(key) + key.size();
            bytes.replace(begin, bytes.indexOf('<', begin) - begin, version);
        } else if (isProgram || name.contains(u"/PlugIns/")) {
            bytes.replace(buildId, otherBuild);
        } else if (name.endsWith(u"/Helpers/tunedeck")) {
            bytes.append(otherBuild); // ignored when the program is executed
        }
        write(bundle + name, bytes);
        QFile::setPermissions(bundle + name, QFile::permissions(path));
    }
}

void Journey::removeServiceProgram() const {
    QFile::remove(bundle + u"/Contents/Helpers/tunedeck"_s);
}

void Journey::publishServicePort(std::uint16_t port) const {
    writeInHome(u".tunedeck/runtime.json"_s, "{\"port\": " + QByteArray::number(port) + '}');
}

void Journey::start() {
    ASSERT_TRUE(eventually([this] { return icons() == 0; })) << "the previous icon is still there";
    application.waitForFinished(); // QProcess may not have noticed the end of the previous process
    application.setProcessEnvironment(environment);
    application.start(bundle + u"/Contents/MacOS/Tunedeck"_s, {});
    ASSERT_TRUE(application.waitForStarted());
    ASSERT_TRUE(eventually([this] { return icons() == 1; })) << "no icon appeared in the tray";
}

Journey::Ended Journey::run(const QStringList& arguments) const {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(bundle + u"/Contents/MacOS/Tunedeck"_s, arguments);
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished();
        return {};
    }
    return {process.exitCode(), process.readAll()};
}

void Journey::quit() const {
    EXPECT_EQ(run({u"--quit"_s}).status, 0);
    ASSERT_TRUE(eventually([this] { return processes().isEmpty(); }));
}

testing::AssertionResult Journey::opensWith(const QString& text) const {
    const auto second = run();
    return second.status == 0 ? sees(text) : testing::AssertionFailure() << second.output.toStdString();
}

testing::AssertionResult Journey::holds(const std::function<bool()>& condition) const {
    return eventually(condition)
               ? testing::AssertionSuccess()
               : testing::AssertionFailure() << "on the screen: " << screen->texts().join(u" | "_s).toStdString();
}

testing::AssertionResult Journey::sees(const QString& text) const {
    return holds([&] { return !screen->texts().filter(text).isEmpty(); });
}

testing::AssertionResult Journey::press(const QString& name) const {
    return holds([&] { return screen->press(name); });
}

QList<pid_t> Journey::processes(const QString& wanted) const {
    QList<pid_t> found;
    for (const auto& name : QDir(u"/proc"_s).entryList(QDir::Dirs)) {
        const auto program = QFile::symLinkTarget(u"/proc/%1/exe"_s.arg(name));
        if (name.toInt() > 0 && program.startsWith(QFileInfo(bundle).path()) &&
            program.contains(u"/Contents/"_s + wanted)) {
            found.append(name.toInt());
        }
    }
    return found;
}

QStringList Journey::windows() const {
    QStringList titles;
    for (const auto& line : output(u"wmctrl"_s, {u"-lx"_s}).split('\n')) {
        const auto parts = QString::fromUtf8(line).split(u' ', Qt::SkipEmptyParts); // id, desktop, class, host, title
        if (parts.value(2) == u"Tunedeck.Tunedeck") {
            titles.append(parts.mid(4).join(u' '));
        }
    }
    return titles;
}

int Journey::icons() const {
    return static_cast<int>(output(u"xwininfo"_s, {u"-name"_s, u"panel"_s, u"-tree"_s}).count("\"Tunedeck\": "));
}

QStringList Journey::opened() const {
    return QString::fromUtf8(bytesOf(folder->filePath(u"opened"_s))).split(u'\n', Qt::SkipEmptyParts);
}

QStringList Journey::siblings() const {
    return QDir(QFileInfo(bundle).path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

bool Journey::eventually(const std::function<bool()>& condition) {
    const QDeadlineTimer end(timeoutMs);
    while (!condition()) {
        if (end.hasExpired()) {
            return false;
        }
        QEventLoop loop;
        QTimer::singleShot(30, &loop, &QEventLoop::quit);
        loop.exec();
    }
    return true;
}

QByteArray Journey::output(const QString& program, const QStringList& arguments) const {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    process.waitForFinished();
    return process.readAllStandardOutput();
}

void Journey::writeInHome(const QString& relative, const QByteArray& bytes) const {
    write(home + u'/' + relative, bytes);
}

QByteArray Journey::read(const QString& relative) const {
    return bytesOf(home + u'/' + relative);
}

} // namespace tunedeck::test
