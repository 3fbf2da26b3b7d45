#pragma once

#include "Tests/Helpers/Desktop/Program.h"
#include "Tests/Helpers/RunTask.h"

#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace tunedeck::test {

/// A private X server, to which a test adds a session bus and a tray, and takes them away, while programs run on it.
class BareDesktop {
public:
    BareDesktop();

    /// True when the programs that it needs are installed.
    [[nodiscard]] static bool isPossible();

    [[nodiscard]] QString busAddress() const { return m_environment.value(u"DBUS_SESSION_BUS_ADDRESS"_s); }
    /// Starts the bus at its address. It can be started again after it was killed.
    std::unique_ptr<Program> startBus();
    std::unique_ptr<Program> startTray();
    /// Starts this test program in one of its roles (see Roles.h).
    std::unique_ptr<Program> startSelf(const QString& role);

private:
    std::unique_ptr<Program> start(const QString& command);

    QTemporaryDir m_folder;
    QProcessEnvironment m_environment;
    std::unique_ptr<Program> m_server;
};

} // namespace tunedeck::test
