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

/// The application as its user has it: a bundle, a home, a service manager and a desktop, all of the test's own.
class Journey : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// What one start printed and how it ended.
    struct Ended {
        int status = -1;
        QByteArray output; ///< both streams
    };

    /// Writes a bundle of this version. `build`: the last character of its build's id, for one that was built anew.
    /// Its service program differs by build as well.
    static void layOut(const QString& bundle, const QByteArray& version, char build = 0);
    /// Removes the service program from the bundle: nothing is installed, and the test provides the service.
    void withoutService() const;
    /// Points the application to a service of the test on this port.
    void serviceIsAt(std::uint16_t port) const;
    /// Starts the bundle's program and lets it run.
    void start(const QStringList& arguments = {});
    /// Starts the bundle's program and waits for its end.
    [[nodiscard]] Ended run(const QStringList& arguments = {}) const;
    /// Brings the window up by a second start, until the text is in it.
    [[nodiscard]] testing::AssertionResult opensWith(const QString& text) const;
    /// Waits until a text is on the screen.
    [[nodiscard]] testing::AssertionResult sees(const QString& text) const;
    /// Waits for a control and presses it; where there are several of that name, the one of a question before others.
    [[nodiscard]] testing::AssertionResult press(const QString& name) const;
    /// Saves what is on the screen in the folder that TUNEDECK_PICTURES names, if it names one.
    void picture(const QString& name) const;

    /// The running processes of a program of the bundle, whatever became of that.
    [[nodiscard]] QList<pid_t> processes(const QString& wanted = QStringLiteral("MacOS/Tunedeck")) const;
    /// The titles of the windows on the screen.
    [[nodiscard]] QStringList windows() const;
    /// How many icons of the application are in the tray.
    [[nodiscard]] int icons() const;
    /// What the desktop was asked to open.
    [[nodiscard]] QStringList opened() const;
    /// The names beside the bundle, and its own.
    [[nodiscard]] QStringList beside() const;

    void startBus();
    [[nodiscard]] QString busAddress() const;
    /// Puts a shell script before all other programs of that name.
    void replaceProgram(const QString& name, const QByteArray& script) const;
    void startTray() { tray = desktop->startTray(); }
    /// Waits for something that other processes do; false when it doesn't come.
    static bool eventually(const std::function<bool()>& condition);
    /// What a program prints.
    [[nodiscard]] QByteArray output(const QString& program, const QStringList& arguments) const;
    /// Where the running application takes what later starts ask for.
    [[nodiscard]] QString lockPath() const;
    /// A file in the home.
    [[nodiscard]] QByteArray read(const QString& relative) const;
    void writeInHome(const QString& relative, const QByteArray& bytes) const;

    QString home;
    QString bundle; ///< of the program that is started
    std::optional<QTemporaryDir> folder;
    std::optional<BareDesktop> desktop;
    QProcessEnvironment environment;
    std::unique_ptr<Program> bus, readers, windowManager, tray;
    std::unique_ptr<Accessibility> screen;
    QProcess application;
};

} // namespace tunedeck::test
