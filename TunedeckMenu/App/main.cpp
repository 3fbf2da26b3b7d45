#include "TunedeckCore/Support/Async/Clock.h"
#include "TunedeckCore/UserDefaults.h"
#include "TunedeckMenu/App/Application.h"
#include "TunedeckMenu/App/CommandLine.h"
#include "TunedeckMenu/App/QuitSignals.h"
#include "TunedeckMenu/App/RemoveCommand.h"
#include "TunedeckMenu/Platform/Log.h"
#include "TunedeckMenu/Platform/Processes.h"
#include "TunedeckMenu/Platform/SingleInstance.h"
#include "TunedeckMenu/Platform/SystemFacts.h"
#include "TunedeckMenu/Platform/SystemProbe.h"
#include "TunedeckMenu/Platform/Uninstall.h"
#include "TunedeckMenu/Platform/WindowSystem.h"

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
using namespace Qt::StringLiterals;

constexpr int usageError = 2;

void print(std::FILE* stream, const QString& text) {
    const auto bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
}

int printError(const QString& sentence, int exitStatus) {
    print(stderr, u"Tunedeck: "_s + sentence + u".\n"_s);
    return exitStatus;
}

using EndProcess = void (*)(int exitStatus);

QCoro::Task<> runCommand(QCoro::Task<CommandResult> command, EndProcess end) {
    const auto result = co_await command;
    print(stdout, result.output);
    std::fflush(stdout);
    print(stderr, result.errorOutput);
    end(result.exitStatus);
}

/// Runs a command that needs no display.
int runWithoutDisplay(int& argc, char** argv, const std::function<QCoro::Task<CommandResult>()>& command,
                      EndProcess end = &QCoreApplication::exit) {
    const QCoreApplication application(argc, argv);
    QTimer::singleShot(0, [&] { spawn(runCommand(command(), end)); });
    return QCoreApplication::exec();
}

/// Removes Tunedeck from the account. Holds the single instance, so that no other can start until it is done.
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

int runCheckup(int& argc, char** argv, const CommandLine& commandLine) {
    joinSession();
    const auto facts = systemFacts();
    SystemClock clock;
    // A check that was cut off may still block a thread, for which a normal exit would wait.
    return runWithoutDisplay(
        argc, argv,
        [&] {
            return checkupCommand({facts, systemProbe(facts), UserDefaults(), clock, commandLine.online},
                                  commandLine.json);
        },
        &std::_Exit);
}

/// Replaces Qt's fatal message about a missing display, which ends the process.
void explainMissingDisplay(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtFatalMsg) {
        printError(missingDisplay(u"there is no display to run on. Start it in a graphical session (“--help” lists "
                                  "what works without one)"_s),
                   EXIT_FAILURE);
        ::_exit(EXIT_FAILURE);
    }
    if (type == QtCriticalMsg) {
        print(stderr, message + u'\n');
    }
}

int runApplication(int& argc, char** argv, bool show) {
    QuitSignals quitSignals;
    const auto windowSystem = chooseWindowSystem();
    for (const auto& [name, value] : windowSystem.environment) {
        qputenv(name.constData(), value);
    }
    const auto defaultHandler = qInstallMessageHandler(explainMissingDisplay);
    QApplication application(argc, argv);
    qInstallMessageHandler(defaultHandler);
    for (const auto& [name, value] : windowSystem.environment) {
        qunsetenv(name.constData()); // for the programs that the application starts
    }
    qCInfo(appLog).noquote() << "window system:" << QGuiApplication::platformName() + u", because"_s
                             << windowSystem.reason;
    QApplication::setQuitOnLastWindowClosed(false);
    QObject::connect(&quitSignals, &QuitSignals::received, &application, &QCoreApplication::quit);
    quitSignals.listen();

    SystemClock clock;
    Application menu(clock, systemFacts());
    menu.launch();
    if (show) {
        QTimer::singleShot(0, &menu.delegate(), &AppDelegate::reopen);
    }
    return QApplication::exec();
}

int start(int& argc, char** argv, const CommandLine& commandLine) {
    if (commandLine.afterProcess) {
        waitForExit(*commandLine.afterProcess, 20s);
    }
    installSystemLog();
    if (commandLine.command == CommandLine::Command::Quit) {
        joinSession();
        const auto ended = SingleInstance().takeOver();
        return ended ? EXIT_SUCCESS : printError(ended.error(), EXIT_FAILURE);
    }
    SingleInstance instance;
    const auto started = instance.start();
    if (!started) {
        return printError(started.error(), EXIT_FAILURE);
    }
    return *started == SingleInstance::Start::First ? runApplication(argc, argv, commandLine.show) : EXIT_SUCCESS;
}

} // namespace

} // namespace tunedeck

int main(int argc, char** argv) {
    using namespace tunedeck;
    using namespace Qt::StringLiterals;
    QCoreApplication::setOrganizationName(u"Brightfold"_s);
    QCoreApplication::setOrganizationDomain(u"brightfold.com"_s);
    QCoreApplication::setApplicationName(u"Tunedeck"_s);
    QGuiApplication::setDesktopFileName(u"com.brightfold.tunedeck.menu"_s);

    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments << QString::fromLocal8Bit(argv[i]);
    }
    const auto commandLine = CommandLine::parse(arguments);
    if (!commandLine) {
        return printError(commandLine.error() + u"; “--help” lists what there is"_s, usageError);
    }
    switch (commandLine->command) {
    case CommandLine::Command::Help:
        print(stdout, CommandLine::help());
        return EXIT_SUCCESS;
    case CommandLine::Command::Version:
        print(stdout, u"Tunedeck "_s + systemFacts().appVersion + u'\n');
        return EXIT_SUCCESS;
    case CommandLine::Command::Status:
        return runWithoutDisplay(argc, argv,
                                 [&] { return commandLine->json ? statusDocumentCommand({}) : statusCommand({}); });
    case CommandLine::Command::Checkup:
        return runCheckup(argc, argv, *commandLine);
    case CommandLine::Command::Diagnostics:
        return runWithoutDisplay(argc, argv, [] { return diagnosticsCommand(systemFacts(), SystemClock().now()); });
    case CommandLine::Command::Remove:
        return runRemoval(argc, argv);
    case CommandLine::Command::Run:
    case CommandLine::Command::Quit:
        break;
    }
    return start(argc, argv, *commandLine);
}
