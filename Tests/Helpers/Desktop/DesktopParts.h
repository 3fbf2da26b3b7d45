#pragma once

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>
#include <string>

namespace tunedeck::test {

/// A program that ends with its owner; what it prints is read line by line.
class Program {
public:
    Program(const QString& name, const QStringList& arguments, const QProcessEnvironment& environment);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// The next line that it prints, within 10 s.
    std::string nextLine();
    /// Writes a line to its input.
    void say(const QString& line);
    /// Ends it at once, as a crash would.
    void kill();
    /// Waits until it has ended by itself; false when it goes on.
    bool ends() { return m_process.state() == QProcess::NotRunning || m_process.waitForFinished(10000); }
    [[nodiscard]] pid_t id() const { return static_cast<pid_t>(m_process.processId()); }

private:
    QProcess m_process;
};

/// Starts this test program as an instance (see Roles.h).
std::unique_ptr<Program> startInstance(const QString& socket, const QString& request = QStringLiteral("show"),
                                       int patience = 2000);

/// A desktop that is put together piece by piece while a program already runs on it: an X server and, when they are
/// started, a session bus and a tray.
class BareDesktop {
public:
    /// `screen`: its width, height and depth.
    explicit BareDesktop(const QString& screen = QStringLiteral("1000x600x24"));

    /// True when this machine has the programs for it.
    [[nodiscard]] static bool isPossible();

    [[nodiscard]] const QProcessEnvironment& environment() const { return m_environment; }
    /// Starts a bus at the address that the environment names, also again after it was killed.
    std::unique_ptr<Program> startBus();
    std::unique_ptr<Program> startTray();
    /// Starts this test program in one of its other roles (see Roles.h).
    std::unique_ptr<Program> startSelf(const QString& role);

private:
    std::unique_ptr<Program> start(const QString& command);

    QTemporaryDir m_folder;
    QProcessEnvironment m_environment;
    std::unique_ptr<Program> m_server;
};

} // namespace tunedeck::test
