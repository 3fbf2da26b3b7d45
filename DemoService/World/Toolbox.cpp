#include "DemoService/World/Toolbox.h"

#include <algorithm>

namespace tunedeck::demo {

using namespace std::chrono_literals;

namespace {

constexpr auto subject = "toolbox";

Tool makeTool(std::string name, std::string wanted, std::string installs) {
    return {.name = std::move(name),
            .installed = {},
            .wanted = std::move(wanted),
            .ready = false,
            .installs = std::move(installs)};
}

std::string stepText(const Tool& tool, bool isEnvironment) {
    return isEnvironment ? "Preparing the " + tool.name : "Downloading " + tool.name + " " + tool.wanted;
}

} // namespace

Toolbox makeToolbox(bool installed, Moment checkedAt) {
    Toolbox toolbox;
    toolbox.report.tools = {makeTool("yt-dlp", "2026.11.12", "2026.11.12"),
                            makeTool("spotdl", "4.4.3", "spotdl==4.4.3"), makeTool("ffmpeg", "7.1.1", "7.1.1")};
    toolbox.report.venvs = {makeTool("yt-dlp environment", "2026.11.12", "yt-dlp==2026.11.12"),
                            makeTool("spotdl environment", "4.4.3", "spotdl==4.4.3")};
    toolbox.report.manifest = "2026-11-18.1";
    toolbox.report.checkedAt = wholeSecond(checkedAt);
    if (installed) {
        for (auto* list : {&toolbox.report.tools, &toolbox.report.venvs}) {
            for (Tool& tool : *list) {
                tool.installed = tool.installs;
                tool.ready = true;
            }
        }
    }
    return toolbox;
}

bool Toolbox::ready() const {
    return std::ranges::all_of(report.tools, &Tool::ready) && std::ranges::all_of(report.venvs, &Tool::ready);
}

Tool* Toolbox::nextMissing() {
    for (auto* list : {&report.tools, &report.venvs}) {
        if (const auto found = std::ranges::find(*list, false, &Tool::ready); found != list->end()) {
            return &*found;
        }
    }
    return nullptr;
}

void Toolbox::install(Turn& turn) {
    if (report.installing) {
        return;
    }
    turn.info(subject, "installing the tools");
    report.installing = true;
    report.error.reset();
    stepsDone = 0;
    steps = static_cast<int>(std::ranges::count(report.tools, false, &Tool::ready) +
                             std::ranges::count(report.venvs, false, &Tool::ready));
    startStep(turn);
}

void Toolbox::startStep(Turn& turn) {
    const Tool* tool = nextMissing();
    const bool isEnvironment = std::ranges::all_of(report.tools, &Tool::ready);
    // With nothing missing an installation is only a check, but it can still be seen.
    report.step = tool == nullptr ? "Checking the tools" : stepText(*tool, isEnvironment);
    stepStart = turn.now;
    stepEnd = turn.within(2500ms, 4s);
    turn.debug(subject, *report.step);
}

void Toolbox::advance(Turn& turn) {
    if (!report.installing || !isDue(stepEnd, turn.now)) {
        return;
    }
    Tool* tool = nextMissing();
    if (tool == nullptr) {
        endInstallation(turn);
        return;
    }
    if (failsAt == tool->name) {
        failsAt.reset();
        report.error = "Couldn't download " + tool->name + ": the server answered 503.";
        endInstallation(turn);
        return;
    }
    tool->installed = tool->installs;
    tool->ready = true;
    ++stepsDone;
    turn.info(subject, tool->name + " " + tool->wanted + " is ready");
    if (nextMissing() == nullptr) {
        endInstallation(turn);
    } else {
        startStep(turn);
    }
}

void Toolbox::endInstallation(Turn& turn) {
    report.installing = false;
    report.step.reset();
    report.progress.reset();
    report.checkedAt = wholeSecond(turn.now);
    stepStart.reset();
    stepEnd.reset();
    if (report.error) {
        turn.error(subject, *report.error);
    } else {
        turn.info(subject, "the tools are ready");
    }
}

ToolReport Toolbox::reportAt(Moment now) const {
    ToolReport result = report;
    if (report.installing && stepStart && stepEnd) {
        const auto length = static_cast<double>((*stepEnd - *stepStart).count());
        const auto passed = static_cast<double>((now - *stepStart).count());
        const double inStep = length > 0 ? std::clamp(passed / length, 0.0, 1.0) : 1.0;
        result.progress = std::min(1.0, (stepsDone + inStep) / std::max(1, steps));
    }
    return result;
}

} // namespace tunedeck::demo
