#include "DemoService/World/Toolbox.h"

#include <algorithm>

namespace tunedeck::demo {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr auto part = "toolbox"_L1;

} // namespace

Toolbox Toolbox::make(bool installed, Moment checkedAt) {
    Toolbox toolbox;
    toolbox.report.tools = {
        {.name = u"yt-dlp"_s, .wanted = u"2026.11.12"_s, .installs = u"2026.11.12"_s},
        {.name = u"spotdl"_s, .wanted = u"4.4.3"_s, .installs = u"spotdl==4.4.3"_s},
        {.name = u"ffmpeg"_s, .wanted = u"7.1.1"_s, .installs = u"7.1.1"_s},
    };
    toolbox.report.venvs = {
        {.name = u"yt-dlp environment"_s, .wanted = u"2026.11.12"_s, .installs = u"yt-dlp==2026.11.12"_s},
        {.name = u"spotdl environment"_s, .wanted = u"4.4.3"_s, .installs = u"spotdl==4.4.3"_s},
    };
    toolbox.report.manifest = u"2026-11-18.1"_s;
    toolbox.report.checkedAt = wholeSecond(checkedAt);
    if (installed) {
        for (Tool* tool : toolbox.missing()) {
            tool->installed = tool->installs;
            tool->ready = true;
        }
    }
    return toolbox;
}

bool Toolbox::ready() const {
    return std::ranges::all_of(report.tools, &Tool::ready) && std::ranges::all_of(report.venvs, &Tool::ready);
}

std::vector<Toolbox::Tool*> Toolbox::missing() {
    std::vector<Tool*> result;
    for (auto* list : {&report.tools, &report.venvs}) {
        for (Tool& tool : *list) {
            if (!tool.ready) {
                result.push_back(&tool);
            }
        }
    }
    return result;
}

void Toolbox::install(StepContext& context) {
    if (report.installing) {
        return;
    }
    context.info(part, u"installing the tools"_s);
    report.installing = true;
    report.error.reset();
    stepsDone = 0;
    steps = static_cast<int>(missing().size());
    startStep(context);
}

void Toolbox::startStep(StepContext& context) {
    if (const auto tools = missing(); tools.empty()) {
        report.step = u"Checking the tools"_s; // takes one step, so that users see something happen
    } else if (std::ranges::all_of(report.tools, &Tool::ready)) {
        report.step = u"Preparing the "_s + tools.front()->name;
    } else {
        report.step = u"Downloading "_s + tools.front()->name + u' ' + tools.front()->wanted;
    }
    stepStart = context.now;
    stepEnd = context.afterBetween(2500ms, 4s);
    context.debug(part, *report.step);
}

void Toolbox::advance(StepContext& context) {
    if (!report.installing || !context.isDue(stepEnd)) {
        return;
    }
    const auto tools = missing();
    if (tools.empty()) {
        finishInstallation(context);
        return;
    }
    Tool& tool = *tools.front();
    if (failsAt == tool.name) {
        failsAt.reset();
        report.error = u"Couldn't download "_s + tool.name + u": the server answered 503."_s;
        finishInstallation(context);
        return;
    }
    tool.installed = tool.installs;
    tool.ready = true;
    ++stepsDone;
    context.info(part, tool.name + u' ' + tool.wanted + u" is ready"_s);
    if (tools.size() == 1) {
        finishInstallation(context);
    } else {
        startStep(context);
    }
}

void Toolbox::finishInstallation(StepContext& context) {
    report.installing = false;
    report.step.reset();
    report.progress.reset();
    report.checkedAt = context.timestamp();
    stepStart.reset();
    stepEnd.reset();
    if (report.error) {
        context.error(part, *report.error);
    } else {
        context.info(part, u"the tools are ready"_s);
    }
}

Toolbox::Report Toolbox::reportAt(Moment now) const {
    Report result = report;
    if (report.installing && stepStart && stepEnd) {
        using Milliseconds = std::chrono::duration<double, std::milli>;
        const auto length = std::max(Milliseconds(*stepEnd - *stepStart), Milliseconds(1));
        const auto share = std::clamp(Milliseconds(now - *stepStart) / length, 0.0, 1.0);
        result.progress = std::min(1.0, (stepsDone + share) / std::max(1, steps));
    }
    return result;
}

} // namespace tunedeck::demo
