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
    [[nodiscard]] bool isRunning() const { return m_process.state() == QProcess::Running; }

private:
    QProcess m_process;
};

/// A desktop that is put together piece by piece while a program already runs on it: an X server and, when they are
/// started, a session bus and a tray.
class BareDesktop {
public:
    BareDesktop();

    /// True when this machine has the programs for it.
    [[nodiscard]] static bool isPossible();

    [[nodiscard]] const QProcessEnvironment& environment() const { return m_environment; }
    /// Starts a bus at the address that the environment names, also again after it was killed.
    std::unique_ptr<Program> startBus();
    std::unique_ptr<Program> startTray();
    /// Starts this test program in one of its other roles (see main.cpp).
    std::unique_ptr<Program> startSelf(const QStringList& arguments);

private:
    QTemporaryDir m_folder;
    QProcessEnvironment m_environment;
    std::unique_ptr<Program> m_server;
};

} // namespace tunedeck::test
