#include "DemoService/Files/Files.h"
#include "DemoService/Options.h"
#include "DemoService/Scenarios/Scenarios.h"
#include "DemoService/Service.h"

#include <pthread.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <random>
#include <thread>

using namespace tunedeck::demo;

namespace {

/// The state to start with: the last run's, unless another scenario is wanted or there is none.
State firstState(const Options& options, const HomePaths& paths, const Log& log) {
    const Moment now = currentMoment();
    const auto text = options.reset ? std::nullopt : readFile(paths.stateFile());
    if (text) {
        if (auto last = stateFromText(*text)) {
            if (options.scenario.empty() || options.scenario == last->scenario) {
                if (last->cloud.wavers) {
                    last->cloud.reconnect(now);
                }
                return std::move(*last);
            }
        } else {
            log.write({Level::warn, "tunedeck::service", "the state file can't be read, starting anew"});
        }
    }
    const Scenario* scenario = options.scenario.empty() ? &scenarios().front() : findScenario(options.scenario);
    State state = startState(*scenario, now);
    if (state.links.getUsed) {
        state.seed = std::random_device()();
    }
    if (state.library && state.library->dbPath.empty()) {
        state.library->dbPath = paths.rekordboxDb();
    }
    return state;
}

int serve(const Options& options) {
    const char* home = std::getenv("HOME");
    if (home == nullptr || *home != '/') {
        std::cerr << "tunedeck: HOME must name the home folder.\n";
        return 2;
    }
    // Only the waiting below gets these signals; every thread inherits the mask.
    sigset_t ending;
    sigemptyset(&ending);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        sigaddset(&ending, signal);
    }
    pthread_sigmask(SIG_BLOCK, &ending, nullptr);

    const char* filter = std::getenv("RUST_LOG");
    const Log log(levelOf(filter == nullptr ? "" : filter));
    const HomePaths paths{home};
    State state = firstState(options, paths, log);
    const std::string scenario = state.scenario;
    Service service(World(std::move(state), options.speed), {.version = TUNEDECK_VERSION, .paths = paths, .port = 0},
                    log);
    if (!service.start(options.port)) {
        return 1;
    }
    std::cout << "tunedeck " TUNEDECK_VERSION " (demo) serves the scenario " << scenario
              << " on http://127.0.0.1:" << service.port() << std::endl;

    const auto self = pthread_self();
    bool served = false;
    std::thread running([&service, &served, self] {
        served = service.run();
        // Should serving end by itself, the waiting ends too.
        pthread_kill(self, SIGTERM);
    });
    int signal = 0;
    sigwait(&ending, &signal);
    service.stop();
    running.join();
    std::cout << "tunedeck stopped" << std::endl;
    return served ? 0 : 1;
}

} // namespace

/// The program that the bundle carries as Contents/Helpers/tunedeck.
int main(int count, char** values) {
    const auto options = parseOptions({values + 1, values + count});
    if (!options) {
        std::cerr << "tunedeck: " << options.error() << "\n";
        return 2;
    }
    switch (options->action) {
    case Options::Action::help:
        std::cout << helpText();
        return 0;
    case Options::Action::version:
        std::cout << "tunedeck " TUNEDECK_VERSION " (demo)\n";
        return 0;
    case Options::Action::listScenarios:
        for (const Scenario& scenario : scenarios()) {
            std::cout << scenario.name << std::string(20 - scenario.name.size(), ' ') << scenario.description << "\n";
        }
        return 0;
    case Options::Action::serve:
        break;
    }
    return serve(*options);
}
