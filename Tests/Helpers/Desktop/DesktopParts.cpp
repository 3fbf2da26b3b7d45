#include "Tests/Helpers/Desktop/DesktopParts.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

Program::Program(const QString& name, const QStringList& arguments, const QProcessEnvironment& environment) {
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
    m_process.start(name, arguments);
    m_process.waitForStarted();
}

Program::~Program() {
    m_process.terminate();
    if (!m_process.waitForFinished(2000)) {
        kill();
    }
}

std::string Program::nextLine() {
    const QDeadlineTimer deadline(10000);
    while (!m_process.canReadLine() && m_process.waitForReadyRead(static_cast<int>(deadline.remainingTime()))) {
    }
    return m_process.readLine().trimmed().toStdString();
}

void Program::say(const QString& line) {
    m_process.write(line.toUtf8() + '\n');
    m_process.waitForBytesWritten();
}

void Program::kill() {
    m_process.kill();
    m_process.waitForFinished();
}

std::unique_ptr<Program> startInstance(const QString& socket, const QString& request, int patience) {
    return std::make_unique<Program>(QCoreApplication::applicationFilePath(),
                                     QStringList{u"--instance"_s, socket, request, QString::number(patience)},
                                     QProcessEnvironment::systemEnvironment());
}

bool BareDesktop::isPossible() {
    const QStringList needed{u"Xvfb"_s, u"trayer"_s, u"dbus-daemon"_s};
    return std::ranges::none_of(needed,
                                [](const QString& name) { return QStandardPaths::findExecutable(name).isEmpty(); });
}

std::unique_ptr<Program> BareDesktop::start(const QString& command) {
    auto arguments = command.split(u' ');
    const auto name = arguments.takeFirst();
    return std::make_unique<Program>(name, arguments, m_environment);
}

BareDesktop::BareDesktop(const QString& screen) : m_environment(QProcessEnvironment::systemEnvironment()) {
    m_server = start(u"Xvfb -displayfd 1 -nolisten tcp -noreset -screen 0 "_s + screen);
    const auto bus = u"unix:path="_s + m_folder.filePath(u"bus"_s);
    m_environment.insert(u"DISPLAY"_s, u":"_s + QString::fromStdString(m_server->nextLine()));
    m_environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    m_environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus);
    m_environment.remove(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s);
    QFile configuration(m_folder.filePath(u"bus.conf"_s));
    if (configuration.open(QFile::WriteOnly)) {
        configuration.write("<busconfig><type>session</type><listen>" + bus.toUtf8() +
                            "</listen><policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
                            "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>");
    }
}

std::unique_ptr<Program> BareDesktop::startBus() {
    auto bus = start(u"dbus-daemon --nofork --print-address=1 --config-file="_s + m_folder.filePath(u"bus.conf"_s));
    bus->nextLine();
    return bus;
}

std::unique_ptr<Program> BareDesktop::startTray() {
    return start(u"trayer --edge top --align right --widthtype request --height 26"_s);
}

std::unique_ptr<Program> BareDesktop::startSelf(const QString& role) {
    return start(QCoreApplication::applicationFilePath() + u' ' + role);
}

} // namespace tunedeck::test
