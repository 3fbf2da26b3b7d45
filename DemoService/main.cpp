#include "DemoService/Files/JsonFile.h"
#include "DemoService/Scenarios/Scenarios.h"
#include "DemoService/Service.h"
#include "TunedeckCore/Support/Files/AtomicFile.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <csignal>
#include <cstdlib>
#include <expected>
#include <iomanip>
#include <iostream>
#include <optional>
#include <random>

using namespace tunedeck;
using namespace tunedeck::demo;
using namespace Qt::StringLiterals;

namespace {

struct Options {
    const Scenario* scenario = nullptr; ///< null: that of the last run, else the default one
    int port = 0;
    double speed = 1;
    bool reset = false;
};

std::expected<Options, QString> readOptions(const QCommandLineParser& parser) {
    Options options{.reset = parser.isSet(u"reset"_s)};
    if (const auto extra = parser.positionalArguments(); !extra.isEmpty()) {
        return std::unexpected(u"Unexpected argument \""_s + extra.front() + u"\"; --help lists the options."_s);
    }
    if (const auto name = parser.value(u"scenario"_s); parser.isSet(u"scenario"_s)) {
        options.scenario = findScenario(name);
        if (options.scenario == nullptr) {
            return std::unexpected(u"There is no scenario \""_s + name + u"\"; --list-scenarios lists them."_s);
        }
    }
    bool valid = false;
    options.port = parser.value(u"port"_s).toUShort(&valid);
    if (!valid) {
        return std::unexpected(u"The port must be a number from 0 to 65535."_s);
    }
    options.speed = parser.value(u"speed"_s).toDouble();
    if (!(options.speed > 0 && options.speed <= 1000)) {
        return std::unexpected(u"The speed must be a number above 0, at most 1000."_s);
    }
    return options;
}

/// The state of the last run, unless another scenario is requested or there is none.
State firstState(const Options& options, const HomePaths& paths, const Log& log) {
    const Moment now = currentMoment();
    if (const auto text = options.reset ? std::nullopt : readFile(paths.stateFile(), fileLimit)) {
        auto last = State::fromText(*text);
        if (!last) {
            log.write({Log::Level::Warn, u"tunedeck::service"_s,
                       u"ignoring the state file, which can't be read: "_s + last.error().description()});
        } else if (options.scenario == nullptr || options.scenario->name == last->scenario) {
            if (last->cloud.unstable) {
                last->cloud.reconnect(now);
            }
            return std::move(*last);
        }
    }
    State state = startState(options.scenario == nullptr ? scenarios().front() : *options.scenario, now);
    if (state.links.getUsed) {
        state.random.state = std::random_device()();
    }
    if (state.library && state.library->dbPath.isEmpty()) {
        state.library->dbPath = paths.rekordboxDb();
    }
    return state;
}

int serve(const Options& options) {
    const QString home = qEnvironmentVariable("HOME");
    if (!home.startsWith(u'/')) {
        std::cerr << "tunedeck: HOME must be an absolute path.\n";
        return 2;
    }
    // All threads inherit this mask, so that the signals wait for sigwait() below.
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        sigaddset(&signals, signal);
    }
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);

    const Log log(Log::levelFor(qEnvironmentVariable("RUST_LOG")));
    const HomePaths paths{home};
    State state = firstState(options, paths, log);
    const auto scenario = state.scenario.toStdString();
    Service service(World(std::move(state), options.speed), {.version = u"" TUNEDECK_VERSION ""_s, .paths = paths},
                    log);
    if (!service.start(options.port)) {
        return 1;
    }
    std::cout << "tunedeck " TUNEDECK_VERSION " (demo) serves the scenario " << scenario
              << " on http://127.0.0.1:" << service.port() << std::endl;
    int signal = 0;
    sigwait(&signals, &signal);
    service.stop();
    std::cout << "tunedeck stopped" << std::endl;
    return 0;
}

} // namespace

/// The demo service, which the bundle contains as Contents/Helpers/tunedeck.
int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"A stand-in for Tunedeck's background service. It answers the same requests on 127.0.0.1 and simulates\n"
        "activity, but downloads nothing and touches no Rekordbox library. It writes its port to\n"
        "~/.tunedeck/runtime.json and its state to ~/.tunedeck/demo-state.json."_s);
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({
        {u"scenario"_s, u"Start with this scenario. Without it, continue where the last run ended."_s, u"name"_s},
        {u"list-scenarios"_s, u"List the scenarios."_s},
        {u"reset"_s, u"Ignore the state of the last run."_s},
        {u"port"_s, u"Listen on this port instead of any free one."_s, u"number"_s, u"0"_s},
        {u"speed"_s, u"Make things happen this many times faster."_s, u"factor"_s, u"1"_s},
    });
    const bool parsed = parser.parse(QCoreApplication::arguments());
    const auto options = parsed ? readOptions(parser) : std::unexpected(parser.errorText());
    if (!options) {
        std::cerr << "tunedeck: " << options.error().toStdString() << "\n";
        return 2;
    }
    if (parser.isSet(u"help"_s)) {
        std::cout << parser.helpText().toStdString();
    } else if (parser.isSet(u"version"_s)) {
        std::cout << "tunedeck " TUNEDECK_VERSION " (demo)\n";
    } else if (parser.isSet(u"list-scenarios"_s)) {
        for (const Scenario& scenario : scenarios()) {
            std::cout << std::left << std::setw(20) << scenario.name.data() << scenario.description.data() << "\n";
        }
    } else {
        return serve(*options);
    }
    return 0;
}
