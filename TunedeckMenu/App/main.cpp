#include "TunedeckCore/Support/Async/Clock.h"
#include "TunedeckMenu/App/Application.h"
#include "TunedeckMenu/App/CommandLine.h"
#include "TunedeckMenu/App/QuitSignals.h"
#include "TunedeckMenu/App/RemoveCommand.h"
#include "TunedeckMenu/Platform/Log.h"
#include "TunedeckMenu/Platform/Processes.h"
#include "TunedeckMenu/Platform/SingleInstance.h"
#include "TunedeckMenu/Platform/SystemFacts.h"
#include "TunedeckMenu/Platform/Uninstall.h"

#include <QApplication>
#include <QCoreApplication>
#include <QTimer>

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <optional>
#include <utility>

namespace tunedeck {

namespace {

using namespace std::chrono_literals;

constexpr int usageError = 2;

void print(std::FILE* stream, const QString& text) {
    const auto bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
}

int complain(const QString& sentence, int exitStatus) {
    print(stderr, QStringLiteral("Tunedeck: ") + sentence + QStringLiteral(".\n"));
    return exitStatus;
}

QCoro::Task<> runCommand(QCoro::Task<CommandResult> command) {
    const auto result = co_await command;
    print(stdout, result.output);
    std::fflush(stdout);
    print(stderr, result.errorOutput);
    QCoreApplication::exit(result.exitStatus);
}

/// Runs a command that needs no display.
int runWithoutDisplay(int& argc, char** argv, const std::function<QCoro::Task<CommandResult>()>& command) {
    const QCoreApplication application(argc, argv);
    QTimer::singleShot(0, [&] { spawn(runCommand(command())); });
    return QCoreApplication::exec();
}

/// Takes Tunedeck away from the account. Nothing can be started meanwhile: this process is the one instance.
int runRemoval(int& argc, char** argv) {
    installSystemLog();
    joinSession();
    SingleInstance instance;
    const auto ended = instance.takeOver();
    const auto facts = systemFacts();
    const auto uninstall = uninstallOf(facts);
    SystemClock clock;
    const ServiceInstaller installer(facts.home, std::nullopt, facts.uid, uninstall.supervisor.launchctl, clock);
    return runWithoutDisplay(argc, argv, [&] {
        return removeCommand({facts.home, SettingsFile::standard(), ended, uninstall},
                             {facts.home, installer, facts.uid, uninstall.supervisor, clock});
    });
}

/// Qt's last word when it has no display to run on, in words for the user.
void explainMissingDisplay(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtFatalMsg) {
        complain(QStringLiteral("there is no display to run on. Start it in a graphical session (“--help” lists what "
                                "works without one)"),
                 EXIT_FAILURE);
        ::_exit(EXIT_FAILURE);
    }
    if (type == QtCriticalMsg) {
        print(stderr, message + u'\n');
    }
}

int runApplication(int& argc, char** argv, bool show) {
    QuitSignals quitSignals;
    const auto usualHandler = qInstallMessageHandler(explainMissingDisplay);
    QApplication application(argc, argv);
    qInstallMessageHandler(usualHandler);
    QApplication::setQuitOnLastWindowClosed(false);
    QObject::connect(&quitSignals, &QuitSignals::received, &application, &QCoreApplication::quit);
    quitSignals.listen();

    SystemClock clock;
    Application menu(clock, systemFacts());
    menu.launch(show);
    return QApplication::exec();
}

int start(int& argc, char** argv, const CommandLine& wish) {
    if (wish.afterProcess) {
        waitForExit(*wish.afterProcess, 20s);
    }
    installSystemLog();
    if (wish.command == CommandLine::Command::quit) {
        joinSession();
        const auto ended = SingleInstance().takeOver();
        return ended ? EXIT_SUCCESS : complain(ended.error(), EXIT_FAILURE);
    }
    SingleInstance instance;
    const auto started = instance.start();
    if (!started) {
        return complain(started.error(), EXIT_FAILURE);
    }
    return *started == SingleInstance::Start::First ? runApplication(argc, argv, wish.show) : EXIT_SUCCESS;
}

} // namespace

} // namespace tunedeck

int main(int argc, char** argv) {
    using namespace tunedeck;
    QCoreApplication::setOrganizationName(QStringLiteral("Brightfold"));
    QCoreApplication::setOrganizationDomain(QStringLiteral("brightfold.com"));
    QCoreApplication::setApplicationName(QStringLiteral("Tunedeck"));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.brightfold.tunedeck.menu"));

    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments << QString::fromLocal8Bit(argv[i]);
    }
    const auto wish = CommandLine::parse(arguments);
    if (!wish) {
        return complain(wish.error() + QStringLiteral("; “--help” lists what there is"), usageError);
    }
    switch (wish->command) {
    case CommandLine::Command::help:
        print(stdout, CommandLine::help());
        return EXIT_SUCCESS;
    case CommandLine::Command::version:
        print(stdout, QStringLiteral("Tunedeck ") + systemFacts().appVersion + u'\n');
        return EXIT_SUCCESS;
    case CommandLine::Command::status:
        return runWithoutDisplay(argc, argv, [&] { return statusCommand({}, wish->json); });
    case CommandLine::Command::diagnostics:
        return runWithoutDisplay(argc, argv, [] { return diagnosticsCommand(systemFacts(), SystemClock().now()); });
    case CommandLine::Command::remove:
        return runRemoval(argc, argv);
    case CommandLine::Command::run:
    case CommandLine::Command::quit:
        break;
    }
    return start(argc, argv, *wish);
}
