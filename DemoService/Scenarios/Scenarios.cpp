#include "DemoService/Scenarios/Scenarios.h"

#include "DemoService/Scenarios/Crowd.h"
#include "DemoService/Scenarios/Staging.h"

#include <algorithm>
#include <array>

namespace tunedeck::demo {

using namespace std::chrono_literals;

namespace {

/// The product's web endpoint, which the build configures.
constexpr auto webEndpoint = TUNEDECK_WEB_ENDPOINT;

// Each function changes the settled state (everything well, hours old) into its scenario.

void nothing(State& /*state*/, Moment /*now*/) {}

void lively(State& state, Moment now) {
    state.cloud.reconnect(now);
    state.cloud.wavers = true;
    state.links.getUsed = true;
    state.livesWhenConnected = true;
}

void fresh(State& state, Moment now) {
    state.jobs = {};
    state.links.all.clear();
    state.links.getUsed = true;
    state.livesWhenConnected = true;
    state.toolbox = makeToolbox(false, now);
    state.library = Library{};
}

/// The service fetches its tools by itself; the first of them is on its way.
void firstRun(State& state, Moment now) {
    fresh(state, now);
    auto& toolbox = state.toolbox;
    toolbox.report.installing = true;
    toolbox.report.step =
        "Downloading " + toolbox.report.tools.front().name + " " + toolbox.report.tools.front().wanted;
    toolbox.steps = static_cast<int>(toolbox.report.tools.size() + toolbox.report.venvs.size());
    toolbox.stepStart = now;
    toolbox.stepEnd = now + 3s;
}

void toolsMissing(State& state, Moment now) {
    state.toolbox = makeToolbox(true, now - 2h);
    for (Tool* tool : {&state.toolbox.report.tools[2], &state.toolbox.report.venvs[1]}) {
        tool->ready = false;
        tool->installed.reset();
    }
}

void installing(State& state, Moment now) {
    state.toolbox = makeToolbox(false, now - 1min);
    auto& report = state.toolbox.report;
    report.tools[0].installed = report.tools[0].installs;
    report.tools[0].ready = true;
    report.installing = true;
    report.step = "Downloading spotdl 4.4.3";
    report.progress = 0.42;
}

void installFails(State& state, Moment now) {
    toolsMissing(state, now);
    state.toolbox.report.error = "Couldn't download ffmpeg: the server answered 503.";
    state.toolbox.failsAt = "ffmpeg";
}

Library& libraryOf(State& state) {
    return state.library ? *state.library : state.library.emplace();
}

void pending(State& state, Moment now) {
    addPending(libraryOf(state), "Add 5 tracks to “Friday”", now - 12min);
    addPending(libraryOf(state), "Add 2 tracks to the new playlist “Sunday Rooftop”", now - 4min);
}

void rekordboxOpen(State& state, Moment now) {
    pending(state, now);
    libraryOf(state).rekordboxRunning = true;
}

void failedChanges(State& state, Moment now) {
    Library& library = libraryOf(state);
    addFailed(library, "Add 5 tracks to “Friday”", "The library database is locked by another program.", now - 40min);
    addFailed(library, "Rename “Warm-up” to “Warm-up 2026”", "The playlist was changed in Rekordbox in the meantime.",
              now - 38min);
    library.lastError = library.failed.back().error;
}

void unwritable(State& state, Moment /*now*/) {
    state.stagedFolder = {.dir = "/Volumes/GIG USB/Music",
                          .source = "default",
                          .writable = false,
                          .error = "tunedeck can't write to “GIG USB”: the drive is read-only."};
}

void cloudOff(State& state, Moment /*now*/) {
    state.cloud.enabled = false;
    state.cloud.protocol.reset();
    state.cloud.registered.reset();
    state.cloud.connected.reset();
    state.links.all.clear();
}

void cloudUnreachable(State& state, Moment /*now*/) {
    state.cloud.connected = false;
}

void allAssistants(State& state, Moment now) {
    state.links.all.clear();
    addLink(state, link_kind::chatgpt, "ChatGPT", now - 30 * 24h, now - 3h);
    addLink(state, link_kind::claude, "Claude", now - 26 * 24h, now - 26h);
    addLink(state, link_kind::telegram, "Telegram", now - 20 * 24h, now - 40min);
    addLink(state, link_kind::shortcut, "iPhone", now - 12 * 24h, now - 5h);
}

void telegramWaiting(State& state, Moment now) {
    state.links.all.clear();
    addLink(state, link_kind::telegram, "Telegram", now - 1min);
}

void telegramExpired(State& state, Moment now) {
    state.links.all.clear();
    addLink(state, link_kind::telegram, "Telegram", now - 1h);
}

void noTelegram(State& state, Moment /*now*/) {
    state.links.telegramConfigured = false;
}

void noRekordbox(State& state, Moment /*now*/) {
    state.library.reset();
}

void backups(State& state, Moment now) {
    state.library = Library{};
    addManyBackups(*state.library, 24, now);
}

constexpr std::array all{
    Scenario{"first-run", "the default: the tools are being installed; comes alive once an assistant is connected",
             firstRun},
    Scenario{"lively", "requests come and go at a human pace, Rekordbox opens and closes", lively},
    Scenario{"quiet", "everything well, nothing changes, times are hours old", nothing},
    Scenario{"fresh", "no links, no tools, no backups; comes alive once an assistant is connected", fresh},
    Scenario{"tools-missing", "two of the tools are missing", toolsMissing},
    Scenario{"installing", "an installation of the tools that stands still", installing},
    Scenario{"install-fails", "tools are missing and the next installation fails as the last one did", installFails},
    Scenario{"rekordbox-open", "Rekordbox is open and two changes wait", rekordboxOpen},
    Scenario{"pending", "Rekordbox is closed and two changes wait", pending},
    Scenario{"failed-changes", "two changes couldn't be made", failedChanges},
    Scenario{"no-rekordbox", "no Rekordbox library was found", noRekordbox},
    Scenario{"backups", "two dozen backups", backups},
    Scenario{"unwritable", "the download folder can't be written to", unwritable},
    Scenario{"cloud-off", "the cloud relay is switched off; links can't be made", cloudOff},
    Scenario{"cloud-unreachable", "the cloud can't be reached; links can't be made", cloudUnreachable},
    Scenario{"all-assistants", "all four assistants connected", allAssistants},
    Scenario{"telegram-waiting", "a Telegram pairing code waits to be scanned", telegramWaiting},
    Scenario{"telegram-expired", "a Telegram pairing code has expired", telegramExpired},
    Scenario{"no-telegram", "the Telegram bot isn't set up", noTelegram},
    Scenario{"crowded", "12 links, 60 backups, long names, right-to-left and emoji text, long paths", stageCrowd},
};

} // namespace

std::span<const Scenario> scenarios() {
    return all;
}

const Scenario* findScenario(std::string_view name) {
    const auto* found = std::ranges::find(all, name, &Scenario::name);
    return found == all.end() ? nullptr : found;
}

State startState(const Scenario& scenario, Moment now) {
    State state;
    state.scenario = scenario.name;
    state.links.endpoint = webEndpoint;
    state.cloud.baseUrl = webEndpoint;
    state.cloud.protocol = 2;
    state.cloud.registered = true;
    state.cloud.connected = true;
    state.toolbox = makeToolbox(true, now - 2h);
    state.library = settledLibrary(now);
    state.jobs.xmlVersion = 39;
    addDoneJob(state, "Warm-up", 6, now - 8 * 24h);
    addFailedJob(state, "Peak Time", "yt-dlp: this video isn't available in your country", now - 9h);
    addDoneJob(state, "Friday", 5, now - 5h);
    addLink(state, link_kind::claude, "Claude", now - 26 * 24h, now - 5h);
    addLink(state, link_kind::shortcut, "iPhone", now - 12 * 24h, now - 9h);
    scenario.stage(state, now);
    return state;
}

} // namespace tunedeck::demo
