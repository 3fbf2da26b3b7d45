#pragma once

#include "Tests/Helpers/Desktop/BareDesktop.h"
#include "Tests/Program/Accessibility.h"

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/types.h>

#include <functional>
#include <memory>
#include <optional>

namespace tunedeck::test {

using namespace Qt::StringLiterals;

/// Runs the real application with a private bundle, home, service manager and desktop. SetUp() installs version 1.4.0.
class Journey : public testing::Test {
protected:
    void SetUp() final;
    void TearDown() override;
    /// Completes SetUp(); not called if the test is skipped.
    virtual void prepare() = 0;

    struct Ended {
        int status = -1;
        QByteArray output; ///< both streams
    };

    /// Writes a bundle of this version. `build` replaces the last character of the build id in its programs.
    static void writeBundle(const QString& bundle, const QByteArray& version, char build = 0);
    /// Removes the service program from the bundle, so that none is installed. The test acts as the service.
    void removeServiceProgram() const;
    /// Publishes the port of the test's service.
    void publishServicePort(std::uint16_t port) const;
    /// Starts the application and waits for its icon.
    void start();
    /// Runs the application until it exits.
    [[nodiscard]] Ended run(const QStringList& arguments = {}) const;
    /// Quits the application as a user of the command line does.
    void quit() const;
    /// Starts the application again, which opens the window, and waits for the text.
    [[nodiscard]] testing::AssertionResult opensWith(const QString& text) const;
    /// Waits until a text is visible.
    [[nodiscard]] testing::AssertionResult sees(const QString& text) const;
    /// Waits for a control and presses it. Those of a dialog come before others with the same name.
    [[nodiscard]] testing::AssertionResult press(const QString& name) const;

    /// The running processes of a program of the bundle, even if the file was moved or deleted.
    [[nodiscard]] QList<pid_t> processes(const QString& wanted = u"MacOS/Tunedeck"_s) const;
    /// The titles of the application's windows.
    [[nodiscard]] QStringList windows() const;
    /// The number of the application's tray icons.
    [[nodiscard]] int icons() const;
    /// The arguments of all calls of xdg-open.
    [[nodiscard]] QStringList opened() const;
    /// The entries of the bundle's parent folder.
    [[nodiscard]] QStringList siblings() const;

    [[nodiscard]] QString busAddress() const;
    /// Adds a shell script that replaces a program of the PATH.
    void replaceProgram(const QString& name, const QByteArray& script) const;
    /// Replaces a program by one that never ends. The result returns its process id, 0 before it runs.
    [[nodiscard]] std::function<pid_t()> hangProgram(const QString& name) const;
    /// Waits for a condition that depends on other processes; false on timeout.
    static bool eventually(const std::function<bool()>& condition);
    /// The standard output of a program.
    [[nodiscard]] QByteArray output(const QString& program, const QStringList& arguments) const;
    /// The contents of a file in the home.
    [[nodiscard]] QByteArray read(const QString& relative) const;
    void writeInHome(const QString& relative, const QByteArray& bytes) const;

    QString home;
    QString bundle; ///< of the program that start() and run() execute
    std::optional<QTemporaryDir> folder;
    std::optional<BareDesktop> desktop;
    QProcessEnvironment environment;
    std::unique_ptr<Program> bus, readers, windowManager, tray;
    std::unique_ptr<Accessibility> screen;
    QProcess application;

private:
    /// Waits for a condition; a failure shows the texts on the screen.
    [[nodiscard]] testing::AssertionResult holds(const std::function<bool()>& condition) const;
};

} // namespace tunedeck::test
