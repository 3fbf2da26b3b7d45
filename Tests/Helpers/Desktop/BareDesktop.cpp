#include "Tests/Helpers/Desktop/BareDesktop.h"

#include <QCoreApplication>
#include <QStandardPaths>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

bool BareDesktop::isPossible() {
    const QStringList needed{u"Xvfb"_s, u"trayer"_s, u"dbus-daemon"_s};
    return std::ranges::none_of(needed,
                                [](const QString& name) { return QStandardPaths::findExecutable(name).isEmpty(); });
}

BareDesktop::BareDesktop() : m_environment(QProcessEnvironment::systemEnvironment()) {
    m_server = start(u"Xvfb -displayfd 1 -nolisten tcp -noreset -screen 0 1000x600x24"_s);
    m_environment.insert(u"DISPLAY"_s, u":"_s + QString::fromStdString(m_server->nextLine()));
    m_environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    m_environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path="_s + m_folder.filePath(u"bus"_s));
    m_environment.remove(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s);
}

std::unique_ptr<Program> BareDesktop::start(const QString& command) {
    auto arguments = command.split(u' ');
    const auto name = arguments.takeFirst();
    return std::make_unique<Program>(name, arguments, m_environment);
}

std::unique_ptr<Program> BareDesktop::startBus() {
    auto bus = start(u"dbus-daemon --nofork --print-address=1 --config-file=" BUS_CONFIGURATION " --address="_s +
                     busAddress());
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
