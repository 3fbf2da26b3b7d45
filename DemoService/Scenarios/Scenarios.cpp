#include "DemoService/Scenarios/Scenarios.h"

#include "DemoService/Scenarios/Crowd.h"
#include "DemoService/Scenarios/Hostile.h"

#include <algorithm>
#include <array>

namespace tunedeck::demo {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

// Each function turns the quiet state, in which all is well and nothing is recent, into its scenario.

void quiet(Stage& /*stage*/) {}

void lively(Stage& stage) {
    stage.state.cloud.reconnect(stage.now);
    stage.state.cloud.unstable = true;
    stage.state.links.getUsed = true;
    stage.state.livelyWhenConnected = true;
}

void fresh(Stage& stage) {
    stage.state.jobs = {};
    stage.state.links.all.clear();
    stage.state.links.getUsed = true;
    stage.state.livelyWhenConnected = true;
    stage.state.toolbox = Toolbox::make(false, stage.now);
    stage.state.library = Library{};
}

void firstRun(Stage& stage) {
    fresh(stage);
    auto& toolbox = stage.state.toolbox;
    const auto& first = toolbox.report.tools.front();
    toolbox.report.installing = true;
    toolbox.report.step = u"Downloading "_s + first.name + u' ' + first.wanted;
    toolbox.steps = static_cast<int>(toolbox.report.tools.size() + toolbox.report.venvs.size());
    toolbox.stepStart = stage.now;
    toolbox.stepEnd = stage.now + 3s;
}

void toolsMissing(Stage& stage) {
    auto& report = stage.state.toolbox.report;
    for (Toolbox::Tool* tool : {&report.tools[2], &report.venvs[1]}) {
        tool->ready = false;
        tool->installed.reset();
    }
}

void installing(Stage& stage) {
    stage.state.toolbox = Toolbox::make(false, stage.now - 1min);
    auto& report = stage.state.toolbox.report;
    report.tools[0].installed = report.tools[0].installs;
    report.tools[0].ready = true;
    report.installing = true;
    report.step = u"Downloading spotdl 4.4.3"_s;
    report.progress = 0.42;
}

void installFails(Stage& stage) {
    toolsMissing(stage);
    stage.state.toolbox.report.error = u"Couldn't download ffmpeg: the server answered 503."_s;
    stage.state.toolbox.failsAt = u"ffmpeg"_s;
}

void pending(Stage& stage) {
    stage.addPending(u"Add 5 tracks to “Friday”"_s, 12min);
    stage.addPending(u"Add 2 tracks to the new playlist “Sunday Rooftop”"_s, 4min);
}

void rekordboxOpen(Stage& stage) {
    pending(stage);
    stage.library().rekordboxRunning = true;
}

void failedChanges(Stage& stage) {
    stage.addFailed(u"Add 5 tracks to “Friday”"_s, u"The library database is locked by another program."_s, 40min);
    stage.addFailed(u"Rename “Warm-up” to “Warm-up 2026”"_s,
                    u"The playlist was changed in Rekordbox in the meantime."_s, 38min);
    stage.library().lastError = stage.library().failed.back().error;
}

void noRekordbox(Stage& stage) {
    stage.state.library.reset();
}

void backups(Stage& stage) {
    stage.state.library = Library{};
    addManyBackups(stage, 24);
}

void unwritable(Stage& stage) {
    stage.state.stagedFolder = {.downloadDir = u"/Volumes/GIG USB/Music"_s,
                                .downloadDirSource = u"default"_s,
                                .downloadDirWritable = false,
                                .downloadDirError = u"tunedeck can't write to “GIG USB”: the drive is read-only."_s};
}

void cloudOff(Stage& stage) {
    stage.state.cloud = {.enabled = false, .baseUrl = stage.state.cloud.baseUrl};
    stage.state.links.all.clear();
}

void cloudUnreachable(Stage& stage) {
    stage.state.cloud.connected = false;
}

void allAssistants(Stage& stage) {
    stage.state.links.all.clear();
    stage.addLink(link_kind::chatgpt, u"ChatGPT"_s, 30 * 24h, 3h);
    stage.addLink(link_kind::claude, u"Claude"_s, 26 * 24h, 26h);
    stage.addLink(link_kind::telegram, u"Telegram"_s, 20 * 24h, 40min);
    stage.addLink(link_kind::shortcut, u"iPhone"_s, 12 * 24h, 5h);
}

void telegramWaiting(Stage& stage) {
    stage.state.links.all.clear();
    stage.addLink(link_kind::telegram, u"Telegram"_s, 1min);
}

void telegramExpired(Stage& stage) {
    stage.state.links.all.clear();
    stage.addLink(link_kind::telegram, u"Telegram"_s, 1h);
}

void noTelegram(Stage& stage) {
    stage.state.links.telegramConfigured = false;
}

constexpr std::array all{
    Scenario{"first-run"_L1, "the default: the tools are being installed; lively once an assistant is connected"_L1,
             firstRun},
    Scenario{"lively"_L1, "requests arrive at a realistic pace, Rekordbox opens and closes"_L1, lively},
    Scenario{"quiet"_L1, "all is well, nothing changes, times are hours old"_L1, quiet},
    Scenario{"fresh"_L1, "no links, no tools, no backups; lively once an assistant is connected"_L1, fresh},
    Scenario{"tools-missing"_L1, "two of the tools are missing"_L1, toolsMissing},
    Scenario{"installing"_L1, "an installation of the tools that makes no progress"_L1, installing},
    Scenario{"install-fails"_L1, "tools are missing, and the next installation fails like the last one"_L1,
             installFails},
    Scenario{"rekordbox-open"_L1, "Rekordbox is open and two changes wait"_L1, rekordboxOpen},
    Scenario{"pending"_L1, "Rekordbox is closed and two changes wait"_L1, pending},
    Scenario{"failed-changes"_L1, "two changes couldn't be applied"_L1, failedChanges},
    Scenario{"no-rekordbox"_L1, "there is no Rekordbox library"_L1, noRekordbox},
    Scenario{"backups"_L1, "two dozen backups"_L1, backups},
    Scenario{"unwritable"_L1, "the download folder isn't writable"_L1, unwritable},
    Scenario{"cloud-off"_L1, "the cloud relay is switched off; links can't be created"_L1, cloudOff},
    Scenario{"cloud-unreachable"_L1, "the cloud can't be reached; links can't be created"_L1, cloudUnreachable},
    Scenario{"all-assistants"_L1, "all four assistants are connected"_L1, allAssistants},
    Scenario{"telegram-waiting"_L1, "a Telegram pairing code waits to be scanned"_L1, telegramWaiting},
    Scenario{"telegram-expired"_L1, "a Telegram pairing code has expired"_L1, telegramExpired},
    Scenario{"no-telegram"_L1, "the Telegram bot isn't set up"_L1, noTelegram},
    Scenario{"crowded"_L1, "12 links, 60 backups, long names, right-to-left and emoji text, long paths"_L1,
             prepareCrowd},
    Scenario{"hostile"_L1, "endless texts and lists, control characters, markup, and addresses that run programs"_L1,
             prepareHostile},
};

} // namespace

std::span<const Scenario> scenarios() {
    return all;
}

const Scenario* findScenario(const QString& name) {
    const auto* found = std::ranges::find(all, name, &Scenario::name);
    return found == all.end() ? nullptr : found;
}

State startState(const Scenario& scenario, Moment now) {
    State state;
    state.scenario = scenario.name;
    state.links.endpoint = u"" TUNEDECK_WEB_ENDPOINT ""_s;
    state.cloud = {.baseUrl = state.links.endpoint, .protocol = 2, .registered = true, .connected = true};
    state.toolbox = Toolbox::make(true, now - 2h);
    state.jobs.xmlVersion = 39;
    Stage stage{state, now};
    stage.addFirstBackup(21 * 24h);
    stage.addAppliedChange(u"Add 6 tracks to the new playlist “Warm-up”"_s, Library::Minor, 8 * 24h);
    stage.addAppliedChange(u"Add 5 tracks to “Friday”"_s, Library::Patch, 5h);
    stage.addDoneJob(u"Warm-up"_s, 6, 8 * 24h);
    stage.addFailedJob(u"Peak Time"_s, u"yt-dlp: this video isn't available in your country"_s, 9h);
    stage.addDoneJob(u"Friday"_s, 5, 5h);
    stage.addLink(link_kind::claude, u"Claude"_s, 26 * 24h, 5h);
    stage.addLink(link_kind::shortcut, u"iPhone"_s, 12 * 24h, 9h);
    scenario.prepare(stage);
    return state;
}

} // namespace tunedeck::demo
