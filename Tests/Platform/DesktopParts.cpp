#include "Tests/Platform/DesktopParts.h"

#include "Tests/Platform/Starts.h"

#include <QCoreApplication>
#include <QFile>
#include <QStandardPaths>

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
    return test::nextLine(m_process);
}

void Program::say(const QString& line) {
    m_process.write(line.toUtf8() + '\n');
    m_process.waitForBytesWritten();
}

void Program::kill() {
    m_process.kill();
    m_process.waitForFinished();
}

bool BareDesktop::isPossible() {
    for (const auto& name : {QStringLiteral("Xvfb"), QStringLiteral("trayer"), QStringLiteral("dbus-daemon")}) {
        if (QStandardPaths::findExecutable(name).isEmpty()) {
            return false;
        }
    }
    return true;
}

BareDesktop::BareDesktop() : m_environment(QProcessEnvironment::systemEnvironment()) {
    m_server = std::make_unique<Program>(QStringLiteral("Xvfb"),
                                         QStringList{QStringLiteral("-displayfd"), QStringLiteral("1"),
                                                     QStringLiteral("-screen"), QStringLiteral("0"),
                                                     QStringLiteral("1000x600x24"), QStringLiteral("-nolisten"),
                                                     QStringLiteral("tcp"), QStringLiteral("-noreset")},
                                         m_environment);
    m_environment.insert(QStringLiteral("DISPLAY"), QStringLiteral(":") + QString::fromStdString(m_server->nextLine()));
    m_environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    m_environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                         QStringLiteral("unix:path=") + m_folder.filePath(QStringLiteral("bus")));
    m_environment.remove(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"));
    QFile configuration(m_folder.filePath(QStringLiteral("bus.conf")));
    if (configuration.open(QFile::WriteOnly)) {
        configuration.write("<busconfig><type>session</type><listen>unix:path=" +
                            QFile::encodeName(m_folder.filePath(QStringLiteral("bus"))) +
                            "</listen><policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
                            "<allow eavesdrop=\"true\"/><allow own=\"*\"/>"
                            "</policy></busconfig>");
    }
}

std::unique_ptr<Program> BareDesktop::startBus() {
    auto bus = std::make_unique<Program>(
        QStringLiteral("dbus-daemon"),
        QStringList{QStringLiteral("--config-file=") + m_folder.filePath(QStringLiteral("bus.conf")),
                    QStringLiteral("--nofork"), QStringLiteral("--print-address=1")},
        m_environment);
    bus->nextLine();
    return bus;
}

std::unique_ptr<Program> BareDesktop::startTray() {
    return std::make_unique<Program>(QStringLiteral("trayer"),
                                     QStringList{QStringLiteral("--edge"), QStringLiteral("top"),
                                                 QStringLiteral("--align"), QStringLiteral("right"),
                                                 QStringLiteral("--widthtype"), QStringLiteral("request"),
                                                 QStringLiteral("--height"), QStringLiteral("26")},
                                     m_environment);
}

std::unique_ptr<Program> BareDesktop::startSelf(const QStringList& arguments) {
    return std::make_unique<Program>(QCoreApplication::applicationFilePath(), arguments, m_environment);
}

} // namespace tunedeck::test
